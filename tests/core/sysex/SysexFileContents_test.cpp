#include "sysex/SysexFileContents.h"

#include <gtest/gtest.h>

#include <fstream>

#include "DumpSamples.h"
#include "ScriptedPrompter.h"
#include "TempDir.h"

using namespace tavlo;
using tavlo::testing::ScriptedPrompter;
using tavlo::testing::TempDir;

namespace {

using tavlo::testing::Bytes;

const std::string kHeading = "The Sysex messages found in the file:\r\n\r\n   dump.syx\r\n\r\n Are....\r\n\r\n";

TEST(SysexFileContents, NamesTheDevicesMessagesByCommand) {
    struct Case {
        int command;
        const char* line;
    };
    const Case cases[] = {
        {0, "PC1600(x) RECALL PRESET Request (offset 1)"}, {1, "PC1600(x) ALL PRESETS Data (offset 1)"},
        {2, "PC1600(x) ALL SCENES Data (offset 1)"}, {3, "PC1600(x) ALL GLOBALS Data (offset 1)"},
        {4, "PC1600(x) CURRENT EDIT BUFFER Data (offset 1)"}, {5, "F0 00 00 1B 0B 07 05 , (offset 1)"},
        {0x11, "F0 00 00 1B 0B 07 11 , (offset 1)"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(SysexFileContents("dump.syx", Bytes({0xF0, 0x00, 0x00, 0x1B, 0x0B, 0x07, c.command, 0xF7})),
                  kHeading + "       " + c.line + "\r\n")
            << c.command;
}

TEST(SysexFileContents, OffsetsCountFromOneAndShortEntriesShowWhatTheyHave) {
    const std::string file = Bytes({0x41, 0xF0, 0x43, 0x10, 0xF7, 0xF0, 0x00, 0x00, 0x1B, 0x0B, 0xF0, 0x7E});
    EXPECT_EQ(SysexFileContents("dump.syx", file), kHeading +
                                                       "       F0 43 10 F7 F0 00 00 , (offset 2)\r\n"
                                                       "       F0 00 00 1B 0B F0 7E , (offset 6)\r\n"
                                                       "       F0 7E , (offset 11)\r\n");
    EXPECT_EQ(SysexFileContents("dump.syx", "no messages"), kHeading);
}

TEST(SysexFileContents, ListsAtMost200Messages) {
    std::string file;
    for (int i = 0; i < 250; ++i) file += Bytes({0xF0, 0xF7});
    const std::string text = SysexFileContents("dump.syx", file);
    std::size_t lines = 0;
    for (std::size_t at = 0; (at = text.find("(offset ", at)) != std::string::npos; ++at) ++lines;
    EXPECT_EQ(lines, 200u);
    EXPECT_NE(text.find("(offset 399)\r\n"), std::string::npos);
    EXPECT_EQ(text.find("(offset 401)"), std::string::npos);
}

TEST(SysexFileMenu, ShowsTheListingOfTheChosenFileOrThatItCannotBeRead) {
    TempDir dir;
    const std::string path = dir.file("in.syx");
    std::ofstream(path, std::ios::binary) << Bytes({0xF0, 0x00, 0x00, 0x1B, 0x0B, 0x00, 0x03, 0xF7});
    ScriptedPrompter prompter;
    prompter.expectOpenFile(kListSysexFileTitle, path)
        .expectMessage(kSysexFileContentsTitle,
                       "The Sysex messages found in the file:\r\n\r\n   " + path +
                           "\r\n\r\n Are....\r\n\r\n       PC1600(x) ALL GLOBALS Data (offset 1)\r\n",
                       MessageAnswer::OK)
        .expectOpenFile(kListSysexFileTitle, dir.file("gone.syx"))
        .expectMessage(kSysexFileContentsTitle, "The file " + dir.file("gone.syx") + " could not be read.",
                       MessageAnswer::OK)
        .expectOpenFile(kListSysexFileTitle, std::nullopt);  // nothing chosen ends it
    for (int i = 0; i < 3; ++i) SysexFileMenu(prompter);
    EXPECT_TRUE(prompter.done());
    EXPECT_EQ(prompter.seen()[0].text, kSysexFileFilter);
}

}  // namespace

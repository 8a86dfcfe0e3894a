// A pool preset as a one-preset sysex file and back: written through the
// editor, read back into the pool byte for byte, with the clash dialogue;
// bad files change nothing.
#include <fstream>
#include <sstream>

#include "PoolFixture.h"
#include "editor/EditorDumps.h"
#include "pool/PoolList.h"
#include "pool/PresetSysexFile.h"
#include "pool/PresetSysexImport.h"
#include "presetfile/PresetFileButtons.h"

namespace tavlo::testing {
namespace {

class SysexFile : public PoolFixture {
protected:
    std::string bytesOf(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        std::stringstream bytes;
        bytes << file.rdbuf();
        return bytes.str();
    }
    std::string writeFile(const std::string& name, const std::string& bytes) {
        const std::string path = t.dir.file(name);
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }
};

TEST_F(SysexFile, AFileComesBackIntoThePoolAndOutAgainByteForByte) {
    const std::string path = exported("Exported");
    db().exec("UPDATE PresetRec SET Name = 'Moved Aside' WHERE Name = 'Exported'");
    InitializePreset(s);
    EXPECT_TRUE(ImportPresetSysexFile(s, path));
    EXPECT_TRUE(prompter.seen().empty()) << "a new name asks nothing";
    EXPECT_FALSE(s.poolFlags.DownloadInProgress);
    const std::int64_t id = idOf("Exported");
    ASSERT_GT(id, idOf("Moved Aside"));
    ASSERT_TRUE(WritePresetSysexFile(s, id, t.dir.file("again.syx")));
    EXPECT_EQ(bytesOf(t.dir.file("again.syx")), bytesOf(path));
}

TEST_F(SysexFile, FilesThatHoldNoPresetChangeNothing) {
    const std::string bytes = bytesOf(exported("Good"));
    std::string noNibbles = bytes;
    for (std::size_t i = 50; i + 1 < noNibbles.size(); ++i) noNibbles[i] = '\x7F';
    const std::string cases[] = {writeFile("text.syx", "hello"), writeFile("cut.syx", bytes.substr(0, 20) + '\xF7'),
                                 writeFile("noise.syx", noNibbles), t.dir.file("missing.syx")};
    newPreset("Kept In Editor");
    s.editor.preset.Faders[9].Name = "mine";
    const std::int64_t rows = count("SELECT COUNT(*) FROM PresetRec") + count("SELECT COUNT(*) FROM FaderRec");
    for (const std::string& path : cases) {
        SCOPED_TRACE(path);
        prompter.expectMessage("Cannot Import Preset Sysex",
                               "The Sysex file you selected appears not to be PC1600(x) Preset dump data.",
                               MessageAnswer::OK);
        EXPECT_FALSE(ImportPresetSysexFile(s, path));
        EXPECT_EQ(count("SELECT COUNT(*) FROM PresetRec") + count("SELECT COUNT(*) FROM FaderRec"), rows);
        EXPECT_EQ(s.editor.preset.Faders[9].Name, "mine");
    }
    EXPECT_TRUE(prompter.done());
}

// Each file is a download of its own: a choice "for all" ends with it.
TEST_F(SysexFile, AClashGoesThroughTheDialogueEachFileAnew) {
    const std::string path = exported("Twice");
    const std::int64_t id = idOf("Twice");
    answerClash(ClashButton::KeepALLPool);
    prompter.expectMessage("Are You Sure?", MessageAnswer::Yes);
    EXPECT_TRUE(ImportPresetSysexFile(s, path));
    EXPECT_TRUE(s.editor.PresetKeptInPool);
    answerClash(ClashButton::RenameSysex, "Twice Again");
    EXPECT_TRUE(ImportPresetSysexFile(s, path));
    EXPECT_TRUE(prompter.done());
    EXPECT_GT(idOf("Twice Again"), id);
}

// Saving goes through the editor: edits there are offered for storing first,
// and the file holds the dump the editor makes of the saved preset.
TEST_F(SysexFile, SavingOffersTheEditorsEditsForStoringFirst) {
    const std::int64_t saved = storeNew("To File");
    const std::string path = t.dir.file("out.syx");
    const struct {
        MessageAnswer answer;  // none: no edits, nothing asked
        bool written, editsStored;
    } cases[] = {{MessageAnswer::OK, true, false},
                 {MessageAnswer::Cancel, false, false},
                 {MessageAnswer::No, true, false},
                 {MessageAnswer::Yes, true, true}};
    int n = 0;
    for (const auto& c : cases) {
        SCOPED_TRACE(n);
        std::remove(path.c_str());
        const std::int64_t edited = storeNew("Edited " + std::to_string(n++));
        if (c.answer != MessageAnswer::OK) s.editor.preset.Faders[5].Function = 2;
        select(saved);
        const std::size_t asked = prompter.seen().size();
        prompter.expectSaveFile("Save Preset to Sysex or Tavlo Format File", path);
        if (c.answer != MessageAnswer::OK)
            prompter.expectMessage("About to Save Tavlo Format Preset",
                                   "The Preset Editor window is required for this task.  Do you want to save the "
                                   "contents of the PC1600(x) Preset Editor Window before storing this Preset?  If "
                                   "you answer NO, any changes since the last Preset Store in Pool will be lost.",
                                   c.answer);
        if (c.answer == MessageAnswer::Yes) prompter.expectMessage("About to Store", MessageAnswer::Yes);
        SavePresetSysexButton(s);
        EXPECT_TRUE(prompter.done());
        EXPECT_EQ(prompter.seen().at(asked).text, "To File.tpr");
        EXPECT_EQ(intOf("SELECT Function FROM FaderRec WHERE PresetREF = :ID AND \"Index\" = 5", edited),
                  c.editsStored ? 2 : 0);
        if (!c.written) {
            EXPECT_TRUE(bytesOf(path).empty());
            continue;
        }
        EXPECT_EQ(s.editor.preset.ID, saved) << "the preset went through the editor";
        EXPECT_EQ(bytesOf(path), EditorPresetSysex(s.editor, s.memImage.SceneList, s.midi));
    }
}

}  // namespace
}  // namespace tavlo::testing

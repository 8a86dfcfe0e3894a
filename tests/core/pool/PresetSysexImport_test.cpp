// A one-preset sysex file into the pool: decoded into the editor and stored
// as a download, with the clash dialogue; bad files change nothing.
#include <fstream>

#include "PoolFixture.h"
#include "pool/PoolList.h"
#include "pool/PresetSysexFile.h"
#include "pool/PresetSysexImport.h"
#include "editor/EditorState.h"
#include "pool/PoolFormState.h"
#include "pool/PoolFlags.h"

namespace tavlo::testing {
namespace {

class ImportSysex : public PoolFixture {
protected:
    std::string file(const std::string& name, const std::string& bytes) {
        const std::string path = t.dir.file(name);
        std::ofstream out(path, std::ios::binary);
        out << bytes;
        return path;
    }
    // A preset with something in every kind of control, exported to a file.
    std::string exported(const std::string& name) {
        newPreset(name);
        WorkingPreset& p = s.editor.preset;
        p.Faders[0] = FaderDef{"Volume", 0, 1, 0, 127, 3, 7, -1, 1, "", 0, std::string(18, ' '), ""};
        p.Faders[16].Name = "CV";
        p.Faders[16].Function = 1;
        p.Faders[16].CCNum = 11;
        p.Buttons[2].Name = "Prog";
        p.Buttons[2].Function = 3;
        p.Buttons[2].ProgChange = 12;
        p.Buttons[2].Channel = 4;
        p.DataWheelLink = 2;
        p.SetupChannels[5] = {3, 0, 8, 100};
        StoreInPoolButton(s);
        const std::int64_t id = s.editor.preset.ID;
        const std::string path = t.dir.file(name + ".syx");
        EXPECT_TRUE(WritePresetSysexFile(s, id, path));
        return path;
    }
};

TEST_F(ImportSysex, AFileComesBackAsItWasStored) {
    const std::string path = exported("Exported");
    const WorkingPreset before = s.editor.preset;
    db().exec("UPDATE PresetRec SET Name = 'Moved Aside' WHERE Name = 'Exported'");
    InitializePreset(s);
    EXPECT_TRUE(ImportPresetSysexFile(s, path));
    EXPECT_TRUE(prompter.seen().empty()) << "a new name asks nothing";
    const std::int64_t id = idOf("Exported");
    ASSERT_GT(id, 0);
    EXPECT_FALSE(s.poolFlags.DownloadInProgress);
    ASSERT_TRUE(LoadPC1600xFormFromPool(s, id));
    const WorkingPreset& after = s.editor.preset;
    EXPECT_EQ(after.Faders[0].Name, "Volume");
    EXPECT_EQ(after.Faders[0].CCNum, 7);
    EXPECT_EQ(after.Faders[0].Channel, 3);
    EXPECT_EQ(after.Faders[16].CCNum, 11);
    EXPECT_EQ(after.Buttons[2].Function, 3);
    EXPECT_EQ(after.Buttons[2].ProgChange, 12);
    EXPECT_EQ(after.DataWheelLink, 2);
    EXPECT_EQ(after.SetupChannels, before.SetupChannels);
}

TEST_F(ImportSysex, FilesThatHoldNoPresetChangeNothing) {
    const std::string good = exported("Good");
    std::ifstream in(good, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    std::string cut = bytes.substr(0, 20);
    cut.push_back('\xF7');
    std::string noNibbles = bytes;
    for (std::size_t i = 50; i < noNibbles.size() - 1; ++i) noNibbles[i] = '\x7F';
    const std::string cases[] = {
        file("text.syx", "hello"),
        file("empty.syx", ""),
        file("cut.syx", cut),
        file("noise.syx", noNibbles),
        t.dir.file("missing.syx"),
    };
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

TEST_F(ImportSysex, AClashGoesThroughTheDialogueEachFileAnew) {
    const std::string path = exported("Twice");
    const std::int64_t id = idOf("Twice");
    answerClash(ClashButton::KeepALLPool);
    prompter.expectMessage("Are You Sure?", MessageAnswer::Yes);
    EXPECT_TRUE(ImportPresetSysexFile(s, path));
    EXPECT_TRUE(s.editor.PresetKeptInPool);

    // "For all" ended with that file: the next one asks again.
    answerClash(ClashButton::RenameSysex, "Twice Again");
    EXPECT_TRUE(ImportPresetSysexFile(s, path));
    EXPECT_TRUE(prompter.done());
    EXPECT_GT(idOf("Twice Again"), id);

    answerClash(ClashButton::UseDownloaded);
    EXPECT_TRUE(ImportPresetSysexFile(s, path));
    EXPECT_EQ(s.editor.preset.ID, id);
    EXPECT_EQ(count("SELECT COUNT(*) FROM PresetRec"), 3);
}

TEST_F(ImportSysex, TheButtonAsksForTheFile) {
    const std::string path = exported("By Button");
    db().exec("DELETE FROM PresetRec WHERE Name = 'By Button'");
    prompter.expectOpenFile("Get Preset from File (Tavlo Format or Sysex File)", std::nullopt)
        .expectOpenFile("Get Preset from File (Tavlo Format or Sysex File)", path);
    LoadPresetSysexButton(s);
    EXPECT_EQ(idOf("By Button"), -1);
    LoadPresetSysexButton(s);
    EXPECT_GT(idOf("By Button"), 0);
    EXPECT_EQ(prompter.seen().at(0).text, "Sysex File(s) (*.syx)|*.syx");
    EXPECT_GE(s.poolForm.PoolList.findText("By Button"), 0);
}

}  // namespace
}  // namespace tavlo::testing

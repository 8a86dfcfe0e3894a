// Saving a pool preset as a one-preset sysex file.
#include <fstream>
#include <sstream>

#include "PoolFixture.h"
#include "pool/PoolList.h"
#include "pool/PresetSysexFile.h"
#include "preset/PresetEncoder.h"
#include "editor/EditorState.h"
#include "midilink/MidiConfig.h"
#include "memimage/MemImageState.h"
#include "pool/PoolFormState.h"
#include "editor/EditorDumps.h"
#include "editor/EditorState.h"
#include "editor/ImageSlots.h"
#include "midilink/MidiConfig.h"

namespace tavlo::testing {
namespace {

class SaveSysex : public PoolFixture {
protected:
    std::int64_t saved = 0;
    std::string path;
    void SetUp() override {
        saved = storeNew("To File", 0);
        path = t.dir.file("out.syx");
        s.poolForm.OrderOption = PoolOrder::ByName;
        ReloadPoolList(s);
        SelectPoolLine(s, s.poolForm.PoolList.findItemData(saved));
    }
    std::string fileBytes() {
        std::ifstream file(path, std::ios::binary);
        std::stringstream bytes;
        bytes << file.rdbuf();
        return bytes.str();
    }
};

TEST_F(SaveSysex, WritesTheDumpTheEditorMakes) {
    newPreset("Other");  // unchanged since its initialisation: nothing is asked
    prompter.expectSaveFile("Save Preset to Sysex or Tavlo Format File", path);
    SavePresetSysexButton(s);
    EXPECT_TRUE(prompter.done());
    EXPECT_EQ(prompter.seen().at(0).text, "To File.syx");
    const std::string bytes = fileBytes();
    ASSERT_GT(bytes.size(), 44u);
    EXPECT_EQ(bytes.substr(0, 5), std::string("\xF0\x00\x00\x1B\x0B", 5));
    EXPECT_EQ(bytes.back(), '\xF7');
    EXPECT_EQ(s.editor.preset.ID, saved) << "the preset went through the editor";
    EXPECT_EQ(bytes, EditorPresetSysex(s.editor, s.memImage.SceneList, s.midi));
}

TEST_F(SaveSysex, EditsInTheEditorAreOfferedForStoringFirst) {
    struct Case {
        MessageAnswer answer;
        bool written;
        bool editsStored;
    };
    const Case cases[] = {
        {MessageAnswer::Cancel, false, false},
        {MessageAnswer::No, true, false},
        {MessageAnswer::Yes, true, true},
    };
    int n = 0;
    for (const Case& c : cases) {
        SCOPED_TRACE(n);
        std::remove(path.c_str());
        const std::int64_t edited = storeNew("Edited " + std::to_string(n++));
        s.editor.preset.Faders[5].Function = 2;
        ReloadPoolList(s);
        SelectPoolLine(s, s.poolForm.PoolList.findItemData(saved));
        prompter.expectSaveFile("Save Preset to Sysex or Tavlo Format File", path)
            .expectMessage("About to Save Tavlo Format Preset",
                           "The Preset Editor window is required for this task.  Do you want to save the contents of "
                           "the PC1600(x) Preset Editor Window before storing this Preset?  If you answer NO, any "
                           "changes since the last Preset Store in Pool will be lost.",
                           c.answer);
        if (c.answer == MessageAnswer::Yes) prompter.expectMessage("About to Store", MessageAnswer::Yes);
        SavePresetSysexButton(s);
        EXPECT_TRUE(prompter.done());
        EXPECT_EQ(!fileBytes().empty(), c.written);
        EXPECT_EQ(intOf("SELECT Function FROM FaderRec WHERE PresetREF = :ID AND \"Index\" = 5", edited),
                  c.editsStored ? 2 : 0);
    }
}

}  // namespace
}  // namespace tavlo::testing

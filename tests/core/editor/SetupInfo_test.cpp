#include "editor/SetupInfo.h"

#include <gtest/gtest.h>

#include "TestProgram.h"
#include "db/PoolDatabase.h"
#include "editor/EditorSelection.h"
#include "pool/EditorStoreQuestions.h"
#include "preset/PristinePreset.h"

namespace tavlo {
namespace {

using testing::TestProgram;

struct SetupInfoTest : ::testing::Test {
    TestProgram t;
    EditorState& editor() { return t->editor; }
    std::array<SetupChannelDef, 16>& channels() { return t->editor.preset.SetupChannels; }
};

// Make Same copies the shown channel to all others, All Off clears them all;
// each asks first, and only No keeps the channels (All Off takes Cancel as
// going ahead).
TEST_F(SetupInfoTest, MakeSameAndAllOffAskFirst) {
    const struct {
        bool (*flow)(const EditorContext&);
        const char* text;
        MessageAnswer goAhead;
        SetupChannelDef after;
    } cases[] = {
        {MakeSetupChannelsSame, "Are you sure you want to make all the Setup Channel information the same as Channel 8?",
         MessageAnswer::Yes, {5, 1, 9, 100}},
        {SetupChannelsAllOff, "Are you sure you want to set all the Setup Channel information to OFF?",
         MessageAnswer::Cancel, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        channels()[7] = SetupChannelDef{5, 1, 9, 100};
        channels()[15] = SetupChannelDef{};
        ShowSetupChannel(editor(), 7);
        t.prompter.expectMessage("About to Make Channel Setups Same", MessageAnswer::No);
        EXPECT_FALSE(c.flow(*t));
        EXPECT_EQ(channels()[7], (SetupChannelDef{5, 1, 9, 100}));
        EXPECT_EQ(channels()[15], SetupChannelDef{});
        t.prompter.expectMessage("About to Make Channel Setups Same", c.text, c.goAhead);
        EXPECT_TRUE(c.flow(*t));
        for (const auto& channel : channels()) EXPECT_EQ(channel, c.after);
    }
    EXPECT_EQ(editor().SChannel, 0);
}

TEST_F(SetupInfoTest, ChannelDefaultsRoundTripThroughTheTable) {
    for (int i = 0; i < 16; ++i)
        channels()[i] = SetupChannelDef{static_cast<std::int16_t>(i), static_cast<std::int16_t>(i % 2),
                                        static_cast<std::int16_t>(128 - i), static_cast<std::int16_t>(i * 3)};
    WriteSetupChannelDefaults(t->pool.db(), editor().preset);
    Statement row = t->pool.db().prepare("SELECT Value FROM DefaultsTable WHERE Field = 'SetupChannel03'");
    ASSERT_TRUE(row.step());
    EXPECT_EQ(row.getText("Value"), "002:000:126:006");
    WorkingPreset fresh;
    ApplySetupChannelDefaults(t->pool.db(), fresh);
    EXPECT_EQ(fresh.SetupChannels, editor().preset.SetupChannels);
}

TEST_F(SetupInfoTest, StringDefaultWithSubstringsAndItsRemoval) {
    WorkingPreset& p = editor().preset;
    p.SetupString = "C0 05 B0 07 64";
    p.SetupStrings.Slots[0] = {.CommandType = 4, .EnteredString = "C0 05", .ListItem = "C0 05  (progch)"};
    p.SetupStrings.Slots[1] = {.CommandType = 3, .EnteredString = "B0 07 64", .ListItem = "B0 07 64  (ctrlch)"};
    p.SetupStrings.Count = 2;
    WriteSetupStringDefault(t->pool.db(), p);
    Statement row = t->pool.db().prepare("SELECT Value FROM DefaultsTable WHERE Field = 'SetupString'");
    ASSERT_TRUE(row.step());
    EXPECT_EQ(row.getText("Value"), "C0 05 B0 07 64: 2");
    EXPECT_EQ(t->pool.db().queryInt("SELECT COUNT(*) FROM MessageStringRec WHERE MapType = 'D'"), 2);

    WorkingPreset fresh;
    ASSERT_TRUE(ApplySetupStringDefault(t->pool.db(), fresh));
    EXPECT_EQ(fresh.SetupString, p.SetupString);
    EXPECT_EQ(fresh.SetupStrings, p.SetupStrings);

    p.SetupStrings.clear();
    p.SetupString.clear();
    WriteSetupStringDefault(t->pool.db(), p);
    EXPECT_EQ(t->pool.db().queryInt("SELECT COUNT(*) FROM MessageStringRec WHERE MapType = 'D'"), 0);
    EXPECT_FALSE(ApplySetupStringDefault(t->pool.db(), fresh));
}

TEST_F(SetupInfoTest, ClosingAsksOnlyForAChangedPresetAndOnlyHides) {
    Database& db = t->pool.db();
    auto rows = [&] { return db.queryInt("SELECT COUNT(*) FROM PresetRec WHERE Name = 'Mine'"); };
    editor().Visible = true;
    EXPECT_TRUE(EditorQueryClose(*t)) << "unchanged: no question";
    EXPECT_FALSE(editor().Visible);

    editor().preset.Name = "Mine";
    EXPECT_TRUE(EditorQueryClose(*t)) << "the name alone is no edit";
    editor().preset.Buttons[3].Function = 2;
    t.prompter.expectMessage("Store Preset in Pool?", "Do you want to store this Preset in the Preset Pool?",
                             MessageAnswer::Cancel);
    EXPECT_FALSE(EditorQueryClose(*t));
    EXPECT_EQ(rows(), 0);
    t.prompter.expectMessage("Store Preset in Pool?", MessageAnswer::Yes);
    EXPECT_TRUE(EditorQueryClose(*t));
    EXPECT_EQ(rows(), 1) << "stored under its new name, without a further question";
    EXPECT_FALSE(INITDataChanged(editor()));

    // A blank name keeps the window open when the user says so.
    editor().preset.Name = "";
    editor().preset.Buttons[5].Function = 1;
    t.prompter.expectMessage("Store Preset in Pool?", MessageAnswer::Yes)
        .expectMessage("Preset Name is Blank", MessageAnswer::Cancel);
    EXPECT_FALSE(EditorQueryClose(*t));
    editor().preset.Name = "--Initialized--";
    EXPECT_TRUE(EditorQueryClose(*t));
    EXPECT_TRUE(t.prompter.done());
}

}  // namespace
}  // namespace tavlo


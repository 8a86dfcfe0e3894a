// The editor's own small dialogs, asked through the Prompter: what a choice
// does, and that every other way out changes nothing.
#include <gtest/gtest.h>

#include "TestProgram.h"
#include "db/Database.h"
#include "db/PoolDatabase.h"
#include "editor/CopyPasteSpread.h"
#include "editor/EditorSelection.h"
#include "editor/EditorState.h"
#include "editor/Scenes.h"

namespace tavlo {
namespace {

using testing::TestProgram;

ChoiceAnswer Pressed(int button, std::vector<int> lists = {}, int option = 0) {
    ChoiceAnswer answer;
    answer.button = button;
    answer.lists = std::move(lists);
    answer.option = option;
    return answer;
}

TEST(EditorDialogs, SpreadOnlyWithTheSpreadButton) {
    struct Case {
        ChoiceAnswer answer;
        bool spreads;
        int channelOfFader6;
        int ccOfFader6;
    };
    // The source is fader 5 on channel 2, CC 10; From 0 To 7.
    const Case cases[] = {
        {Pressed(-1, {0, 7}), false},      // Esc or the close box
        {Pressed(1, {0, 7}), false},       // Cancel
        {Pressed(0, {0, -1}), false},      // no To line
        {Pressed(0, {0, 7}, 0), true, 4, 10},  // across channels
        {Pressed(0, {0, 7}, 1), true, 2, 12},  // across CCs
    };
    for (const Case& c : cases) {
        TestProgram t;
        FaderDef& source = t->editor.preset.Faders[4];
        source.Function = 1;
        source.Channel = 2;
        source.CCNum = 10;
        ClickFader(t->editor, 4);
        ChoiceRequest asked;
        t.prompter.expectChoice("SpreadForm", [&](const ChoiceRequest& r) {
            asked = r;
            return c.answer;
        });
        SpreadSelectedControl(*t, false);
        EXPECT_TRUE(t.prompter.done());
        EXPECT_EQ(asked.title, "Spread Fader Functions");
        ASSERT_EQ(asked.lists.size(), 2u);
        EXPECT_EQ(asked.lists[0].index, 4) << "From starts on the source";
        EXPECT_EQ(asked.lists[1].index, 17) << "To starts on the last control, the second CV";
        EXPECT_EQ(asked.options.size(), 2u);
        const FaderDef& spread = t->editor.preset.Faders[6];
        EXPECT_EQ(spread.Function, c.spreads ? 1 : 0);
        if (!c.spreads) continue;
        EXPECT_EQ(spread.Channel, c.channelOfFader6);
        EXPECT_EQ(spread.CCNum, c.ccOfFader6);
    }
}

TEST(EditorDialogs, AMasterFaderAsksNothing) {
    TestProgram t;
    t->editor.preset.Faders[0].Function = 2;
    ClickFader(t->editor, 0);
    SpreadSelectedControl(*t, false);  // the scripted prompter fails on any question
    EXPECT_TRUE(t.prompter.seen().empty());
}

TEST(EditorDialogs, OtherSceneRefusesOKWithoutALineAndCancelKeepsAll) {
    TestProgram t;
    Database& db = t->pool.db();
    db.exec("INSERT INTO PresetRec (Name, CreatedDate, UpdatedDate, SetupChannelMap) VALUES ('Other', 'x', 'x', X'')");
    const std::int64_t other = db.lastInsertId();
    db.prepare("INSERT INTO SceneRec (PresetREF, Name) VALUES (:P, 'Quiet')").bind(":P", other).run();
    t->editor.preset.Name = "Mine";
    t->editor.preset.Buttons[2].Function = 9;
    ClickButton(t->editor, 2);

    t.prompter.expectChoice("AllScenesForm",
                            [](const ChoiceRequest& r) {
                                EXPECT_EQ(r.lists.at(0).items,
                                          std::vector<std::string>{"'Quiet'  - from Preset 'Other'"});
                                return Pressed(0, {-1});
                            })
        .expectMessage("Cannot Update Preset",
                       "No Scene has been selected.  Please choose one or click the CANCEL button.", MessageAnswer::OK)
        .expectChoice("AllScenesForm", [](const ChoiceRequest&) { return Pressed(0, {0}); });
    PickOtherScene(*t, true);
    EXPECT_EQ(t->editor.preset.Buttons[2].ScenePreset, static_cast<std::int32_t>(other));

    t.prompter.expectChoice("AllScenesForm", [](const ChoiceRequest&) { return Pressed(1, {0}); });
    PickOtherScene(*t, false);
    EXPECT_EQ(t->editor.preset.SetupScene, "<none>");
    EXPECT_TRUE(t.prompter.done());
}

}  // namespace
}  // namespace tavlo

// The memory image: its slots, the scene slots that follow from them, the
// presets they depend on, and the memory they use.
#include "../pool/PoolFixture.h"
#include "base/MSBModule.h"
#include "base/PoolDates.h"
#include "memimage/MemImageModel.h"
#include "pool/PresetMemorySize.h"

namespace tavlo::testing {
namespace {

const char* const kFull = "Cannot Send Preset to Memory Image";
const char* const kTooManyScenes = "Not All Scenes Included";

class MemImage : public PoolFixture {
public:
    MemImageContext image() { return s; }
    MemImageState& state() { return s.memImage; }
    void SetUp() override { InitMemImage(image()); }
    std::int64_t slot(int index) { return state().PresetList.itemData(index); }
    // A stored preset with `names` as its scenes, written straight to the pool.
    std::int64_t withScenes(const std::string& name, const std::vector<std::string>& names) {
        const std::int64_t id = storeNew(name);
        Transaction all(db());
        Statement add = db().prepare("INSERT INTO SceneRec (PresetREF, Name) VALUES (:ID, :Name)");
        for (const std::string& scene : names) {
            add.reset();
            add.bind(":ID", id).bind(":Name", scene).run();
        }
        all.commit();
        return id;
    }
};

TEST_F(MemImage, StartsInitialized) {
    const std::int64_t initialized = s.pool.InitializedPresetID();
    ASSERT_EQ(state().PresetList.listCount(), 50);
    EXPECT_EQ(state().PresetList.list(7), "07:  --Initialized--");
    for (int i = 0; i < 50; ++i) EXPECT_EQ(slot(i), initialized) << i;
    EXPECT_EQ(state().PresetSizeList.lines().size(), 50u);
    EXPECT_EQ(state().FreeMemLabel, "Free Memory: 20904");
    EXPECT_EQ(state().SceneList.list(99), "99:  --Empty--   [p:--]");
    EXPECT_EQ(state().MINameText, "");
    EXPECT_EQ(state().CreatedDateText, DisplayDate(NowDateText()));
    EXPECT_FALSE(state().ImageChanged);
    EXPECT_TRUE(prompter.seen().empty());
}

// Which slots hold which presets, against the free memory the image shows.
TEST_F(MemImage, ChargesEverySlotItsPresetsCost) {
    newPreset("Vol");
    s.editor.preset.Faders[0] = FaderDef{.Name = "Vol", .Function = 1};          // 8
    s.editor.preset.Buttons[4] = ButtonDef{.Name = "Nt", .Function = 4};         // 3 + 2
    StoreInPoolButton(s);
    const std::int64_t vol = s.editor.preset.ID;
    newPreset("Setup");
    s.editor.preset.SetupChannels[1].BankIsMSB = 1;                             // 3 + 3
    s.editor.preset.DataWheelLink = 1;                                          // 1
    StoreInPoolButton(s);
    const std::int64_t setup = s.editor.preset.ID;
    struct Case {
        const char* what;
        std::vector<std::pair<int, std::int64_t>> slots;
        long freeMemory;
        long expected;
    };
    const Case cases[] = {
        {"all free", {}, 20904, 20904},
        {"one preset", {{3, vol}}, 20904, 20904 - 13},
        {"the same preset twice", {{3, vol}, {49, vol}}, 20904, 20904 - 26},
        {"the preset row counts", {{0, setup}, {1, vol}}, 20904, 20904 - 7 - 13},
        {"more than there is", {{0, vol}, {1, setup}}, 10, 10 - 20},
    };
    for (const Case& c : cases) {
        InitMemImage(image());
        s.midi.FreeMemory = c.freeMemory;
        for (auto [index, id] : c.slots) ASSERT_TRUE(SetImageSlot(image(), index, id)) << c.what;
        EXPECT_EQ(state().FreeMemLabel, "Free Memory: " + std::to_string(c.expected)) << c.what;
        EXPECT_EQ(CalculateMemoryImageSize(image()), c.expected) << c.what;
        if (!c.slots.empty()) {
            EXPECT_EQ(state().PresetSizeList.list(c.slots[0].first),
                      std::to_string(CalculatePresetMemorySize(db(), c.slots[0].second)))
                << c.what;
        }
        EXPECT_EQ(state().PresetSizeList.list(48), "0") << c.what;
    }
}

// Scenes of slot 0 first, by name within a preset; the notice comes with the
// 100th line, whether or not more are waiting.
TEST_F(MemImage, FillsSceneSlotsInOrder) {
    for (int total : {0, 50, 99, 100, 101}) {
        SCOPED_TRACE(total);
        std::vector<std::string> first, second;
        for (int i = 0; i < total; ++i) (i < 30 ? first : second).push_back("S" + std::to_string(200 - i));
        InitMemImage(image());
        const std::int64_t a = withScenes("A" + std::to_string(total), first);
        const std::int64_t b = withScenes("B" + std::to_string(total), second);
        SetImageSlot(image(), 4, b);
        if (total >= 100) prompter.expectMessage(kTooManyScenes);
        SetImageSlot(image(), 2, a);
        EXPECT_TRUE(prompter.done());
        const ListState& scenes = state().SceneList;
        ASSERT_EQ(scenes.listCount(), 100);
        const int filled = std::min(total, 100);
        if (total > 0) {
            EXPECT_EQ(scenes.list(0), "00:  S" + std::to_string(200 - std::min(total, 30) + 1) + "  [p:02]");
            EXPECT_EQ(scenes.itemData(0), a);
            EXPECT_EQ(scenes.itemData(filled - 1), total > 30 ? b : a);
        }
        if (total > 30) {
            EXPECT_EQ(scenes.list(30), "30:  S" + std::to_string(200 - total + 1) + "  [p:04]");
        }
        if (filled < 100) {
            EXPECT_EQ(scenes.list(filled), TwoDigits(filled) + ":  --Empty--   [p:--]");
            EXPECT_EQ(scenes.itemData(filled), -1);
        }
    }
}

class Dependencies : public MemImage {};

TEST_F(Dependencies, ReadsSetupSceneAndSendSceneButtons) {
    const std::int64_t a = storeNew("A"), b = storeNew("B");
    struct Case {
        const char* what;
        std::int64_t setupOwner;
        std::vector<std::pair<int, std::int64_t>> buttons;
        PresetDependencies expected;
    };
    const auto deps = [](std::initializer_list<std::pair<int, long>> set, long count) {
        PresetDependencies d;
        d.fill(-1);
        for (auto [k, v] : set) d[k] = v;
        d[17] = count;
        d[18] = 0;
        return d;
    };
    const Case cases[] = {
        {"no setup scene still counts", -1, {}, deps({}, 1)},
        {"own setup scene", a, {}, deps({}, 0)},
        {"another's setup scene", b, {}, deps({{0, b}}, 1)},
        {"own scene, none, another's", a, {{0, a}, {5, -1000}, {15, b}}, deps({{16, b}}, 1)},
    };
    for (const Case& c : cases) {
        run("UPDATE ButtonRec SET ScenePreset = -1 WHERE PresetREF = :ID", a);
        setupScene(a, "X", c.setupOwner);
        for (auto [index, target] : c.buttons) sendScene(a, index, "X", target);
        EXPECT_EQ(GetDependencies(db(), a), c.expected) << c.what;
    }
}

TEST_F(Dependencies, FollowChainsAndStopAtCycles) {
    const std::int64_t c = storeNew("C"), b = storeNew("B"), a = storeNew("A");
    sendScene(a, 3, "X", b);  // A's button sends B's scene
    setupScene(b, "Y", c);    // B's setup scene is C's
    ASSERT_TRUE(SetImageSlot(image(), 7, a));
    EXPECT_EQ(slot(0), b);
    EXPECT_EQ(slot(1), c);
    EXPECT_EQ(state().PresetList.list(1), "01:  C");
    EXPECT_TRUE(state().ImageChanged);

    setupScene(b, "Y", a);  // and now back to A
    InitMemImage(image());
    ASSERT_TRUE(AddPresetsRecursively(image(), a));
    EXPECT_EQ(slot(0), a);
    EXPECT_EQ(slot(1), b);
    EXPECT_EQ(slot(2), s.pool.InitializedPresetID());
}

TEST_F(Dependencies, FullImageKeepsThePresetAndSaysSoOnce) {
    const std::int64_t b = storeNew("B"), c = storeNew("C"), a = storeNew("A"), filler = storeNew("F");
    sendScene(a, 0, "X", b);
    sendScene(a, 1, "X", c);
    for (int i = 0; i < 49; ++i) state().PresetList.setLine(i, "F", filler);
    prompter.expectMessage(kFull);
    EXPECT_TRUE(AddPresetsRecursively(image(), a));
    EXPECT_EQ(slot(49), a);
    prompter.expectMessage(kFull);
    EXPECT_FALSE(AddPresetsRecursively(image(), b));
    EXPECT_TRUE(prompter.done());
    EXPECT_EQ(prompter.seen().size(), 2u);
}

// A store into the slot the editor came from shows in the image at once.
TEST_F(MemImage, StoreIntoBoundSlotUpdatesScenesAndSize) {
    const std::int64_t id = storeNew("Bound");
    ASSERT_TRUE(SetImageSlot(image(), 5, id));
    ASSERT_TRUE(LoadPC1600xFormFromPool(s, id));
    s.memImage.MemoryImageBound = true;
    s.memImage.MemoryImageSlot = 5;
    s.editor.preset.Faders[2] = FaderDef{.Name = "Pan", .Function = 1};
    s.editor.preset.Scenes[0].Name = "Verse";
    s.editor.preset.SceneCount = 1;
    prompter.expectMessage("About to Store", MessageAnswer::Yes);
    StoreInPoolButton(s);
    EXPECT_EQ(state().SceneList.list(0), "00:  Verse  [p:05]");
    EXPECT_EQ(state().PresetSizeList.list(5), "8");
    EXPECT_EQ(state().FreeMemLabel, "Free Memory: 20896");
}

}  // namespace
}  // namespace tavlo::testing

#include "memimage/MemImageModel.h"

#include <algorithm>
#include <optional>
#include <string>

#include "base/MSBModule.h"
#include "base/PoolDates.h"
#include "db/PoolDatabase.h"
#include "globals/GlobalPool.h"
#include "memimage/MemImageState.h"
#include "midilink/MidiConfig.h"
#include "pool/PresetMemorySize.h"
#include "preset/WorkingPreset.h"
#include "sysex/DeviceMessages.h"
#include "ui/Prompter.h"
#include "ui/Pump.h"

namespace tavlo {

using MSBModule::DisplayDBString;
using MSBModule::Trim;

namespace {

// Runs a read of the pool; a failure is told as the program tells database
// errors, and `fallback` is returned.
template <typename Result, typename Work>
Result Guarded(const MemImageContext& session, Result fallback, Work work) {
    try {
        return work();
    } catch (const DatabaseError& error) {
        const PoolMessage message = DatabaseErrorMessage(error, session.pool.path());
        session.prompter.message(message.title, message.text);
        return fallback;
    }
}

std::string SlotLine(int slot, const std::string& name) { return TwoDigits(slot) + ":  " + name; }

// The display name of a stored preset, or nothing when there is no such row.
std::optional<std::string> PresetName(Database& db, std::int64_t id) {
    Statement find = db.prepare("SELECT Name FROM PresetRec WHERE ID = :ID");
    find.bind(":ID", id);
    if (!find.step()) return std::nullopt;
    return Trim(DisplayDBString(find.getText(0)));
}

int SlotCount(const MemImageState& image) { return std::min(image.PresetList.listCount(), kPresetSlots); }

bool HeldBySlot(const MemImageState& image, std::int64_t id) {
    for (int slot = 0; slot < SlotCount(image); ++slot)
        if (image.PresetList.itemData(slot) == id) return true;
    return false;
}

void FreeAllSlots(MemImageState& image, std::int64_t initializedId) {
    image.PresetList.clear();
    for (int slot = 0; slot < kPresetSlots; ++slot) image.PresetList.addItem(SlotLine(slot, kInitializedName), initializedId);
}

// Adding stops for good once a full image has been told: every further
// preset would find no slot either, and one message says it all.
struct Adding {
    std::int64_t initializedId;
    bool toldFull = false;
};

bool Place(const MemImageContext& session, Adding& adding, std::int64_t id);

void PlaceDependencies(const MemImageContext& session, Adding& adding, const PresetDependencies& deps) {
    if (deps[17] <= 0) return;
    for (int k = 0; k <= 16 && !adding.toldFull; ++k)
        if (deps[k] > 0 && !HeldBySlot(session.memImage, deps[k])) Place(session, adding, deps[k]);
}

bool Place(const MemImageContext& session, Adding& adding, std::int64_t id) {
    if (adding.toldFull) return false;
    Database& db = session.pool.db();
    // A reference to a preset that is gone has nothing to put in.
    const std::optional<std::string> name = PresetName(db, id);
    if (!name) return false;
    MemImageState& image = session.memImage;
    int slot = image.PresetList.findItemData(adding.initializedId);
    if (slot >= kPresetSlots) slot = -1;
    if (slot < 0) {
        session.prompter.message("Cannot Send Preset to Memory Image",
                                 "There are no unused Presets ('--Initialized--') in your current Memory Image.  "
                                 "Clear one out before sending any Presets from the Pool.");
        adding.toldFull = true;
        return false;
    }
    image.PresetList.setLine(slot, SlotLine(slot, *name), id);
    image.ImageChanged = true;
    PlaceDependencies(session, adding, GetDependencies(db, id));
    return true;
}

}  // namespace

PresetDependencies GetDependencies(Database& db, std::int64_t id) {
    PresetDependencies deps;
    deps.fill(-1);
    long count = 0;
    Statement preset = db.prepare("SELECT SetupScenePreset FROM PresetRec WHERE ID = :ID");
    preset.bind(":ID", id);
    if (preset.step() && preset.getInt(0) != id) {
        deps[0] = static_cast<long>(preset.getInt(0));
        count = 1;
    }
    Statement buttons =
        db.prepare("SELECT \"Index\", ScenePreset FROM ButtonRec WHERE PresetREF = :ID ORDER BY \"Index\"");
    buttons.bind(":ID", id);
    while (buttons.step()) {
        const std::int64_t index = buttons.getInt(0);
        const std::int64_t target = buttons.getInt(1);
        if (index < 0 || index >= kButtonCount || target <= 0 || target == id) continue;
        deps[static_cast<std::size_t>(index) + 1] = static_cast<long>(target);
        ++count;
    }
    deps[17] = count;
    deps[18] = 0;
    return deps;
}

bool AddPresetsRecursively(const MemImageContext& session, std::int64_t id) {
    return Guarded(session, false, [&] {
        Adding adding{session.pool.InitializedPresetID()};
        const bool added = Place(session, adding, id);
        session.memImage.notifyChanged();
        return added;
    });
}

void RescanDependencies(const MemImageContext& session) {
    Guarded(session, 0, [&] {
        MemImageState& image = session.memImage;
        Database& db = session.pool.db();
        Adding adding{session.pool.InitializedPresetID()};
        // Slots filled by the adding are scanned too when they come later;
        // earlier ones had their dependencies added with them.
        for (int slot = 0; slot < SlotCount(image) && !adding.toldFull; ++slot) {
            const std::int64_t id = image.PresetList.itemData(slot);
            if (id <= 0 || id == adding.initializedId) continue;
            PlaceDependencies(session, adding, GetDependencies(db, id));
        }
        image.notifyChanged();
        return 0;
    });
}

void FillSceneList(const MemImageContext& session) {
    Guarded(session, 0, [&] {
        MemImageState& image = session.memImage;
        image.clearSceneList();
        Statement scenes = session.pool.db().prepare("SELECT Name FROM SceneRec WHERE PresetREF = :ID ORDER BY Name");
        int n = 0;
        for (int slot = 0; slot < SlotCount(image); ++slot) {
            const std::int64_t id = image.PresetList.itemData(slot);
            scenes.reset();
            scenes.bind(":ID", id);
            while (scenes.step()) {
                image.SceneList.setLine(
                    n, TwoDigits(n) + ":  " + Trim(DisplayDBString(scenes.getText(0))) + "  [p:" + TwoDigits(slot) + "]",
                    id);
                // Told as soon as the last line is filled, whether or not
                // another scene is waiting.
                if (++n == kSceneSlots) {
                    image.notifyChanged();
                    session.prompter.message(
                        "Not All Scenes Included",
                        "All 100 Scene slots have been filled, but there are still Scenes attached to the Presets in "
                        "this Memory Image that have not been included (there are more than 100 Scenes to be "
                        "included).  The rest will be ignored.");
                    return 0;
                }
            }
        }
        image.notifyChanged();
        return 0;
    });
}

long CalculateMemoryImageSize(const MemImageContext& session) {
    MemImageState& image = session.memImage;
    if (image.CalculatingSize) return 0;
    image.CalculatingSize = true;
    struct Running {
        MemImageState& image;
        ~Running() { image.CalculatingSize = false; }
    } running{image};
    return Guarded(session, session.midi.FreeMemory, [&] {
        const std::int64_t initializedId = session.pool.InitializedPresetID();
        image.FreeMemLabel = "Calculating...";
        image.notifyChanged();
        session.pump.yield();
        image.PresetSizeList.clear();
        PresetMemoryCost cost(session.pool.db());
        long sum = 0;
        for (int slot = 0; slot < SlotCount(image); ++slot) {
            const std::int64_t id = image.PresetList.itemData(slot);
            const long size = id == initializedId ? 0 : cost(id);
            image.PresetSizeList.addItem(std::to_string(size));
            sum += size;
        }
        return session.midi.FreeMemory - sum;
    });
}

long ImageSlotsChanged(const MemImageContext& session) {
    RescanDependencies(session);
    FillSceneList(session);
    const long free = CalculateMemoryImageSize(session);
    session.memImage.FreeMemLabel = "Free Memory: " + std::to_string(free);
    session.memImage.notifyChanged();
    return free;
}

bool SetImageSlot(const MemImageContext& session, int slot, std::int64_t id) {
    MemImageState& image = session.memImage;
    if (slot < 0 || slot >= SlotCount(image)) return false;
    const std::optional<std::string> name =
        Guarded(session, std::optional<std::string>(), [&] { return PresetName(session.pool.db(), id); });
    if (!name) return false;
    image.PresetList.setLine(slot, SlotLine(slot, *name), id);
    image.ImageChanged = true;
    ImageSlotsChanged(session);
    return true;
}

bool ShowStoredImage(const MemImageContext& session, std::int64_t id) {
    MemImageState& image = session.memImage;
    const bool found = Guarded(session, false, [&] {
        Database& db = session.pool.db();
        Statement row = db.prepare(
            "SELECT ImageName, ImageNotes, CreatedDate, EditedDate, GlobalSettings FROM MemoryImageRec WHERE ID = :ID");
        row.bind(":ID", id);
        if (!row.step()) return false;
        image.MINameText = Trim(DisplayDBString(row.getText(0)));
        image.NotesText = DisplayDBString(row.getText(1));
        image.CreatedDateText = DisplayDate(row.getText(2));
        image.UpdatedDateText = DisplayDate(row.getText(3));
        image.InvisibleMIID = id;
        FillGlobalsList(session.pool, image.GlobalSettingsCombo, true);
        image.GlobalSettingsCombo.setListIndex(image.GlobalSettingsCombo.findItemData(row.getInt(4)));

        FreeAllSlots(image, session.pool.InitializedPresetID());
        Statement slots = db.prepare(
            "SELECT PresetRec.ID, MemoryImage2PresetMapRec.\"Index\", PresetRec.Name FROM PresetRec, "
            "MemoryImage2PresetMapRec WHERE PresetRec.ID = MemoryImage2PresetMapRec.PresetREF AND "
            "MemoryImage2PresetMapRec.MemoryImageREF = :ID ORDER BY MemoryImage2PresetMapRec.\"Index\"");
        slots.bind(":ID", id);
        while (slots.step()) {
            const std::int64_t slot = slots.getInt(1);
            if (slot < 0 || slot >= kPresetSlots) continue;
            image.PresetList.setLine(static_cast<int>(slot),
                                     SlotLine(static_cast<int>(slot), Trim(DisplayDBString(slots.getText(2)))),
                                     slots.getInt(0));
        }
        return true;
    });
    if (!found) return false;
    // What the follow-ups add to a stored image is a change of it.
    image.ImageChanged = false;
    ImageSlotsChanged(session);
    return true;
}

void InitMemImage(const MemImageContext& session) {
    MemImageState& image = session.memImage;
    const std::int64_t stored = Guarded(session, std::int64_t{-1}, [&] {
        Statement find = session.pool.db().prepare("SELECT ID FROM MemoryImageRec WHERE ImageName = :Name");
        find.bind(":Name", kInitializedName);
        return find.step() ? find.getInt(0) : std::int64_t{-1};
    });
    if (stored < 0 || !ShowStoredImage(session, stored)) {
        // A pool that lost its stored "--Initialized--" image still gets one.
        image.NotesText.clear();
        image.UpdatedDateText.clear();
        image.InvisibleMIID = -1;
        FreeAllSlots(image, session.pool.InitializedPresetID());
        ImageSlotsChanged(session);
    }
    Guarded(session, 0, [&] {
        const std::int64_t defaultId = FillGlobalsList(session.pool, image.GlobalSettingsCombo, true);
        image.GlobalSettingsCombo.setListIndex(image.GlobalSettingsCombo.findItemData(defaultId));
        return 0;
    });
    image.CreatedDateText = DisplayDate(NowDateText());
    image.MINameText.clear();
    image.FocusMINameText = true;
    image.ImageChanged = false;
    image.notifyChanged();
}

void ConnectStoreFollowUps(const MemImageContext& session) {
    StoreFollowUps& next = session.memImage.followUps;
    next.RescanDependencies = [session] { RescanDependencies(session); };
    next.FillSceneList = [session] { FillSceneList(session); };
    next.CalculateMemoryImageSize = [session] { return CalculateMemoryImageSize(session); };
}

}  // namespace tavlo

#include "db/PoolSeed.h"

#include <string>

#include "db/ControlRows.h"
#include "db/ControllerNames.h"
#include "db/Database.h"
#include "base/PoolDates.h"
#include "preset/WorkingPreset.h"

namespace tavlo {
namespace {

std::int64_t seedInitializedPreset(Database& db, const std::string& now) {
    Statement preset = db.prepare(
        "INSERT INTO PresetRec (Name, Notes, CreatedDate, UpdatedDate, DataWheelLink, SetupScene, "
        "SetupScenePreset, SetupString, SetupChannelMap) VALUES (:Name, '', :Now, :Now, 0, :NoScene, -1, '', :Map)");
    const std::string emptyChannelMap(4 * kSetupChannelCount, '\0');
    preset.bind(":Name", kInitializedName).bind(":Now", now).bind(":NoScene", kNoScene)
        .bind(":Map", Blob{emptyChannelMap});
    preset.run();
    const std::int64_t id = db.lastInsertId();

    Statement faders = PrepareFaderInsert(db);
    for (int index = 0; index < kFaderCount; ++index) InsertFaderRow(faders, id, index, FaderDef{});
    Statement buttons = PrepareButtonInsert(db);
    for (int index = 0; index < kButtonCount; ++index) InsertButtonRow(buttons, id, index, ButtonDef{});
    return id;
}

void seedInitializedImage(Database& db, std::int64_t presetId, const std::string& now) {
    Statement image = db.prepare(
        "INSERT INTO MemoryImageRec (ImageName, ImageNotes, CreatedDate, EditedDate, GlobalSettings) "
        "VALUES (:Name, '', :Now, :Now, -1)");
    image.bind(":Name", kInitializedName).bind(":Now", now);
    image.run();
    const std::int64_t imageId = db.lastInsertId();
    Statement slots = db.prepare(
        "INSERT INTO MemoryImage2PresetMapRec (MemoryImageREF, PresetREF, \"Index\") VALUES (:Image, :Preset, :Index)");
    for (int slot = 0; slot < 50; ++slot) {
        slots.reset();
        slots.bind(":Image", imageId).bind(":Preset", presetId).bind(":Index", slot);
        slots.run();
    }
}

}  // namespace

void SeedPool(Database& db) {
    const std::string now = NowDateText();
    const std::int64_t presetId = seedInitializedPreset(db, now);
    seedInitializedImage(db, presetId, now);

    Statement names = db.prepare("INSERT INTO CCTable (CCNum, CCName) VALUES (:Num, :Name)");
    for (int cc = 0; cc < 128; ++cc) {
        names.reset();
        names.bind(":Num", cc).bind(":Name", ControllerName(cc));
        names.run();
    }

    // The system device: functions mapped without a device belong to it.
    db.prepare("INSERT INTO MakeTable (Make) VALUES ('UNASSOCIATED')").run();
    db.prepare("INSERT INTO ModelTable (Make, Model, SysexPrefix, Description, Own, CannotDelete) "
               "VALUES ('UNASSOCIATED', 'DEVICE', '', '', -1, -1)")
        .run();

    // The two dumps that clear a device are written here empty; the memory
    // image work fills them with the ALL PRESETS and ALL SCENES of a cleared
    // device, built by its own encoder.
    db.prepare("INSERT INTO InitializedSysexTable (ALLPRESETSSysex, ALLSCENESSysex) VALUES (X'', X'')").run();
}

}  // namespace tavlo

#include "pool/PoolList.h"
#include "preset/PresetNames.h"

#include "pool/PresetMemorySize.h"
#include "base/MSBModule.h"
#include "base/PoolDates.h"
#include "pool/PoolContext.h"
#include "editor/EditorState.h"
#include "pool/PoolFlags.h"
#include "pool/PoolFormState.h"
#include "editor/ImageSlots.h"
#include "db/PoolDatabase.h"

namespace tavlo {

using MSBModule::DisplayDBString;
using MSBModule::Trim;

bool IsPoolHeaderLine(const PoolContext& session, int index) {
    const ListState& list = session.poolForm.PoolList;
    if (index < 0 || index >= list.listCount()) return true;
    return list.itemData(index) <= 0;
}

int PoolOperationLine(const PoolContext& session) {
    const ListState& list = session.poolForm.PoolList;
    const int current = list.listIndex();
    if (current >= 0 && !IsPoolHeaderLine(session, current)) return current;
    for (int index : list.selectedIndexes())
        if (!IsPoolHeaderLine(session, index)) return index;
    return -1;
}

void ReloadPoolList(const PoolContext& session) {
    PoolFormState& form = session.poolForm;
    ListState& list = form.PoolList;
    Database& db = session.pool.db();

    std::int64_t remembered = 0;
    if (!form.FirstFill) {
        const int line = PoolOperationLine(session);
        if (line >= 0) remembered = list.itemData(line);
    }

    ListState fresh;
    if (form.OrderOption == PoolOrder::ByName) {
        Statement rows = db.prepare("SELECT ID, Name FROM PresetRec ORDER BY Name, UpdatedDate");
        while (rows.step()) fresh.addItem(DisplayDBString(rows.getText(1)), rows.getInt(0));
    } else {
        // Every preset appears once for each of its devices, and once under
        // "UNASSOCIATED" when it has none: the outer join keeps those.
        Statement rows = db.prepare(
            "SELECT PresetRec.ID, PresetRec.Name, MakeModelAssocRec.Make, MakeModelAssocRec.Model "
            "FROM PresetRec LEFT JOIN MakeModelAssocRec ON MakeModelAssocRec.PresetREF = PresetRec.ID "
            "ORDER BY MakeModelAssocRec.Make, MakeModelAssocRec.Model, PresetRec.Name");
        bool first = true;
        std::string lastMake, lastModel;
        bool lastMakeNull = false, lastModelNull = false;
        const std::string indent(10, ' ');
        while (rows.step()) {
            const bool makeNull = rows.isNull("Make");
            const bool modelNull = rows.isNull("Model");
            const std::string make = makeNull ? std::string() : rows.getText(2);
            const std::string model = modelNull ? std::string() : rows.getText(3);
            if (first || make != lastMake || model != lastModel || makeNull != lastMakeNull ||
                modelNull != lastModelNull) {
                fresh.addItem("> " + (makeNull ? std::string("UNASSOCIATED") : DisplayDBString(make)) + " " +
                                  DisplayDBString(model),
                              0);
                first = false;
                lastMake = make;
                lastModel = model;
                lastMakeNull = makeNull;
                lastModelNull = modelNull;
            }
            fresh.addItem(indent + Trim(DisplayDBString(rows.getText(1))), rows.getInt(0));
        }
    }
    list = std::move(fresh);
    if (remembered > 0) {
        const int line = list.findItemData(remembered);
        if (line >= 0) {
            list.setListIndex(line);
            list.setSelected(line, true);
        }
    }
    form.FirstFill = false;
    form.notifyChanged();
}

void SelectPoolLine(const PoolContext& session, int index) {
    PoolFormState& form = session.poolForm;
    Database& db = session.pool.db();
    form.PoolList.setListIndex(index);
    form.SceneList.clear();
    form.AssociatedDeviceList.clear();
    form.MIsUsingList.clear();
    form.NotesText.clear();
    form.CreatedDateText.clear();
    form.UpdatedDateText.clear();
    if (IsPoolHeaderLine(session, index)) {
        form.MemLabel = "Memory Used: 0";
        form.notifyChanged();
        return;
    }
    const std::int64_t id = form.PoolList.itemData(index);
    Statement preset = db.prepare("SELECT Name, Notes, CreatedDate, UpdatedDate FROM PresetRec WHERE ID = :ID");
    preset.bind(":ID", id);
    if (!preset.step()) {
        form.notifyChanged();
        return;
    }
    form.NotesText = DisplayDBString(preset.getText("Notes"));
    form.CreatedDateText = DisplayDate(preset.getText("CreatedDate"));
    form.UpdatedDateText = DisplayDate(preset.getText("UpdatedDate"));
    if (IsInitializedName(preset.getText("Name"))) {
        form.MemLabel = "Fixed System Preset";
    } else {
        form.MemLabel = "Calculating...";
        form.MemLabel = "Memory Used: " + std::to_string(CalculatePresetMemorySize(db, id));
    }
    Statement devices = db.prepare("SELECT Make, Model FROM MakeModelAssocRec WHERE PresetREF = :ID");
    devices.bind(":ID", id);
    while (devices.step())
        form.AssociatedDeviceList.addItem(DisplayDBString(devices.getText(0)) + ":" + DisplayDBString(devices.getText(1)));
    Statement scenes = db.prepare("SELECT ID, Name FROM SceneRec WHERE PresetREF = :ID ORDER BY Name");
    scenes.bind(":ID", id);
    while (scenes.step()) form.SceneList.addItem(DisplayDBString(scenes.getText(1)), scenes.getInt(0));
    Statement images = db.prepare(
        "SELECT MemoryImageRec.ImageName FROM MemoryImage2PresetMapRec, MemoryImageRec "
        "WHERE MemoryImage2PresetMapRec.MemoryImageREF = MemoryImageRec.ID AND PresetREF = :ID");
    images.bind(":ID", id);
    while (images.step()) form.MIsUsingList.addItem(DisplayDBString(images.getText(0)));
    form.notifyChanged();
}

}  // namespace tavlo

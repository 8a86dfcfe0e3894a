#include "editor/InitPreset.h"

#include <algorithm>
#include <cstdio>

#include "editor/PresetOperations.h"
#include "preset/PristinePreset.h"
#include "base/MSBModule.h"
#include "editor/EditorContext.h"
#include "editor/EditorState.h"
#include "editor/ImageSlots.h"
#include "db/PoolDatabase.h"

namespace tavlo {
namespace {

// "SetupChannel07" = "001:000:005:101": Bank, BankIsMSB, ProgChange, Volume.
void overlaySetupChannels(Database& db, WorkingPreset& preset) {
    Statement rows = db.prepare("SELECT Field, Value FROM DefaultsTable WHERE Field LIKE 'SetupChannel%' ORDER BY Field");
    while (rows.step()) {
        const std::string field = rows.getText("Field");
        int channel = 0;
        if (std::sscanf(field.c_str() + 12, "%2d", &channel) != 1 || channel < 1 || channel > kSetupChannelCount)
            continue;
        int bank = 0, msb = 0, program = 0, volume = 0;
        const std::string value = rows.getText("Value");
        if (std::sscanf(value.c_str(), "%d:%d:%d:%d", &bank, &msb, &program, &volume) != 4) continue;
        auto fit = [](int v) { return static_cast<std::int16_t>(v < 0 ? 0 : v > 129 ? 129 : v); };
        preset.SetupChannels[channel - 1] = {fit(bank), fit(msb), fit(program), fit(volume)};
    }
}

// "SetupString" = the string's text, ": " and its substring count; the
// substrings are the rows of MessageStringRec of MapType 'D'.
void overlaySetupString(Database& db, WorkingPreset& preset) {
    Statement row = db.prepare("SELECT Value FROM DefaultsTable WHERE Field = 'SetupString'");
    if (!row.step()) return;
    const std::string value = row.getText("Value");
    const auto colon = value.rfind(": ");
    int count = 0;
    if (colon == std::string::npos) {
        preset.SetupString = MSBModule::Trim(value);
    } else {
        preset.SetupString = MSBModule::Trim(value.substr(0, colon));
        std::sscanf(value.c_str() + colon + 2, "%d", &count);
    }
    if (count < 0) count = 0;
    if (count > kSubstringLimit) count = kSubstringLimit;
    Statement parts = db.prepare("SELECT * FROM MessageStringRec WHERE MapType = 'D' ORDER BY \"Index\", ID");
    int filled = 0;
    while (parts.step()) {
        const int index = static_cast<int>(parts.getInt("Index"));
        if (index < 0 || index >= count) continue;
        MessageSubstring& s = preset.SetupStrings.Slots[index];
        s.CommandType = static_cast<std::int16_t>(parts.getInt("CommandType"));
        s.CommandChannel = static_cast<std::int16_t>(parts.getInt("CommandChannel"));
        s.Value1 = static_cast<std::int16_t>(parts.getInt("Value1"));
        s.Value2 = static_cast<std::int16_t>(parts.getInt("Value2"));
        s.SysexMake = parts.getText("SysexMake");
        s.SysexModel = parts.getText("SysexModel");
        s.EnteredString = parts.getText("EnteredString");
        s.ListItem = parts.getText("ListItem");
        s.OwnCheck = static_cast<std::int16_t>(parts.getInt("OwnCheck"));
        filled = std::max(filled, index + 1);
    }
    preset.SetupStrings.Count = static_cast<std::int16_t>(filled);
}

void overlayDataWheel(Database& db, WorkingPreset& preset) {
    Statement row = db.prepare("SELECT Value FROM DefaultsTable WHERE Field = 'DataWheelLink'");
    if (!row.step()) return;
    int index = 0;
    if (std::sscanf(row.getText("Value").c_str(), "%d", &index) == 1 && index >= 0 && index < 20)
        preset.DataWheelLink = static_cast<std::int16_t>(index);
}

}  // namespace

void InitializePreset(const EditorContext& session) {
    EditorState& editor = session.editor;
    editor.preset = WorkingPreset{};
    try {
        Database& db = session.pool.db();
        overlaySetupChannels(db, editor.preset);
        overlaySetupString(db, editor.preset);
        overlayDataWheel(db, editor.preset);
    } catch (const DatabaseError&) {
        // A damaged defaults row leaves the built-in defaults in force.
    }
    for (auto& caption : editor.FaderLabel) caption.clear();
    for (auto& caption : editor.PCButton) caption.clear();
    editor.SelectSceneCombo.clear();
    for (ListState* list : {&editor.BSceneCombo, &editor.SelectPresetSceneCombo}) {
        list->clear();
        list->addItem(kNoScene, -1);
        list->setListIndex(0);
    }
    editor.AssociatedList.clear();
    editor.CurrentButton = 0;
    SelectFader(editor, 0);
    UpdateINITData(editor);
    editor.notifyChanged();
}

}  // namespace tavlo

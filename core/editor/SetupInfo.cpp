#include "editor/SetupInfo.h"

#include <algorithm>
#include <cstdio>

#include "editor/ParameterText.h"
#include "base/MSBModule.h"
#include "db/Database.h"
#include "editor/EditorContext.h"
#include "editor/EditorState.h"
#include "editor/ImageSlots.h"
#include "db/PoolDatabase.h"
#include "ui/Prompter.h"

namespace tavlo {

namespace {

std::int16_t& fieldOf(SetupChannelDef& channel, SetupField field) {
    switch (field) {
        case SetupField::Bank: return channel.Bank;
        case SetupField::ProgChange: return channel.ProgChange;
        case SetupField::Volume: break;
    }
    return channel.Volume;
}

constexpr const char* kSameTitle = "About to Make Channel Setups Same";

std::string twoDigits(int value) {
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "%02d", value);
    return buffer;
}

}  // namespace

void ShowSetupChannel(EditorState& editor, int channel) {
    editor.SChannel = std::clamp(channel, 0, kSetupChannelCount - 1);
    editor.notifyChanged();
}

void SetSetupField(EditorState& editor, SetupField field, int position) {
    if (editor.ShowingParams) return;
    fieldOf(editor.preset.SetupChannels.at(editor.SChannel), field) = static_cast<std::int16_t>(std::clamp(position, 0, 128));
    editor.notifyChanged();
}

int SetupFieldPosition(const EditorState& editor, SetupField field) {
    SetupChannelDef channel = editor.preset.SetupChannels.at(editor.SChannel);
    return fieldOf(channel, field);
}

void SetBankIsMSB(EditorState& editor, bool msb) {
    if (editor.ShowingParams) return;
    editor.preset.SetupChannels.at(editor.SChannel).BankIsMSB = msb ? 1 : 0;
    editor.notifyChanged();
}

bool MakeSetupChannelsSame(const EditorContext& session) {
    EditorState& editor = session.editor;
    const int current = editor.SChannel;
    const std::string question =
        "Are you sure you want to make all the Setup Channel information the same as Channel " +
        std::to_string(current + 1) + "?";
    if (session.prompter.message(kSameTitle, question, MessageButtons::YesNo) != MessageAnswer::Yes) return false;
    const SetupChannelDef source = editor.preset.SetupChannels[current];
    for (SetupChannelDef& channel : editor.preset.SetupChannels) channel = source;
    editor.notifyChanged();
    return true;
}

bool SetupChannelsAllOff(const EditorContext& session) {
    EditorState& editor = session.editor;
    if (session.prompter.message(kSameTitle, "Are you sure you want to set all the Setup Channel information to OFF?",
                                 MessageButtons::YesNo) == MessageAnswer::No)
        return false;
    for (SetupChannelDef& channel : editor.preset.SetupChannels) channel = SetupChannelDef{};
    editor.SChannel = 0;
    editor.notifyChanged();
    return true;
}

void WriteSetupChannelDefaults(Database& db, const WorkingPreset& preset) {
    Transaction transaction(db);
    db.exec("DELETE FROM DefaultsTable WHERE Field LIKE 'SetupChannel%'");
    Statement insert = db.prepare("INSERT INTO DefaultsTable (Field, Value) VALUES (:Field, :Value)");
    for (int i = 0; i < kSetupChannelCount; ++i) {
        const SetupChannelDef& c = preset.SetupChannels[i];
        const std::string value = ParameterText::ThreeDigits(c.Bank) + ":" + ParameterText::ThreeDigits(c.BankIsMSB) +
                                  ":" + ParameterText::ThreeDigits(c.ProgChange) + ":" +
                                  ParameterText::ThreeDigits(c.Volume);
        insert.reset();
        insert.bind(":Field", "SetupChannel" + twoDigits(i + 1)).bind(":Value", value).run();
    }
    transaction.commit();
}

// "SetupChannel07" = "001:000:005:101": Bank, BankIsMSB, ProgChange, Volume.
void ApplySetupChannelDefaults(Database& db, WorkingPreset& preset) {
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

void WriteSetupStringDefault(Database& db, const WorkingPreset& preset) {
    Transaction transaction(db);
    db.exec("DELETE FROM DefaultsTable WHERE Field = 'SetupString'");
    db.exec("DELETE FROM MessageStringRec WHERE MapType = 'D'");
    const MessageStringSet& set = preset.SetupStrings;
    if (set.Count > 0) {
        db.prepare("INSERT INTO DefaultsTable (Field, Value) VALUES ('SetupString', :Value)")
            .bind(":Value", MSBModule::Trim(preset.SetupString) + ": " + std::to_string(set.Count))
            .run();
        const std::int64_t mapRef = db.lastInsertId();
        Statement insert = db.prepare(
            "INSERT INTO MessageStringRec (MapType, MapREF, \"Index\", WhichString, CommandType, CommandChannel, "
            "ListItem, EnteredString, OwnCheck, SysexMake, SysexModel, Value1, Value2) VALUES ('D', :MapREF, "
            ":Index, 0, :CommandType, :CommandChannel, :ListItem, :EnteredString, :OwnCheck, :SysexMake, "
            ":SysexModel, :Value1, :Value2)");
        for (int i = 0; i < set.Count && i < kSubstringLimit; ++i) {
            const MessageSubstring& s = set.Slots[i];
            insert.reset();
            insert.bind(":MapREF", mapRef)
                .bind(":Index", i)
                .bind(":CommandType", static_cast<int>(s.CommandType))
                .bind(":CommandChannel", static_cast<int>(s.CommandChannel))
                .bind(":ListItem", s.ListItem)
                .bind(":EnteredString", s.EnteredString)
                .bind(":OwnCheck", static_cast<int>(s.OwnCheck))
                .bind(":SysexMake", s.SysexMake)
                .bind(":SysexModel", s.SysexModel)
                .bind(":Value1", static_cast<int>(s.Value1))
                .bind(":Value2", static_cast<int>(s.Value2))
                .run();
        }
    }
    transaction.commit();
}

// "SetupString" = the string's text, ": " and its substring count; the
// substrings are the rows of MessageStringRec of MapType 'D'.
bool ApplySetupStringDefault(Database& db, WorkingPreset& preset) {
    Statement row = db.prepare("SELECT Value FROM DefaultsTable WHERE Field = 'SetupString'");
    if (!row.step()) return false;
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
    preset.SetupStrings.clear();
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
    return true;
}

}  // namespace tavlo

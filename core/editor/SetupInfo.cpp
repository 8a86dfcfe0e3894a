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

void ApplySetupChannelDefaults(Database& db, WorkingPreset& preset) {
    Statement query = db.prepare("SELECT * FROM DefaultsTable WHERE Field LIKE 'SetupChannel%' ORDER BY Field");
    while (query.step()) {
        const std::string field = query.getText("Field");
        const int channel = static_cast<int>(ParameterText::LeadingNumber(field.substr(std::min<size_t>(12, field.size())))) - 1;
        if (channel < 0 || channel >= kSetupChannelCount) continue;
        const std::string value = query.getText("Value");
        int parts[4] = {0, 0, 0, 0};
        size_t start = 0;
        for (int k = 0; k < 4; ++k) {
            const size_t colon = value.find(':', start);
            parts[k] = std::clamp(static_cast<int>(ParameterText::LeadingNumber(value.substr(start, colon - start))), 0, 129);
            if (colon == std::string::npos) break;
            start = colon + 1;
        }
        SetupChannelDef& c = preset.SetupChannels[channel];
        c.Bank = static_cast<std::int16_t>(parts[0]);
        c.BankIsMSB = static_cast<std::int16_t>(parts[1]);
        c.ProgChange = static_cast<std::int16_t>(parts[2]);
        c.Volume = static_cast<std::int16_t>(parts[3]);
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

bool ApplySetupStringDefault(Database& db, WorkingPreset& preset) {
    Statement row = db.prepare("SELECT Value FROM DefaultsTable WHERE Field = 'SetupString'");
    if (!row.step()) return false;
    std::string text = row.getText("Value");
    const auto colon = text.rfind(": ");
    if (colon != std::string::npos) text = text.substr(0, colon);
    preset.SetupStrings.clear();
    Statement query = db.prepare("SELECT * FROM MessageStringRec WHERE MapType = 'D' ORDER BY \"Index\"");
    int slot = 0;
    while (query.step() && slot < kSubstringLimit) {
        MessageSubstring& s = preset.SetupStrings.Slots[slot++];
        s.CommandType = static_cast<std::int16_t>(query.getInt("CommandType"));
        s.CommandChannel = static_cast<std::int16_t>(query.getInt("CommandChannel"));
        s.ListItem = query.getText("ListItem");
        s.EnteredString = query.getText("EnteredString");
        s.OwnCheck = static_cast<std::int16_t>(query.getInt("OwnCheck"));
        s.SysexMake = query.getText("SysexMake");
        s.SysexModel = query.getText("SysexModel");
        s.Value1 = static_cast<std::int16_t>(query.getInt("Value1"));
        s.Value2 = static_cast<std::int16_t>(query.getInt("Value2"));
    }
    preset.SetupStrings.Count = static_cast<std::int16_t>(slot);
    preset.SetupString = MSBModule::Trim(text);
    return true;
}

}  // namespace tavlo

#include "db/ControlRows.h"

#include "base/MSBModule.h"

namespace tavlo {
namespace {

template <typename Def>
struct ShortColumn {
    const char* param;  // ":Name"; the column is the name without its colon
    std::int16_t Def::*member;
};

constexpr ShortColumn<FaderDef> kFaderShorts[] = {
    {":Value", &FaderDef::Value},       {":Function", &FaderDef::Function},       {":Min", &FaderDef::Min},
    {":Max", &FaderDef::Max},           {":Channel", &FaderDef::Channel},         {":CCNum", &FaderDef::CCNum},
    {":Polarity", &FaderDef::Polarity}, {":ReplaceMode", &FaderDef::ReplaceMode}, {":ParamFormat", &FaderDef::ParamFormat},
};

constexpr ShortColumn<ButtonDef> kButtonShorts[] = {
    {":Function", &ButtonDef::Function},     {":Channel", &ButtonDef::Channel}, {":ProgChange", &ButtonDef::ProgChange},
    {":Velocity", &ButtonDef::Velocity}, {":Note", &ButtonDef::Note},
};

template <typename Def, std::size_t N>
void bindShorts(Statement& insert, const Def& def, const ShortColumn<Def> (&columns)[N]) {
    for (const auto& c : columns) insert.bind(c.param, def.*c.member);
}

template <typename Def, std::size_t N>
void readShorts(const Statement& row, Def& def, const ShortColumn<Def> (&columns)[N]) {
    for (const auto& c : columns) def.*c.member = static_cast<std::int16_t>(row.getInt(c.param + 1));
}

// The columns every control row starts with; the caller binds the rest.
void startRow(Statement& insert, std::int64_t presetId, int index, const std::string& name) {
    insert.reset();
    insert.bind(":Preset", presetId).bind(":Index", index).bind(":Name", name);
}

std::string nameOf(const Statement& row) {
    return row.isNull("Name") ? std::string() : MSBModule::DisplayDBString(row.getText("Name"));
}

}  // namespace

Statement PrepareFaderInsert(Database& db) {
    return db.prepare(
        "INSERT INTO FaderRec (PresetREF, \"Index\", Name, Value, Function, Min, Max, Channel, CCNum, Polarity, "
        "ReplaceMode, MIDIString, ParamFormat, MasterOf, DeviceMapString) VALUES (:Preset, :Index, :Name, :Value, "
        ":Function, :Min, :Max, :Channel, :CCNum, :Polarity, :ReplaceMode, :MIDIString, :ParamFormat, :MasterOf, "
        ":DeviceMapString)");
}

void InsertFaderRow(Statement& insert, std::int64_t presetId, int index, const FaderDef& fader) {
    startRow(insert, presetId, index, fader.Name);
    insert.bind(":MIDIString", fader.MIDIString).bind(":MasterOf", fader.MasterOf)
        .bind(":DeviceMapString", fader.DeviceMapString);
    bindShorts(insert, fader, kFaderShorts);
    insert.run();
}

Statement PrepareButtonInsert(Database& db) {
    return db.prepare(
        "INSERT INTO ButtonRec (PresetREF, \"Index\", Name, Function, Channel, DeviceMapString, Note, ProgChange, "
        "Scene, ScenePreset, String1, String2, Velocity) VALUES (:Preset, :Index, :Name, :Function, :Channel, "
        ":DeviceMapString, :Note, :ProgChange, :Scene, :ScenePreset, :String1, :String2, :Velocity)");
}

void InsertButtonRow(Statement& insert, std::int64_t presetId, int index, const ButtonDef& button) {
    startRow(insert, presetId, index, button.Name);
    insert.bind(":DeviceMapString", button.DeviceMapString).bind(":Scene", button.Scene)
        .bind(":ScenePreset", static_cast<std::int64_t>(button.ScenePreset)).bind(":String1", button.String1)
        .bind(":String2", button.String2);
    bindShorts(insert, button, kButtonShorts);
    insert.run();
}

void ReadFaderRow(const Statement& row, FaderDef& fader) {
    fader.Name = nameOf(row);
    readShorts(row, fader, kFaderShorts);
    fader.MIDIString = row.getText("MidiString");
    fader.MasterOf = row.getText("MasterOf");
    fader.DeviceMapString = row.getText("DeviceMapString");
}

void ReadButtonRow(const Statement& row, ButtonDef& button) {
    button.Name = nameOf(row);
    readShorts(row, button, kButtonShorts);
    button.String1 = row.getText("String1");
    button.String2 = row.getText("String2");
    button.Scene = MSBModule::DisplayDBString(row.getText("Scene"));
    button.ScenePreset = static_cast<std::int32_t>(row.getInt("ScenePreset"));
    button.DeviceMapString = row.getText("DeviceMapString");
}

}  // namespace tavlo

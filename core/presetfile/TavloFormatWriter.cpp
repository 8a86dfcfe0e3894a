#include "presetfile/TavloFormat.h"

#include "base/MSBModule.h"
#include "db/Database.h"
#include "preset/WorkingPreset.h"

namespace tavlo {
namespace {

using MSBModule::DisplayDBString;
using MSBModule::Trim;
using namespace TavloText;

class Lines {
public:
    Lines() { out_.reserve(1 << 16); }
    void line(std::string_view text) { out_.append(text).append("\r\n"); }
    void value(std::string_view keyword, std::string_view text) { out_.append(keyword).append(" ").append(text).append("\r\n"); }
    void value(std::string_view keyword, long long number) { value(keyword, std::to_string(number)); }
    void indented(std::string_view keyword, std::string_view text) {
        out_.append(kIndent);
        value(keyword, text);
    }
    void indented(std::string_view keyword, long long number) { indented(keyword, std::to_string(number)); }
    std::string take() { return std::move(out_); }

private:
    std::string out_;
};

void stringBlock(Lines& out, const std::string& start, const std::string& end, const MessageStringSet& set) {
    out.line(start);
    out.value("[NUMSUBSTRINGS]", set.Count);
    for (int i = 0; i < set.Count && i < kStringSlots; ++i) {
        const MessageSubstring& s = set.Slots[i];
        out.indented("[COMMANDCHANNEL]", s.CommandChannel);
        out.indented("[COMMANDTYPE]", s.CommandType);
        out.indented("[ENTEREDSTRING]", s.EnteredString);
        out.indented("[SYSEXMAKE]", s.SysexMake);
        out.indented("[SYSEXMODEL]", s.SysexModel);
        out.indented("[VALUE1]", s.Value1);
        out.indented("[VALUE2]", s.Value2);
        out.indented("[LISTITEM]", s.ListItem);
        out.indented("[OWNCHECK]", s.OwnCheck);
        out.line(" ");
    }
    out.line(end);
}

// "<self>", the owner's name, or "<none>".
std::string reference(Database* db, const WorkingPreset& preset, std::int32_t stored) {
    if (stored == preset.ID && stored != 0) return kSelf;
    if (stored <= 0 || !db) return kNoScene;
    Statement find = db->prepare("SELECT Name FROM PresetRec WHERE ID = :ID");
    find.bind(":ID", static_cast<std::int64_t>(stored));
    return find.step() ? Trim(DisplayDBString(find.getText("Name"))) : std::string(kNoScene);
}

void fader(Lines& out, const WorkingPreset& preset, int index) {
    const FaderDef& f = preset.Faders[index];
    out.line(kDashes);
    out.line(index < 16 ? "[FADER " + std::to_string(index + 1) + " DEFINITION]"
                        : "[CV " + std::to_string(index - 15) + " DEFINITION]");
    out.value("[NAME]", f.Name);
    out.value("[FUNCTION]", f.Function);
    out.value("[MIN]", f.Min);
    out.value("[MAX]", f.Max);
    out.value("[CCNUM]", f.CCNum);
    out.value("[CHANNEL]", f.Channel);
    out.value("[DEVICEMAPSTRING]", f.DeviceMapString);
    out.value("[MASTEROF]", "_" + f.MasterOf + "_");
    out.value("[MIDISTRING]", f.MIDIString);
    out.value("[PARAMFORMAT]", f.ParamFormat);
    out.value("[POLARITY]", f.Polarity ? "True" : "False");
    out.value("[REPLACEMODE]", f.ReplaceMode);
    out.value("[VALUE]", f.Value);
    if (f.Function == 3)
        stringBlock(out, "[START MIDI STRING DEFINITION]", "[END MIDI STRING DEFINITION]", preset.FaderStrings[index]);
    else
        out.line("[NO MIDI STRING DEFINITION]");
}

void button(Lines& out, Database* db, const WorkingPreset& preset, int index) {
    const ButtonDef& b = preset.Buttons[index];
    out.line(kDashes);
    out.line("[BUTTON " + std::to_string(index + 1) + " DEFINITION]");
    out.value("[NAME]", b.Name);
    out.value("[CHANNEL]", b.Channel);
    out.value("[FUNCTION]", b.Function);
    out.value("[DEVICEMAPSTRING]", b.DeviceMapString);
    out.value("[NOTE]", b.Note);
    out.value("[PROGCHANGE]", b.ProgChange);
    out.value("[SCENE]", b.Scene);
    out.value("[SCENEPRESETNAME]", reference(db, preset, b.ScenePreset));
    out.value("[STRING1]", b.String1);
    out.value("[STRING2]", b.String2);
    out.value("[VELOCITY]", b.Velocity);
    if (b.Function >= 5 && b.Function <= 7)
        stringBlock(out, "[START MIDI STRING1 DEFINITION]", "[END MIDI STRING1 DEFINITION]",
                    preset.ButtonStrings1[index]);
    else
        out.line("[NO MIDI STRING1 DEFINITION]");
    if (b.Function == 6 || b.Function == 7)
        stringBlock(out, "[START MIDI STRING2 DEFINITION]", "[END MIDI STRING2 DEFINITION]",
                    preset.ButtonStrings2[index]);
    else
        out.line("[NO MIDI STRING2 DEFINITION]");
}

void setup(Lines& out, Database* db, const WorkingPreset& preset, const std::vector<std::string>& associated) {
    out.line(" ");
    out.line(kSetupDashes);
    out.line("[SETUP INFORMATION]");
    out.value("[SETUPSCENE]", preset.SetupScene);
    out.value("[SETUPSCENEPRESET]", reference(db, preset, preset.SetupScenePreset));
    out.value("[SETUPSTRING]", preset.SetupString);
    if (preset.SetupStrings.Count > 0)
        stringBlock(out, "[START SETUP STRING DEFINITION]", "[END SETUP STRING DEFINITION]", preset.SetupStrings);
    else
        out.line("[NO SETUP STRING DEFINITION]");
    out.line("[BEGIN SETUP CHANNEL MAP]");
    for (int n = 0; n < kSetupChannelCount; ++n) {
        const SetupChannelDef& c = preset.SetupChannels[n];
        const std::string channel = "[CHANNEL " + TwoDigits(n + 1);
        out.indented(channel + " BANK]", c.Bank);
        out.indented(channel + " BANKMSB]", c.BankIsMSB);
        out.indented(channel + " PROG]", c.ProgChange);
        out.indented(channel + " VOLUME]", c.Volume);
    }
    out.line("[END SETUP CHANNEL MAP]");
    out.line(kDashes);
    out.line("[START DEVICE MAPS]");
    for (std::size_t i = 0; i < associated.size(); ++i) {
        const std::string& pair = associated[i];
        const std::size_t colon = pair.find(':');
        const std::string make = Trim(pair.substr(0, colon));
        const std::string model = colon == std::string::npos ? std::string() : Trim(pair.substr(colon + 1));
        out.indented("[MAKE " + TwoDigits(static_cast<int>(i)) + "]", make);
        out.indented("[MODEL " + TwoDigits(static_cast<int>(i)) + "]", model);
    }
    out.line("[END DEVICE MAPS]");
    out.line(" ");
    out.line(kDashes);
}

void scenes(Lines& out, Database* pool, const WorkingPreset& preset) {
    if (!pool) return out.value("[SCENES]", 0);
    Database& db = *pool;
    Statement count = db.prepare("SELECT COUNT(*) AS NumScenes FROM SceneRec WHERE PresetREF = :ID");
    count.bind(":ID", static_cast<std::int64_t>(preset.ID));
    out.value("[SCENES]", count.step() ? count.getInt(0) : 0);
    Statement rows = db.prepare("SELECT * FROM SceneRec WHERE PresetREF = :ID ORDER BY ID");
    rows.bind(":ID", static_cast<std::int64_t>(preset.ID));
    while (rows.step()) {
        out.value("[SCENE NAME]", DisplayDBString(rows.getText("Name")));
        for (int n = 1; n <= 16; ++n) out.value("[FADER " + std::to_string(n) + "]", rows.getInt("Fader" + std::to_string(n)));
        for (int n = 1; n <= 2; ++n) out.value("[CV " + std::to_string(n) + "]", rows.getInt("CV" + std::to_string(n)));
        out.line(" ");
    }
}

}  // namespace

std::string SaveTavloFormat(Database* db, const WorkingPreset& preset, const std::vector<std::string>& associated) {
    Lines out;
    out.value("[PRESET]", preset.Name);
    out.value("[DATAWHEEL]", preset.DataWheelLink);
    out.line("[NOTES START]");
    out.line(Trim(preset.Notes));
    out.line("[NOTES END]");
    for (int i = 0; i < kFaderCount; ++i) fader(out, preset, i);
    for (int i = 0; i < kButtonCount; ++i) button(out, db, preset, i);
    setup(out, db, preset, associated);
    scenes(out, db, preset);
    return out.take();
}

}  // namespace tavlo

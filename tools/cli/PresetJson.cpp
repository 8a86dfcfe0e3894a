#include "PresetJson.h"

#include <cstdint>
#include <limits>

#include "base/Windows1252.h"

namespace tavlo::cli {
namespace {

using json = Json;

std::string utf8(const std::string& text) { return Windows1252ToUtf8(text); }

// Reads the members of one JSON object into fields, naming the key of the
// first fault.
class Reader {
public:
    Reader(const json& object, std::string path, std::string& error)
        : object_(object), path_(std::move(path)), error_(error) {
        if (!object_.is_object()) fail(path_, "is no object");
    }
    bool ok() const { return error_.empty(); }

    template <typename Int>
    void integer(const char* key, Int& field) {
        const json* value = find(key);
        if (!value) return;
        if (!value->is_number_integer()) return fail(name(key), "is no whole number");
        const auto number = value->get<std::int64_t>();
        if (number < std::numeric_limits<Int>::min() || number > std::numeric_limits<Int>::max())
            return fail(name(key), std::to_string(number) + " is out of range");
        field = static_cast<Int>(number);
    }
    void text(const char* key, std::string& field) {
        const json* value = find(key);
        if (!value) return;
        if (!value->is_string()) return fail(name(key), "is no text");
        field = Utf8ToWindows1252(value->get<std::string>());
    }
    const json* array(const char* key, std::size_t limit) {
        const json* value = find(key);
        if (!value) return nullptr;
        if (!value->is_array()) return fail(name(key), "is no list"), nullptr;
        if (value->size() > limit)
            return fail(name(key), "has " + std::to_string(value->size()) + " entries, at most " +
                                       std::to_string(limit) + " fit"),
                   nullptr;
        return value;
    }
    std::string name(const std::string& key) const { return path_.empty() ? key : path_ + "." + key; }

private:
    const json* find(const char* key) const {
        if (!ok() || !object_.is_object()) return nullptr;
        const auto it = object_.find(key);
        return it == object_.end() ? nullptr : &*it;
    }
    void fail(const std::string& where, const std::string& what) {
        if (error_.empty()) error_ = where + ": " + what;
    }

    const json& object_;
    std::string path_;
    std::string& error_;
};

void readStrings(Reader& owner, const char* key, const std::string& path, MessageStringSet& set, std::string& error) {
    const json* list = owner.array(key, kSubstringLimit);
    if (!list) return;
    set.clear();
    for (std::size_t i = 0; i < list->size() && error.empty(); ++i) {
        MessageSubstring& s = set.Slots[i];
        Reader r((*list)[i], path + key + "[" + std::to_string(i) + "]", error);
        if (!r.ok()) return;
        r.integer("CommandType", s.CommandType);
        r.integer("CommandChannel", s.CommandChannel);
        r.integer("Value1", s.Value1);
        r.integer("Value2", s.Value2);
        r.text("SysexMake", s.SysexMake);
        r.text("SysexModel", s.SysexModel);
        r.text("EnteredString", s.EnteredString);
        r.text("ListItem", s.ListItem);
        r.integer("OwnCheck", s.OwnCheck);
        set.Count = static_cast<std::int16_t>(i + 1);
    }
}

}  // namespace

json SubstringToJson(const MessageSubstring& s) {
    return json{{"CommandType", s.CommandType}, {"CommandChannel", s.CommandChannel},
                {"Value1", s.Value1},           {"Value2", s.Value2},
                {"SysexMake", utf8(s.SysexMake)}, {"SysexModel", utf8(s.SysexModel)},
                {"EnteredString", utf8(s.EnteredString)}, {"ListItem", utf8(s.ListItem)},
                {"OwnCheck", s.OwnCheck}};
}

json StringSetToJson(const MessageStringSet& strings) {
    json list = json::array();
    for (int i = 0; i < strings.Count && i < kStringSlots; ++i)
        list.push_back(SubstringToJson(strings.Slots[static_cast<std::size_t>(i)]));
    return list;
}

json FaderToJson(const FaderDef& f, const MessageStringSet& strings) {
    return json{{"Name", utf8(f.Name)},
                {"Value", f.Value},
                {"Function", f.Function},
                {"Min", f.Min},
                {"Max", f.Max},
                {"Channel", f.Channel},
                {"CCNum", f.CCNum},
                {"Polarity", f.Polarity},
                {"ReplaceMode", f.ReplaceMode},
                {"MIDIString", utf8(f.MIDIString)},
                {"ParamFormat", f.ParamFormat},
                {"MasterOf", utf8(f.MasterOf)},
                {"DeviceMapString", utf8(f.DeviceMapString)},
                {"Strings", StringSetToJson(strings)}};
}

json ButtonToJson(const ButtonDef& b, const MessageStringSet& strings1, const MessageStringSet& strings2) {
    return json{{"Name", utf8(b.Name)},
                {"Function", b.Function},
                {"Channel", b.Channel},
                {"ProgChange", b.ProgChange},
                {"Velocity", b.Velocity},
                {"Note", b.Note},
                {"String1", utf8(b.String1)},
                {"String2", utf8(b.String2)},
                {"Scene", utf8(b.Scene)},
                {"ScenePreset", b.ScenePreset},
                {"DeviceMapString", utf8(b.DeviceMapString)},
                {"Strings1", StringSetToJson(strings1)},
                {"Strings2", StringSetToJson(strings2)}};
}

json SetupChannelToJson(const SetupChannelDef& c) {
    return json{{"Bank", c.Bank}, {"BankIsMSB", c.BankIsMSB}, {"ProgChange", c.ProgChange}, {"Volume", c.Volume}};
}

json PresetToJson(const WorkingPreset& p) {
    json faders = json::array();
    for (std::size_t i = 0; i < kFaderCount; ++i) faders.push_back(FaderToJson(p.Faders[i], p.FaderStrings[i]));
    json buttons = json::array();
    for (std::size_t i = 0; i < kButtonCount; ++i)
        buttons.push_back(ButtonToJson(p.Buttons[i], p.ButtonStrings1[i], p.ButtonStrings2[i]));
    json channels = json::array();
    for (const SetupChannelDef& c : p.SetupChannels) channels.push_back(SetupChannelToJson(c));
    return json{{"Name", utf8(p.Name)},
                {"Faders", faders},
                {"Buttons", buttons},
                {"DataWheelLink", p.DataWheelLink},
                {"SetupChannels", channels},
                {"SetupString", utf8(p.SetupString)},
                {"SetupStrings", StringSetToJson(p.SetupStrings)},
                {"SetupScene", utf8(p.SetupScene)},
                {"SetupScenePreset", p.SetupScenePreset}};
}

bool PresetFromJson(const Json& json, WorkingPreset& p, std::string& error) {
    error.clear();
    Reader top(json, "", error);
    top.text("Name", p.Name);
    if (const auto* faders = top.array("Faders", kFaderCount)) {
        for (std::size_t i = 0; i < faders->size() && error.empty(); ++i) {
            const std::string path = "Faders[" + std::to_string(i) + "]";
            FaderDef& f = p.Faders[i];
            Reader r((*faders)[i], path, error);
            r.text("Name", f.Name);
            r.integer("Value", f.Value);
            r.integer("Function", f.Function);
            r.integer("Min", f.Min);
            r.integer("Max", f.Max);
            r.integer("Channel", f.Channel);
            r.integer("CCNum", f.CCNum);
            r.integer("Polarity", f.Polarity);
            r.integer("ReplaceMode", f.ReplaceMode);
            r.text("MIDIString", f.MIDIString);
            r.integer("ParamFormat", f.ParamFormat);
            r.text("MasterOf", f.MasterOf);
            r.text("DeviceMapString", f.DeviceMapString);
            if (error.empty()) readStrings(r, "Strings", path + ".", p.FaderStrings[i], error);
        }
    }
    if (const auto* buttons = top.array("Buttons", kButtonCount)) {
        for (std::size_t i = 0; i < buttons->size() && error.empty(); ++i) {
            const std::string path = "Buttons[" + std::to_string(i) + "]";
            ButtonDef& b = p.Buttons[i];
            Reader r((*buttons)[i], path, error);
            r.text("Name", b.Name);
            r.integer("Function", b.Function);
            r.integer("Channel", b.Channel);
            r.integer("ProgChange", b.ProgChange);
            r.integer("Velocity", b.Velocity);
            r.integer("Note", b.Note);
            r.text("String1", b.String1);
            r.text("String2", b.String2);
            r.text("Scene", b.Scene);
            r.integer("ScenePreset", b.ScenePreset);
            r.text("DeviceMapString", b.DeviceMapString);
            if (error.empty()) readStrings(r, "Strings1", path + ".", p.ButtonStrings1[i], error);
            if (error.empty()) readStrings(r, "Strings2", path + ".", p.ButtonStrings2[i], error);
        }
    }
    top.integer("DataWheelLink", p.DataWheelLink);
    if (const auto* channels = top.array("SetupChannels", kSetupChannelCount)) {
        for (std::size_t i = 0; i < channels->size() && error.empty(); ++i) {
            SetupChannelDef& c = p.SetupChannels[i];
            Reader r((*channels)[i], "SetupChannels[" + std::to_string(i) + "]", error);
            r.integer("Bank", c.Bank);
            r.integer("BankIsMSB", c.BankIsMSB);
            r.integer("ProgChange", c.ProgChange);
            r.integer("Volume", c.Volume);
        }
    }
    top.text("SetupString", p.SetupString);
    if (error.empty()) readStrings(top, "SetupStrings", "", p.SetupStrings, error);
    top.text("SetupScene", p.SetupScene);
    top.integer("SetupScenePreset", p.SetupScenePreset);
    return error.empty();
}

}  // namespace tavlo::cli

// tavlo-cli preset show / preset build: the single preset dump and its JSON form.
#include <fstream>
#include <iostream>

#include "CliCommand.h"
#include "PresetJson.h"
#include "base/FileBytes.h"
#include "base/MSBModule.h"
#include "sysex/ParseSysexString.h"
#include "sysex/StringNotation.h"
#include "base/Windows1252.h"
#include "editor/ImageSlots.h"
#include "preset/PresetDecoder.h"
#include "preset/PresetDump.h"
#include "preset/PresetEncoder.h"
#include "ui/StreamPrompter.h"

namespace tavlo::cli {
namespace {

using json = Json;

int presetShow(const CliArgs& args, std::ostream& out, std::ostream& err) {
    if (args.positional().size() != 1) {
        err << "usage: tavlo-cli preset show FILE.syx [--model pc1600|pc1600x]\n";
        return kExitUsage;
    }
    const auto model = PC1600ModelOption(args, err);
    if (!model) return kExitUsage;
    const std::string& path = args.positional()[0];
    const auto dump = ReadInputFile(path, err);
    if (!dump) return kExitBadInput;
    if (!IsPresetDump(*dump)) {
        err << kCannotImportPresetTitle << ": " << kCannotImportPresetText << "\n";
        return kExitBadInput;
    }
    const ImageSlots noImage;
    DecodedPreset decoded;
    const DecodeResult result = DecodePresetDump(*dump, noImage.SceneList, *model, decoded);
    if (!result.ok) {
        err << kCannotImportPresetTitle << ": " << result.reason << "\n";
        return kExitBadInput;
    }
    StreamPrompter prompter(&err, MessageAnswer::Yes);
    for (const auto& [title, text] : decoded.messages) prompter.message(title, text, MessageButtons::OK);
    out << PresetToJson(decoded.preset).dump(2) << "\n";
    return kExitOk;
}

// A control's string given only as text, taken as the string editor takes
// typed bytes: checked for its kind of control, then split into substrings
// exactly as the device's bytes would come back.
bool stringFromText(std::string& text, MessageStringSet& set, StringContext context, bool pc1600Model,
                    const std::string& control, std::string& error) {
    const EnteredStringCheck check = CheckEnteredString(text, context, pc1600Model);
    if (!check.ok) {
        error = control + ": the MIDI string \"" + Windows1252ToUtf8(text) + "\" is not valid.\n" +
                StringErrorText();
        return false;
    }
    MessageStringSet rendered;
    rendered.Slots[0].EnteredString = check.rendered;
    rendered.Count = 1;
    const std::string bytes = DeviceStringBytes(rendered);
    if (bytes.size() > 80) {
        error = control +
                ": You can only have 80 total bytes in all MIDI Messages per Control Function (Fader or Button).";
        return false;
    }
    text = DeviceStringToNotation(bytes, context);
    std::string copy = text;
    StringWorkArea work;
    ParseSysexString(copy, work);
    set = work.Strings;
    return true;
}

// Brings a control's string and its substrings together: substrings given
// stand, text alone is parsed, substrings alone give the text.
bool settleString(const json& object, const char* textKey, const char* setKey, std::string& text,
                  MessageStringSet& set, StringContext context, bool pc1600Model, const std::string& control,
                  std::string& error) {
    const bool hasText = object.is_object() && object.contains(textKey);
    const bool hasSet = object.is_object() && object.contains(setKey);
    if (hasSet) {
        for (int i = 0; i < set.Count; ++i) {
            MessageSubstring& s = set.Slots[static_cast<std::size_t>(i)];
            if (s.ListItem.empty() && !s.EnteredString.empty()) s.ListItem = MakeListItem(s.EnteredString, s.CommandType);
        }
        if (!hasText) text = JoinedStringText(set);
        return true;
    }
    if (!hasText || MSBModule::Trim(text).empty()) {
        set.clear();
        text.clear();
        return true;
    }
    return stringFromText(text, set, context, pc1600Model, control, error);
}

bool checkRange(int value, int low, int high, const std::string& what, std::string& error) {
    if (value >= low && value <= high) return true;
    error = what + ": " + std::to_string(value) + " is outside " + std::to_string(low) + " to " + std::to_string(high);
    return false;
}

// What the dump can carry, checked before it is built; `setupSceneLine` is
// the setup scene's line as the editor would show it.
bool preparePreset(const json& input, WorkingPreset& p, std::string& setupSceneLine, const ListState& imageScenes,
                   bool pc1600Model, std::string& error) {
    if (!PresetFromJson(input, p, error)) return false;
    if (p.Name.size() > 16) return error = "Name: at most 16 characters", false;
    const json empty = json::object();
    auto entry = [&](const char* list, std::size_t i) -> const json& {
        if (input.contains(list) && (*input.find(list)).size() > i) return (*input.find(list))[i];
        return empty;
    };
    for (std::size_t i = 0; i < kFaderCount; ++i) {
        const std::string control = "Faders[" + std::to_string(i) + "]";
        FaderDef& f = p.Faders[i];
        if (!checkRange(f.Function, 0, 3, control + ".Function", error)) return false;
        if (f.Name.size() > 15) return error = control + ".Name: at most 15 characters reach the device", false;
        if (!settleString(entry("Faders", i), "MIDIString", "Strings", f.MIDIString, p.FaderStrings[i],
                          StringContext::Fader, pc1600Model, control + ".MIDIString", error))
            return false;
    }
    for (std::size_t i = 0; i < kButtonCount; ++i) {
        const std::string control = "Buttons[" + std::to_string(i) + "]";
        ButtonDef& b = p.Buttons[i];
        if (!checkRange(b.Function, 0, 9, control + ".Function", error)) return false;
        if (pc1600Model && (b.Function == 8 || b.Function == 9))
            return error = control +
                           ".Function: The PC1600 version (non-X) cannot set buttons to SEND FADER or SEND SCENE",
                   false;
        if (b.Name.size() > 15) return error = control + ".Name: at most 15 characters reach the device", false;
        if (b.Function == 9 && SceneIndexOf(imageScenes, b.Scene, b.ScenePreset) == kNoSceneIndex)
            return error = control + ".Scene: \"" + Windows1252ToUtf8(b.Scene) + "\" of preset " +
                           std::to_string(b.ScenePreset) + " is not in the memory image's scene list",
                   false;
        const json& object = entry("Buttons", i);
        if (!settleString(object, "String1", "Strings1", b.String1, p.ButtonStrings1[i], StringContext::Button,
                          pc1600Model, control + ".String1", error) ||
            !settleString(object, "String2", "Strings2", b.String2, p.ButtonStrings2[i], StringContext::Button,
                          pc1600Model, control + ".String2", error))
            return false;
    }
    if (!checkRange(p.DataWheelLink, 0, 19, "DataWheelLink", error)) return false;
    if (!settleString(input, "SetupString", "SetupStrings", p.SetupString, p.SetupStrings, StringContext::Setup,
                      pc1600Model, "SetupString", error))
        return false;

    // The setup scene is chosen in its list, as the editor would show it.
    const std::string scene = MSBModule::Trim(p.SetupScene);
    if (scene.empty() || scene == kNoScene) {
        setupSceneLine = kNoScene;
        return true;
    }
    if (pc1600Model) return error = "SetupScene: the PC1600 (non-X) model has no setup scene", false;
    const int index = SceneIndexOf(imageScenes, p.SetupScene, p.SetupScenePreset);
    if (index == kNoSceneIndex)
        return error = "SetupScene: \"" + Windows1252ToUtf8(p.SetupScene) + "\" of preset " +
                       std::to_string(p.SetupScenePreset) + " is not in the memory image's scene list",
               false;
    setupSceneLine = imageScenes.list(index);
    return true;
}

int presetBuild(const CliArgs& args, std::ostream& out, std::ostream& err) {
    const auto output = args.option("-o");
    if (args.positional().size() != 1 || !output) {
        err << "usage: tavlo-cli preset build FILE.json [--model pc1600|pc1600x] [--device-id N] -o OUT.syx\n";
        return kExitUsage;
    }
    const auto model = PC1600ModelOption(args, err);
    if (!model) return kExitUsage;
    const bool pc1600Model = *model;
    const int deviceId = static_cast<int>(args.wholeNumber("--device-id", 0, 15, 0));
    const std::string& path = args.positional()[0];
    const auto text = ReadInputFile(path, err);
    if (!text) return kExitBadInput;
    const json input = json::parse(*text, nullptr, false);
    if (input.is_discarded() || !input.is_object()) {
        err << "tavlo-cli: " << path << " is no JSON object\n";
        return kExitBadInput;
    }
    const ImageSlots noImage;
    WorkingPreset preset;
    std::string setupSceneLine;
    std::string error;
    if (!preparePreset(input, preset, setupSceneLine, noImage.SceneList, pc1600Model, error)) {
        err << "tavlo-cli: " << error << "\n";
        return kExitBadInput;
    }
    const std::string dump = Form2PresetSysex(preset, {noImage.SceneList, setupSceneLine}, pc1600Model, deviceId);
    if (!WriteWholeFile(*output, dump)) {
        err << "tavlo-cli: cannot write " << *output << "\n";
        return kExitFailed;
    }
    out << "wrote " << dump.size() << " bytes to " << *output << "\n";
    return kExitOk;
}

const CommandRegistrar show{{"preset show",
                             "preset show FILE.syx [--model pc1600|pc1600x]   decode a single preset dump to JSON",
                             {"--model"},
                             {},
                             presetShow}};
const CommandRegistrar build{
    {"preset build",
     "preset build FILE.json [--model pc1600|pc1600x] [--device-id N] -o OUT.syx   encode a preset from JSON",
     {"--model", "--device-id", "-o"},
     {},
     presetBuild}};

}  // namespace
}  // namespace tavlo::cli

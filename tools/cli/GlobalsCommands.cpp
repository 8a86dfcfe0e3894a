// tavlo-cli globals ...: the device's global settings as files (show,
// convert, build from JSON) and in the pool (list, import, export, rename,
// duplicate, default, delete), through the same flows as the windows.
#include <fstream>
#include <iostream>

#include "CliCommand.h"
#include "CliPrompter.h"
#include "GlobalsCli.h"
#include "base/FileBytes.h"
#include "base/MSBModule.h"
#include "base/Windows1252.h"
#include "db/PoolDatabase.h"
#include "globals/GlobalPool.h"
#include "globals/GlobalsFlows.h"
#include "globals/GlobalsState.h"
#include "globals/GlobalsText.h"
#include "midilink/MidiConfig.h"
#include "shell/Program.h"
#include "sysex/DeviceMessages.h"
#include "ui/SteadyClock.h"
#include "ui/StreamPrompter.h"

namespace tavlo::cli {

bool IsTglPath(const std::string& path) {
    return path.size() >= 4 && MSBModule::ToLower(path.substr(path.size() - 4)) == ".tgl";
}

bool ModelOption(const CliArgs& args, bool& pc1600, std::ostream& err) {
    const std::string model = args.option("--model").value_or("pc1600x");
    if (model != "pc1600" && model != "pc1600x") {
        err << "tavlo-cli: --model takes pc1600 or pc1600x\n";
        return false;
    }
    pc1600 = model == "pc1600";
    return true;
}

std::optional<GlobalSettings> SettingsFromBytes(const std::string& bytes, bool tgl, bool pc1600, std::ostream& err) {
    if (tgl) {
        const GlobalsTextResult read = LoadTavloFormatGlobals(bytes, NewGlobalSettings());
        if (!read.settings) {
            err << kCannotImportTitle << ": " << kCannotImportText << " (at: " << Windows1252ToUtf8(read.problem)
                << ")\n";
            return std::nullopt;
        }
        GlobalSettings settings = *read.settings;
        settings.Default = read.defaultYes;
        return settings;
    }
    for (const std::string& message : SplitSysex(bytes)) {
        if (DeviceMessageCommand(message) != DeviceCommand::AllGlobals) continue;
        const DecodedGlobals decoded = Sysex2GlobalForm(message, pc1600);
        if (!decoded.settings) {
            err << "tavlo-cli: " << decoded.problem << "\n";
            return std::nullopt;
        }
        if (decoded.modelNotice) err << kPC1600SysexTitle << ": " << kPC1600SysexNotice << "\n";
        GlobalSettings settings = *decoded.settings;
        settings.Name = "Loaded From Sysex";
        return settings;
    }
    err << "tavlo-cli: the file holds no ALL GLOBALS message\n";
    return std::nullopt;
}

std::optional<std::string> SettingsToBytes(const GlobalSettings& settings, bool tgl, bool pc1600, int deviceId,
                                           std::ostream& err) {
    // The dump's rules hold for the text too: a value no byte carries is refused.
    std::string problem;
    const auto dump = GlobalForm2Sysex(settings, pc1600, deviceId, &problem);
    if (!dump) {
        err << "tavlo-cli: " << problem << "\n";
        return std::nullopt;
    }
    return tgl ? StoreTavloFormatGlobals(settings) : *dump;
}

namespace {

Json SettingsToJson(const GlobalSettings& s) {
    Json json;
    json["Name"] = Windows1252ToUtf8(s.Name);
    json["Default"] = s.Default;
    json["MidiMaps"] = s.MidiMaps;
    json["ViewAngle"] = s.ViewAngle;
    json["ChIn"] = s.ChIn;
    json["ChOut"] = s.ChOut;
    json["Filters"] = s.Filters;
    json["DevNum"] = s.DevNum;
    json["RemoteButton"] = s.RemoteButton;
    json["RemoteChannel"] = s.RemoteChannel;
    json["StartingNote"] = s.StartingNote;
    json["RecChannel"] = s.RecChannel;
    json["CurrentMap"] = s.CurrentMap;
    json["FootSwitch1"] = s.FootSwitch1;
    json["FootSwitch2"] = s.FootSwitch2;
    json["PerMessage"] = s.PerMessage;
    json["PerByte"] = s.PerByte;
    return json;
}

// Keys that are missing keep new settings' values; the encoder checks the ranges.
bool SettingsFromJson(const Json& json, GlobalSettings& s, std::string& error) {
    if (!json.is_object()) {
        error = "the JSON is not an object";
        return false;
    }
    const std::vector<std::pair<const char*, int*>> numbers{
        {"ViewAngle", &s.ViewAngle},       {"ChIn", &s.ChIn},
        {"ChOut", &s.ChOut},               {"DevNum", &s.DevNum},
        {"RemoteButton", &s.RemoteButton}, {"RemoteChannel", &s.RemoteChannel},
        {"StartingNote", &s.StartingNote}, {"RecChannel", &s.RecChannel},
        {"CurrentMap", &s.CurrentMap},     {"FootSwitch1", &s.FootSwitch1},
        {"FootSwitch2", &s.FootSwitch2},   {"PerMessage", &s.PerMessage},
        {"PerByte", &s.PerByte}};
    for (const auto& [key, value] : json.items()) {
        bool known = false;
        for (const auto& [name, field] : numbers)
            if (key == name) {
                if (!value.is_number_integer()) return error = key + ": not a whole number", false;
                *field = value.get<int>();
                known = true;
            }
        if (known) continue;
        if (key == "Name") {
            if (!value.is_string()) return error = "Name: not a text", false;
            s.Name = Utf8ToWindows1252(value.get<std::string>());
        } else if (key == "Default") {
            if (!value.is_boolean()) return error = "Default: not true or false", false;
            s.Default = value.get<bool>();
        } else if (key == "Filters") {
            if (!value.is_array() || value.size() != kFilterCount)
                return error = "Filters: not a list of 15 true or false", false;
            for (std::size_t k = 0; k < kFilterCount; ++k) {
                if (!value[k].is_boolean()) return error = "Filters[" + std::to_string(k) + "]: not true or false", false;
                s.Filters[k] = value[k].get<bool>();
            }
        } else if (key == "MidiMaps") {
            if (!value.is_array() || value.size() != 3) return error = "MidiMaps: not a list of 3 maps", false;
            for (std::size_t m = 0; m < 3; ++m) {
                if (!value[m].is_array() || value[m].size() != kMapEntries)
                    return error = "MidiMaps[" + std::to_string(m) + "]: not a list of 128 numbers", false;
                for (std::size_t p = 0; p < kMapEntries; ++p) {
                    if (!value[m][p].is_number_integer())
                        return error = "MidiMaps[" + std::to_string(m) + "][" + std::to_string(p) + "]: not a whole number",
                               false;
                    s.MidiMaps[m][p] = value[m][p].get<int>();
                }
            }
        } else {
            return error = key + ": no such key", false;
        }
    }
    return true;
}

void PrintSettings(const GlobalSettings& s, std::ostream& out) {
    out << "Name: " << Windows1252ToUtf8(s.Name) << "\n"
        << "Default: " << (s.Default ? "Yes" : "No") << "\n"
        << "MIDI channel in: " << s.ChIn << "\n"
        << "MIDI channel out: " << s.ChOut << "\n"
        << "Record channel: " << RecChannelText(s.RecChannel) << "\n"
        << "View angle: " << s.ViewAngle << "\n"
        << "Delay after a sysex message: " << s.PerMessage << "\n"
        << "Delay per byte: " << PerByteText(s.PerByte) << "\n"
        << "Device number: " << DeviceNumberText(s.DevNum) << "\n"
        << "Remote button: " << ComboText(RemoteButtonLines(), s.RemoteButton) << "\n"
        << "Remote channel: " << s.RemoteChannel << "\n"
        << "Starting note: " << s.StartingNote << "\n"
        << "Foot switch 1: " << ComboText(FootSwitchLines(), s.FootSwitch1) << "\n"
        << "Foot switch 2: " << ComboText(FootSwitchLines(), s.FootSwitch2) << "\n"
        << "Current map: " << ComboText(CurrentMapLines(), s.CurrentMap) << "\n"
        << "Filters:";
    for (int k = 0; k < kFilterCount; ++k)
        if (s.Filters[static_cast<std::size_t>(k)]) out << "\n  " << kFilterCaptions[static_cast<std::size_t>(k)];
    out << "\n";
    for (int map = 0; map < 3; ++map) {
        out << "Map " << map + 1 << ":\n";
        for (int program = 0; program < kMapEntries; ++program)
            out << "  " << ProgChangeLine(program, s.MidiMaps[static_cast<std::size_t>(map)][static_cast<std::size_t>(program)])
                << "\n";
    }
}

bool WriteOutput(const std::string& path, const std::string& bytes, std::ostream& err) {
    if (WriteWholeFile(path, bytes)) return true;
    err << "tavlo-cli: can't write " << path << "\n";
    return false;
}

int globalsShow(const CliArgs& args, std::ostream& out, std::ostream& err) {
    bool pc1600 = false;
    if (args.positional().size() != 1) return UsageOf("globals show", err);
    if (!ModelOption(args, pc1600, err)) return kExitUsage;
    const std::string& path = args.positional()[0];
    const auto bytes = ReadInputFile(path, err);
    if (!bytes) return kExitBadInput;
    const auto settings = SettingsFromBytes(*bytes, IsTglPath(path), pc1600, err);
    if (!settings) return kExitBadInput;
    if (args.flag("--json")) out << SettingsToJson(*settings).dump(2) << "\n";
    else PrintSettings(*settings, out);
    return kExitOk;
}

int globalsConvert(const CliArgs& args, std::ostream& out, std::ostream& err) {
    bool pc1600 = false;
    const auto output = args.option("-o");
    if (args.positional().size() != 1 || !output) return UsageOf("globals convert", err);
    if (!ModelOption(args, pc1600, err)) return kExitUsage;
    const int deviceId = static_cast<int>(args.wholeNumber("--device-id", 0, 15, 0));
    const std::string& path = args.positional()[0];
    const auto bytes = ReadInputFile(path, err);
    if (!bytes) return kExitBadInput;
    auto settings = SettingsFromBytes(*bytes, IsTglPath(path), pc1600, err);
    if (!settings) return kExitBadInput;
    if (const auto name = args.option("--name")) settings->Name = Utf8ToWindows1252(*name);
    const auto written = SettingsToBytes(*settings, IsTglPath(*output), pc1600, deviceId, err);
    if (!written) return kExitBadInput;
    if (!WriteOutput(*output, *written, err)) return kExitFailed;
    out << "converted: " << path << " -> " << *output << "\n";
    return kExitOk;
}

int globalsBuild(const CliArgs& args, std::ostream& out, std::ostream& err) {
    bool pc1600 = false;
    const auto output = args.option("-o");
    if (args.positional().size() != 1 || !output) return UsageOf("globals build", err);
    if (!ModelOption(args, pc1600, err)) return kExitUsage;
    const int deviceId = static_cast<int>(args.wholeNumber("--device-id", 0, 15, 0));
    const auto bytes = ReadInputFile(args.positional()[0], err);
    if (!bytes) return kExitBadInput;
    const Json json = Json::parse(*bytes, nullptr, false);
    if (json.is_discarded()) {
        err << "tavlo-cli: " << args.positional()[0] << " is not JSON\n";
        return kExitBadInput;
    }
    GlobalSettings settings = NewGlobalSettings();
    std::string error;
    if (!SettingsFromJson(json, settings, error)) {
        err << "tavlo-cli: " << error << "\n";
        return kExitBadInput;
    }
    const auto written = SettingsToBytes(settings, IsTglPath(*output), pc1600, deviceId, err);
    if (!written) return kExitBadInput;
    if (!WriteOutput(*output, *written, err)) return kExitFailed;
    out << "built: " << *output << "\n";
    return kExitOk;
}

// One pool command: the program on the pool of --pool, the model and device
// identifier of its MIDI configuration.
struct GlobalsSession {
    explicit GlobalsSession(std::ostream& err)
        : prompter(err), program(std::make_unique<Program>(prompter, status, pump, clock)) {}

    bool open(const CliArgs& args, std::ostream& err) {
        const PoolOpenResult result = program->pool.open(args.poolPath());
        if (!result.ok()) {
            const PoolMessage message = PoolOpenMessage(result, args.poolPath());
            err << message.title << ": " << message.text << "\n";
            return false;
        }
        Statement config = program->pool.db().prepare("SELECT PC1600Model, MIDIInChannel FROM MIDIConfigTable");
        if (config.step()) {
            program->midi.PC1600Model = config.getBool("PC1600Model");
            const std::int64_t channel = config.getInt("MIDIInChannel");
            program->midi.DeviceId = channel >= 0 && channel <= 15 ? static_cast<int>(channel) : 0;
        }
        LoadGlobalPoolList(*program);
        return true;
    }

    // Selects the line of the settings of that name, as a click would.
    bool select(const std::string& typedName, std::ostream& err) {
        const std::string name = MSBModule::Trim(Utf8ToWindows1252(typedName));
        ListState& list = program->globals.GlobalPoolList;
        for (int k = 0; k < list.listCount(); ++k)
            if (MSBModule::ToUpper(GlobalsNameOfLine(list.list(k))) == MSBModule::ToUpper(name)) {
                list.setListIndex(k);
                return true;
            }
        err << "tavlo-cli: no global settings named '" << typedName << "' in the pool\n";
        return false;
    }

    // Runs a flow: a refusal is exit status 2; a question that no option
    // answered is 64, as in the pool's commands: the command line lacks it.
    template <typename Flow>
    int run(std::ostream& err, Flow flow) {
        bool done = false;
        try {
            done = flow();
        } catch (const UnansweredQuestion& question) {
            err << "tavlo-cli: " << question.what() << "\n";
            return kExitUsage;
        }
        return done && !prompter.refused() ? kExitOk : kExitBadInput;
    }

    CliPrompter prompter;
    SilentStatusView status;
    SleepingPump pump;
    SteadyClock clock;
    std::unique_ptr<Program> program;
};

int globalsList(const CliArgs& args, std::ostream& out, std::ostream& err) {
    if (!args.positional().empty()) return UsageOf("globals list", err);
    GlobalsSession cli(err);
    if (!cli.open(args, err)) return kExitBadInput;
    for (const auto& line : cli.program->globals.GlobalPoolList.lines()) out << Windows1252ToUtf8(line.text) << "\n";
    return kExitOk;
}

int globalsImport(const CliArgs& args, std::ostream& out, std::ostream& err) {
    if (args.positional().size() != 1) return UsageOf("globals import", err);
    if (args.flag("--default") && args.flag("--no-default")) {
        err << "tavlo-cli: --default and --no-default exclude each other\n";
        return kExitUsage;
    }
    GlobalsSession cli(err);
    if (!cli.open(args, err)) return kExitBadInput;
    CliPrompter& prompter = cli.prompter;
    prompter.answeredBy("Importimg Globals as Defaults", "--default or --no-default");
    prompter.answeredBy("About to Overwrite", "--overwrite");
    if (args.flag("--default")) prompter.answerMessage("Importimg Globals as Defaults", MessageAnswer::Yes);
    if (args.flag("--no-default")) prompter.answerMessage("Importimg Globals as Defaults", MessageAnswer::No);
    if (args.flag("--overwrite")) prompter.answerMessage("About to Overwrite", MessageAnswer::Yes);
    // The model's notice is no refusal of the import.
    prompter.answerMessage(kPC1600SysexTitle, MessageAnswer::OK);
    const std::string& path = args.positional()[0];
    if (!ReadInputFile(path, err)) return kExitBadInput;
    GlobalsState& state = cli.program->globals;
    std::optional<std::int64_t> id;
    const int status = cli.run(err, [&] {
        if (!ReadGlobalsFile(*cli.program, path)) return false;
        if (!IsTglPath(path)) state.settings.Default = args.flag("--default");
        if (const auto name = args.option("--name")) state.settings.Name = Utf8ToWindows1252(*name);
        id = StoreGlobals(*cli.program);
        return id.has_value();
    });
    if (status == kExitOk) out << "stored: " << Windows1252ToUtf8(MSBModule::Trim(state.settings.Name)) << "\n";
    return status;
}

int globalsExport(const CliArgs& args, std::ostream& out, std::ostream& err) {
    const auto output = args.option("-o");
    if (args.positional().size() != 1 || !output) return UsageOf("globals export", err);
    GlobalsSession cli(err);
    if (!cli.open(args, err) || !cli.select(args.positional()[0], err)) return kExitBadInput;
    const int status = cli.run(err, [&] {
        const ListState& list = cli.program->globals.GlobalPoolList;
        return LoadGlobalsRow(*cli.program, list.itemData(list.listIndex())) && WriteGlobalsFile(*cli.program, *output);
    });
    if (status == kExitOk) out << "exported: " << args.positional()[0] << " -> " << *output << "\n";
    return status;
}

// rename, duplicate: the new name typed into the flow's input box.
int renameOrDuplicate(const CliArgs& args, std::ostream& out, std::ostream& err, const char* command,
                      const char* inputTitle, bool (*flow)(const GlobalsContext&), const char* done) {
    if (args.positional().size() != 2) return UsageOf(command, err);
    if (MSBModule::Trim(Utf8ToWindows1252(args.positional()[1])).empty()) {
        err << "tavlo-cli: the new name is empty\n";
        return kExitBadInput;
    }
    GlobalsSession cli(err);
    if (!cli.open(args, err) || !cli.select(args.positional()[0], err)) return kExitBadInput;
    cli.prompter.answerInput(inputTitle, Utf8ToWindows1252(args.positional()[1]));
    const int status = cli.run(err, [&] { return flow(*cli.program); });
    if (status == kExitOk) out << done << ": " << args.positional()[0] << " -> " << args.positional()[1] << "\n";
    return status;
}

int globalsRename(const CliArgs& args, std::ostream& out, std::ostream& err) {
    return renameOrDuplicate(args, out, err, "globals rename", "Rename Globals", RenameGlobals, "renamed");
}

int globalsDuplicate(const CliArgs& args, std::ostream& out, std::ostream& err) {
    return renameOrDuplicate(args, out, err, "globals duplicate", "Duplicate Global Settings", DuplicateGlobals,
                             "duplicated");
}

int globalsDefault(const CliArgs& args, std::ostream& out, std::ostream& err) {
    if (args.positional().size() != 1) return UsageOf("globals default", err);
    GlobalsSession cli(err);
    if (!cli.open(args, err) || !cli.select(args.positional()[0], err)) return kExitBadInput;
    const int status = cli.run(err, [&] { return MakeDefaultGlobals(*cli.program); });
    if (status == kExitOk) out << "default: " << args.positional()[0] << "\n";
    return status;
}

int globalsDelete(const CliArgs& args, std::ostream& out, std::ostream& err) {
    if (args.positional().size() != 1) return UsageOf("globals delete", err);
    GlobalsSession cli(err);
    if (!cli.open(args, err) || !cli.select(args.positional()[0], err)) return kExitBadInput;
    for (const char* title : {"Delete Globals", "About to Delete Globals", "About to Delete Globals used in Memory Images"})
        cli.prompter.answeredBy(title, "--yes");
    if (args.flag("--yes")) {
        cli.prompter.answerMessage("Delete Globals", MessageAnswer::OK);
        cli.prompter.answerMessage("About to Delete Globals", MessageAnswer::Yes);
        cli.prompter.answerMessage("About to Delete Globals used in Memory Images", MessageAnswer::Yes);
    }
    const int status = cli.run(err, [&] { return DeleteGlobals(*cli.program); });
    if (status == kExitOk) out << "deleted: " << args.positional()[0] << "\n";
    return status;
}

const CommandRegistrar show{{"globals show",
                             "globals show FILE.syx|FILE.tgl [--model pc1600|pc1600x] [--json]   global settings as "
                             "text or JSON",
                             {"--model"},
                             {"--json"},
                             globalsShow}};
const CommandRegistrar convert{{"globals convert",
                                "globals convert IN -o OUT [--model pc1600|pc1600x] [--device-id N] [--name TEXT]   "
                                ".syx to .tgl or .tgl to .syx, by the extensions",
                                {"-o", "--model", "--device-id", "--name"},
                                {},
                                globalsConvert}};
const CommandRegistrar build{{"globals build",
                              "globals build FILE.json -o OUT.syx|OUT.tgl [--model pc1600|pc1600x] [--device-id N]   "
                              "global settings from JSON; missing keys take new settings' values",
                              {"-o", "--model", "--device-id"},
                              {},
                              globalsBuild}};
const CommandRegistrar list{{"globals list", "globals list   the global settings of the pool", {"--pool"}, {}, globalsList}};
const CommandRegistrar importer{{"globals import",
                                 "globals import FILE.syx|FILE.tgl [--name N] [--overwrite] [--default|--no-default]   "
                                 "store global settings in the pool",
                                 {"--name", "--pool"},
                                 {"--overwrite", "--default", "--no-default"},
                                 globalsImport}};
const CommandRegistrar exporter{{"globals export",
                                 "globals export NAME -o FILE.syx|FILE.tgl   write stored global settings to a file",
                                 {"-o", "--pool"},
                                 {},
                                 globalsExport}};
const CommandRegistrar rename{{"globals rename", "globals rename OLD NEW   rename stored global settings", {"--pool"}, {}, globalsRename}};
const CommandRegistrar duplicate{{"globals duplicate",
                                  "globals duplicate NAME NEW   copy stored global settings (never the default)",
                                  {"--pool"},
                                  {},
                                  globalsDuplicate}};
const CommandRegistrar makeDefault{{"globals default", "globals default NAME   make stored global settings the default", {"--pool"}, {}, globalsDefault}};
const CommandRegistrar remove{{"globals delete",
                               "globals delete NAME --yes   delete stored global settings; memory images using them "
                               "move to the default",
                               {"--pool"},
                               {"--yes"},
                               globalsDelete}};

}  // namespace
}  // namespace tavlo::cli

// Preset text files on the command line: pool export and import of .tpr
// files, and preset convert between .tpr and .syx without a pool.
#include <iostream>

#include "CliPrompter.h"
#include "PoolPresetSession.h"
#include "PresetTextCli.h"
#include "base/FileBytes.h"
#include "base/MSBModule.h"
#include "base/Windows1252.h"
#include "editor/EditorState.h"
#include "editor/ImageSlots.h"
#include "pool/PresetLoad.h"
#include "preset/PresetDecoder.h"
#include "preset/PresetDump.h"
#include "preset/PresetEncoder.h"
#include "presetfile/TavloFormat.h"
#include "presetfile/TavloFormatLoad.h"
#include "presetfile/TavloFormatParser.h"
#include "ui/StreamPrompter.h"

namespace tavlo::cli {

namespace {

constexpr const char* kFailureText = "does not appear to be a Tavlo Format Preset File.";

bool isNotice(const std::string& title) {
    return title == "Incompatibility to PC1600" || title == "PC1600 Incompatibility" ||
           title == "Make/Model Does Not Exist";
}

bool shown(const CliPrompter& prompter, const std::string& title) {
    for (const std::string& t : prompter.shown())
        if (t == title) return true;
    return false;
}

// --on-clash and --missing-scenes as the answers of the load's questions;
// false on a word they don't take.
bool answerQuestions(const CliArgs& args, CliPrompter& prompter, std::ostream& err) {
    prompter.answeredBy("About to Store", "--on-clash keep|overwrite");
    prompter.answeredBy("Resolve Scene Maps to Nonexistent Presets", "--missing-scenes unmap|refuse");
    if (const auto clash = args.option("--on-clash")) {
        if (*clash != "keep" && *clash != "overwrite") {
            err << "tavlo-cli: for a preset text file --on-clash takes keep or overwrite\n";
            return false;
        }
        prompter.answerMessage("About to Store", *clash == "keep" ? MessageAnswer::No : MessageAnswer::Yes);
    }
    if (const auto missing = args.option("--missing-scenes")) {
        if (*missing != "unmap" && *missing != "refuse") {
            err << "tavlo-cli: --missing-scenes takes unmap or refuse\n";
            return false;
        }
        prompter.answerMessage("Resolve Scene Maps to Nonexistent Presets",
                               *missing == "unmap" ? MessageAnswer::Yes : MessageAnswer::No);
    }
    return true;
}

// A text with references to other presets becomes a dump without them; the
// user learns which controls changed.
std::string dumpOfText(const ParsedTavloPreset& parsed, bool pc1600Model, int deviceId, std::ostream& err) {
    for (int i = 0; i < kButtonCount; ++i)
        if (parsed.buttonRefs[i] != kNoScene)
            err << "tavlo-cli: warning: Button " << i + 1 << " sends scene '"
                << Windows1252ToUtf8(parsed.preset.Buttons[i].Scene) << "' of '" << Windows1252ToUtf8(parsed.buttonRefs[i])
                << "', which only a memory image can carry; the dump sends no scene there\n";
    if (parsed.setupSceneRef != kNoScene)
        err << "tavlo-cli: warning: the setup scene '" << Windows1252ToUtf8(parsed.preset.SetupScene)
            << "' needs a memory image; the dump has no setup scene\n";
    const ImageSlots noImage;
    return Form2PresetSysex(parsed.preset, {noImage.SceneList, kNoScene}, pc1600Model, deviceId);
}

int textToSysex(const std::string& in, const std::string& text, const std::string& output, bool pc1600Model,
                int deviceId, std::ostream& err) {
    ParsedTavloPreset parsed = ParseTavloText(text);
    if (!parsed.ok) {
        err << TavloText::kFailureTitle << ": The file '" << in << "' " << kFailureText << "\n";
        return kExitBadInput;
    }
    if (parsed.initialized) {
        err << "tavlo-cli: '" << in << "' names the pool's initial preset and holds nothing else\n";
        return kExitBadInput;
    }
    StreamPrompter notices(&err, MessageAnswer::OK);
    if (pc1600Model) RewriteForPC1600(notices, parsed);
    if (!WriteWholeFile(output, dumpOfText(parsed, pc1600Model, deviceId, err))) {
        err << "tavlo-cli: cannot write " << output << "\n";
        return kExitFailed;
    }
    return kExitOk;
}

int sysexToText(const std::string& dump, const std::string& output, bool pc1600Model, std::ostream& err) {
    const ImageSlots noImage;
    DecodedPreset decoded;
    const DecodeResult result =
        IsPresetDump(dump) ? DecodePresetDump(dump, noImage.SceneList, pc1600Model, decoded) : DecodeResult{};
    if (!IsPresetDump(dump) || !result.ok) {
        err << kCannotImportPresetTitle << ": " << (result.reason.empty() ? kCannotImportPresetText : result.reason)
            << "\n";
        return kExitBadInput;
    }
    StreamPrompter notices(&err, MessageAnswer::OK);
    for (const auto& [title, text] : decoded.messages) notices.message(title, text, MessageButtons::OK);
    if (!WriteWholeFile(output, SaveTavloFormat(nullptr, decoded.preset, {}))) {
        err << "tavlo-cli: cannot write " << output << "\n";
        return kExitFailed;
    }
    return kExitOk;
}

int presetConvert(const CliArgs& args, std::ostream& out, std::ostream& err) {
    const auto output = args.option("-o");
    if (args.positional().size() != 1 || !output) return UsageOf("preset convert", err);
    const auto model = PC1600ModelOption(args, err);
    if (!model) return kExitUsage;
    const int deviceId = static_cast<int>(args.wholeNumber("--device-id", 0, 15, 0));
    const std::string& in = args.positional()[0];
    if (IsSysexFileName(in) == IsSysexFileName(*output)) {
        err << "tavlo-cli: preset convert turns a .tpr file into a .syx file or a .syx file into a .tpr file\n";
        return kExitUsage;
    }
    const auto bytes = ReadInputFile(in, err);
    if (!bytes) return kExitBadInput;
    const int status = IsSysexFileName(in) ? sysexToText(*bytes, *output, *model, err)
                                           : textToSysex(in, *bytes, *output, *model, deviceId, err);
    if (status == kExitOk) out << "converted: " << in << " -> " << *output << "\n";
    return status;
}

const CommandRegistrar convert{
    {"preset convert",
     "preset convert IN.tpr -o OUT.syx | IN.syx -o OUT.tpr [--model pc1600|pc1600x] [--device-id N]   "
     "convert one preset between text and sysex, without a pool",
     {"-o", "--model", "--device-id"},
     {},
     presetConvert}};

}  // namespace

int PoolExportText(PoolPresetSession& cli, const std::string& typedName, const std::string& file, std::ostream& out,
                   std::ostream& err) {
    const std::int64_t id = cli.presetId(typedName, err);
    if (id < 0) return kExitBadInput;
    if (!LoadPC1600xFormFromPool(*cli.session, id)) return kExitFailed;
    if (!WriteWholeFile(file, EditorTavloText(*cli.session))) {
        err << "tavlo-cli: cannot write " << file << "\n";
        return kExitFailed;
    }
    out << "exported: " << typedName << " -> " << file << "\n";
    return kExitOk;
}

int PoolImportText(const CliArgs& args, std::ostream& out, std::ostream& err) {
    PoolPresetSession cli(err);
    if (!cli.open(args, err)) return kExitBadInput;
    if (!answerQuestions(args, cli.prompter, err)) return kExitUsage;
    const std::string& path = args.positional()[0];
    const auto text = ReadInputFile(path, err);
    if (!text) return kExitBadInput;
    std::int32_t id = -1;
    try {
        id = LoadTavloFormat(*cli.session, *text, path, false);
    } catch (const UnansweredQuestion& question) {
        err << "tavlo-cli: " << question.what() << "\n";
        return kExitUsage;
    }
    const EditorState& editor = cli.session->editor;
    if (shown(cli.prompter, TavloText::kFailureTitle)) return kExitBadInput;
    if (id < 0 && editor.PresetKeptInPool) {
        out << "kept the pool's preset: " << Windows1252ToUtf8(MSBModule::Trim(editor.preset.Name)) << "\n";
        return kExitOk;
    }
    for (const std::string& title : cli.prompter.shown())
        if (!isNotice(title)) return kExitFailed;
    if (id < 0) {
        err << "tavlo-cli: the import was halted; nothing was stored\n";
        return kExitBadInput;
    }
    out << "stored: " << cli.storedName(id) << "\n";
    return kExitOk;
}

}  // namespace tavlo::cli

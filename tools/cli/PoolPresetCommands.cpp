// tavlo-cli pool list / rename / duplicate / delete: the presets of the pool,
// through the same flows as the pool window, with the questions answered
// from the options.
#include <iostream>
#include <memory>

#include "CliCommand.h"
#include "CliPrompter.h"
#include "PoolPresetSession.h"
#include "base/MSBModule.h"
#include "base/Windows1252.h"
#include "pool/PoolList.h"
#include "pool/PoolOperations.h"
#include "PresetJson.h"
#include "PresetTextCli.h"
#include "presetfile/PresetFileButtons.h"
#include "presetfile/TavloFormatLoad.h"
#include "pool/MemImageOrPoolChoiceForm.h"
#include "pool/PresetLoad.h"
#include "pool/PresetMemorySize.h"
#include "pool/PresetSysexFile.h"
#include "pool/PresetSysexImport.h"
#include "editor/EditorState.h"
#include "pool/PoolFormState.h"
#include "db/PoolDatabase.h"

namespace tavlo::cli {

PoolPresetSession::PoolPresetSession(std::ostream& err)
    : prompter(err), session(std::make_unique<Program>(prompter, status, pump, clock)), pool(session->pool) {}

bool PoolPresetSession::open(const CliArgs& args, std::ostream& err) {
    const PoolOpenResult result = pool.open(args.poolPath());
    if (!result.ok()) {
        const PoolMessage message = PoolOpenMessage(result, args.poolPath());
        err << message.title << ": " << message.text << "\n";
        return false;
    }
    session->editor.ProgramInit = false;
    return true;
}

std::int64_t PoolPresetSession::presetId(const std::string& typedName) {
    Statement find = pool.db().prepare("SELECT ID FROM PresetRec WHERE Name = :Name");
    find.bind(":Name", MSBModule::SafeDBString(MSBModule::Trim(Utf8ToWindows1252(typedName))));
    return find.step() ? find.getInt(0) : -1;
}

std::int64_t PoolPresetSession::presetId(const std::string& typedName, std::ostream& err) {
    const std::int64_t id = presetId(typedName);
    if (id < 0) err << "tavlo-cli: no preset named '" << typedName << "' in the pool\n";
    return id;
}

bool PoolPresetSession::selectPreset(const std::string& typedName, std::ostream& err) {
    const std::int64_t id = presetId(typedName, err);
    if (id < 0) return false;
    session->poolForm.OrderOption = PoolOrder::ByName;
    ReloadPoolList(*session);
    const int line = session->poolForm.PoolList.findItemData(id);
    SelectPoolLine(*session, line);
    session->poolForm.PoolList.setSelected(line, true);
    return true;
}

std::string PoolPresetSession::storedName(std::int64_t id) {
    Statement find = pool.db().prepare("SELECT Name FROM PresetRec WHERE ID = :ID");
    find.bind(":ID", id);
    return find.step() ? Windows1252ToUtf8(MSBModule::Trim(MSBModule::DisplayDBString(find.getText(0)))) : "";
}

std::int64_t PoolPresetSession::lastPresetId() {
    Statement last = pool.db().prepare("SELECT COALESCE(MAX(ID), 0) FROM PresetRec");
    return last.step() ? last.getInt(0) : 0;
}

std::int64_t PoolPresetSession::changes() {
    Statement count = pool.db().prepare("SELECT total_changes()");
    return count.step() ? count.getInt(0) : 0;
}

int PoolPresetSession::finish(std::ostream& err, int okStatus) {
    (void)err;
    return prompter.refused() ? kExitFailed : okStatus;
}

namespace {

int poolList(const CliArgs& args, std::ostream& out, std::ostream& err) {
    const std::string order = args.option("--order").value_or("name");
    if (order != "name" && order != "device") {
        err << "tavlo-cli: --order takes name or device\n";
        return kExitUsage;
    }
    PoolPresetSession cli(err);
    if (!cli.open(args, err)) return kExitBadInput;
    cli.session->poolForm.OrderOption = order == "name" ? PoolOrder::ByName : PoolOrder::ByDevice;
    ReloadPoolList(*cli.session);
    for (const auto& line : cli.session->poolForm.PoolList.lines()) out << Windows1252ToUtf8(line.text) << "\n";
    return kExitOk;
}

// Runs a pool flow; an unanswered question ends it with nothing changed.
template <typename Flow>
int runFlow(PoolPresetSession& cli, std::ostream& err, Flow flow) {
    try {
        flow();
    } catch (const UnansweredQuestion& question) {
        err << "tavlo-cli: " << question.what() << "\n";
        return kExitUsage;
    }
    return cli.finish(err, kExitOk);
}

// The new name of a rename or a duplicate: one that is blank would leave the
// pool as it was, which the window takes as a cancel but a script must learn.
bool newNameGiven(const CliArgs& args, std::ostream& err) {
    if (!MSBModule::Trim(Utf8ToWindows1252(args.positional()[1])).empty()) return true;
    err << "tavlo-cli: the new name is empty\n";
    return false;
}

int poolRename(const CliArgs& args, std::ostream& out, std::ostream& err) {
    if (args.positional().size() != 2) return UsageOf("pool rename", err);
    if (!newNameGiven(args, err)) return kExitBadInput;
    PoolPresetSession cli(err);
    if (!cli.open(args, err) || !cli.selectPreset(args.positional()[0], err)) return kExitBadInput;
    const std::int64_t id = cli.presetId(args.positional()[0]);
    const std::int64_t changesBefore = cli.changes();
    const std::string newName = Utf8ToWindows1252(args.positional()[1]);
    cli.prompter.answerInput("Rename Preset", newName);
    int status = runFlow(cli, err, [&] { RenameButton(*cli.session); });
    if (status == kExitOk && cli.changes() == changesBefore) {
        err << "tavlo-cli: '" << args.positional()[1] << "' is no name the pool can hold; nothing was renamed\n";
        status = kExitBadInput;
    }
    // The name as the pool took it, which its rules may have trimmed.
    if (status == kExitOk) out << "renamed: " << args.positional()[0] << " -> " << cli.storedName(id) << "\n";
    return status;
}

int poolDuplicate(const CliArgs& args, std::ostream& out, std::ostream& err) {
    if (args.positional().size() != 2) return UsageOf("pool duplicate", err);
    if (!newNameGiven(args, err)) return kExitBadInput;
    PoolPresetSession cli(err);
    if (!cli.open(args, err) || !cli.selectPreset(args.positional()[0], err)) return kExitBadInput;
    const std::int64_t lastBefore = cli.lastPresetId();
    cli.prompter.answerInput("Duplicate Preset", Utf8ToWindows1252(args.positional()[1]));
    int status = runFlow(cli, err, [&] { DuplicateButton(*cli.session); });
    const std::int64_t copy = cli.lastPresetId();
    if (status == kExitOk && copy == lastBefore) {
        err << "tavlo-cli: '" << args.positional()[1] << "' is no name the pool can hold; nothing was copied\n";
        status = kExitBadInput;
    }
    if (status == kExitOk) out << "duplicated: " << args.positional()[0] << " -> " << cli.storedName(copy) << "\n";
    return status;
}

int poolDelete(const CliArgs& args, std::ostream& out, std::ostream& err) {
    if (args.positional().size() != 1) return UsageOf("pool delete", err);
    PoolPresetSession cli(err);
    if (!cli.open(args, err) || !cli.selectPreset(args.positional()[0], err)) return kExitBadInput;
    cli.prompter.answeredBy("About to Delete Preset", "--yes");
    if (args.flag("--yes")) cli.prompter.answerMessage("About to Delete Preset", MessageAnswer::Yes);
    const int status = runFlow(cli, err, [&] { DeleteButton(*cli.session); });
    if (status == kExitOk) out << "deleted: " << args.positional()[0] << "\n";
    return status;
}

int poolExport(const CliArgs& args, std::ostream& out, std::ostream& err) {
    const std::optional<std::string> file = args.option("-o");
    if (args.positional().size() != 1 || !file) {
        err << "usage: tavlo-cli pool export NAME -o FILE.syx|FILE.tpr\n";
        return kExitUsage;
    }
    PoolPresetSession cli(err);
    if (!IsSysexFileName(*file)) return cli.open(args, err) ? PoolExportText(cli, args.positional()[0], *file, out, err)
                                                            : kExitBadInput;
    if (!cli.open(args, err) || !cli.selectPreset(args.positional()[0], err)) return kExitBadInput;
    cli.prompter.answerFile(*file);
    const int status = runFlow(cli, err, [&] { SavePresetSysexButton(*cli.session); });
    if (status == kExitOk) out << "exported: " << args.positional()[0] << " -> " << *file << "\n";
    return status;
}

int poolShow(const CliArgs& args, std::ostream& out, std::ostream& err) {
    if (args.positional().size() != 1) {
        err << "usage: tavlo-cli pool show NAME\n";
        return kExitUsage;
    }
    PoolPresetSession cli(err);
    if (!cli.open(args, err)) return kExitBadInput;
    const std::int64_t id = cli.presetId(args.positional()[0], err);
    if (id < 0) return kExitBadInput;
    if (!LoadPC1600xFormFromPool(*cli.session, id)) return kExitFailed;
    out << PresetToJson(cli.session->editor.preset).dump(2) << "\n";
    return kExitOk;
}

// The bytes a preset takes in the device's memory, as the pool window's
// "Memory Used" tells it.
int poolSize(const CliArgs& args, std::ostream& out, std::ostream& err) {
    if (args.positional().size() != 1) return UsageOf("pool size", err);
    PoolPresetSession cli(err);
    if (!cli.open(args, err)) return kExitBadInput;
    const std::int64_t id = cli.presetId(args.positional()[0], err);
    if (id < 0) return kExitBadInput;
    out << CalculatePresetMemorySize(cli.pool.db(), id) << "\n";
    return kExitOk;
}

// --on-clash keep|overwrite|rename-pool:NEW|rename-new:NEW: the button of
// the clash dialogue, and the name typed beside it.
bool clashAnswer(const std::string& option, ChoiceAnswer& answer) {
    auto named = [&](const std::string& prefix, ClashButton button) {
        if (option.rfind(prefix, 0) != 0) return false;
        answer.button = static_cast<int>(button);
        answer.fields = {Utf8ToWindows1252(option.substr(prefix.size()))};
        return true;
    };
    if (option == "keep") {
        answer.button = static_cast<int>(ClashButton::KeepPool);
        return true;
    }
    if (option == "overwrite") {
        answer.button = static_cast<int>(ClashButton::UseDownloaded);
        return true;
    }
    return named("rename-pool:", ClashButton::RenamePool) || named("rename-new:", ClashButton::RenameSysex);
}

int poolImport(const CliArgs& args, std::ostream& out, std::ostream& err) {
    if (args.positional().size() != 1) {
        err << "usage: tavlo-cli pool import FILE.syx [--on-clash keep|overwrite|rename-pool:NEW|rename-new:NEW] "
               "[--scene-refs move|remove|keep] [--blank-name NAME]\n"
               "       tavlo-cli pool import FILE.tpr [--on-clash keep|overwrite] [--missing-scenes unmap|refuse]\n";
        return kExitUsage;
    }
    if (!IsSysexFileName(args.positional()[0])) return PoolImportText(args, out, err);
    PoolPresetSession cli(err);
    if (!cli.open(args, err)) return kExitBadInput;
    cli.prompter.answeredBy("MemImageOrPoolChoiceForm",
                            "--on-clash keep|overwrite|rename-pool:NEW|rename-new:NEW; an overwrite of a preset whose "
                            "scenes other presets use also needs --scene-refs move|remove|keep");
    cli.prompter.answeredBy("Resolve Scene References", "--scene-refs move|remove|keep");
    cli.prompter.answeredBy("Enter New Preset Name", "--blank-name NAME");
    if (const auto clash = args.option("--on-clash")) {
        ChoiceAnswer answer;
        if (!clashAnswer(*clash, answer)) {
            err << "tavlo-cli: --on-clash takes keep, overwrite, rename-pool:NEW or rename-new:NEW\n";
            return kExitUsage;
        }
        cli.prompter.answerChoice("MemImageOrPoolChoiceForm", answer);
    }
    if (const auto refs = args.option("--scene-refs")) {
        const MessageAnswer answer = *refs == "move"     ? MessageAnswer::Yes
                                     : *refs == "remove" ? MessageAnswer::No
                                     : *refs == "keep"   ? MessageAnswer::Cancel
                                                         : MessageAnswer::OK;
        if (answer == MessageAnswer::OK) {
            err << "tavlo-cli: --scene-refs takes move, remove or keep\n";
            return kExitUsage;
        }
        cli.prompter.answerMessage("Resolve Scene References", answer);
    }
    if (const auto blank = args.option("--blank-name"))
        cli.prompter.answerInput("Enter New Preset Name", Utf8ToWindows1252(*blank));
    bool read = false;
    try {
        read = ImportPresetSysexFile(*cli.session, args.positional()[0]);
    } catch (const UnansweredQuestion& question) {
        err << "tavlo-cli: " << question.what() << "\n";
        return kExitUsage;
    }
    if (!read) return kExitBadInput;
    // The model's notices about dropped functions are no refusal of the store.
    for (const std::string& title : cli.prompter.shown())
        if (title != "Incompatibility to PC1600" && title != "PC1600 Incompatibility") return kExitFailed;
    const EditorState& editor = cli.session->editor;
    if (editor.PresetKeptInPool)
        out << "kept the pool's preset: " << Windows1252ToUtf8(MSBModule::Trim(editor.preset.Name)) << "\n";
    else  // the name as the pool took it, which its rules may have trimmed
        out << "stored: " << cli.storedName(editor.preset.ID) << "\n";
    return kExitOk;
}

const CommandRegistrar size{
    {"pool size", "pool size NAME   the bytes a preset uses in the device's memory", {"--pool"}, {}, poolSize}};
const CommandRegistrar show{{"pool show", "pool show NAME   a stored preset as JSON", {"--pool"}, {}, poolShow}};
const CommandRegistrar importer{{"pool import",
                                 "pool import FILE.syx [--on-clash keep|overwrite|rename-pool:NEW|rename-new:NEW] "
                                 "[--scene-refs move|remove|keep] [--blank-name NAME] | FILE.tpr [--on-clash keep|overwrite] "
                                 "[--missing-scenes unmap|refuse]   store a preset dump or preset text in the pool",
                                 {"--on-clash", "--scene-refs", "--blank-name", "--missing-scenes", "--pool"},
                                 {},
                                 poolImport}};
const CommandRegistrar exporter{{"pool export", "pool export NAME -o FILE.syx|FILE.tpr   write a preset as a sysex or preset text file", {"-o", "--pool"}, {}, poolExport}};
const CommandRegistrar list{{"pool list", "pool list [--order name|device]   the presets of the pool", {"--order", "--pool"}, {}, poolList}};
const CommandRegistrar rename{{"pool rename", "pool rename OLD NEW   rename a preset", {"--pool"}, {}, poolRename}};
const CommandRegistrar duplicate{{"pool duplicate", "pool duplicate NAME NEW   copy a preset under a new name", {"--pool"}, {}, poolDuplicate}};
const CommandRegistrar remove{{"pool delete", "pool delete NAME --yes   delete a preset with its scenes and strings", {"--pool"}, {"--yes"}, poolDelete}};

}  // namespace
}  // namespace tavlo::cli

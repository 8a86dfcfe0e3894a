#include "globals/GlobalsFlows.h"

#include "base/FileBytes.h"
#include "base/MSBModule.h"
#include "db/PoolDatabase.h"
#include "globals/GlobalPool.h"
#include "globals/GlobalSettings.h"
#include "globals/GlobalsState.h"
#include "globals/GlobalsText.h"
#include "midilink/ExchangeDump.h"
#include "midilink/MidiConfig.h"
#include "midilink/MidiLink.h"
#include "sysex/DeviceMessages.h"
#include "ui/Prompter.h"
#include "ui/StatusView.h"

namespace tavlo {

namespace {

constexpr const char* kFileFilter = "Sysex Files (*.syx)|*.syx|Tavlo Globals Files (*.tgl)|*.tgl";

bool IsTextFile(const std::string& path) {
    return path.size() >= 4 && MSBModule::ToLower(path.substr(path.size() - 4)) == ".tgl";
}

ExchangeResult GetFromDevice(const GlobalsContext& session, const std::string& title, const std::string& line,
                             bool silentTimeout) {
    ExchangeRequest request;
    request.title = title;
    request.request = DeviceRequest(session.midi.DeviceId, DeviceCommand::RequestAllGlobals);
    request.awaitedCommand = DeviceCommand::AllGlobals;
    request.manualPrompt = kManualAllGlobalsPrompt;
    request.automaticPrompt = line;
    request.row = IntervalRow::GlobalsWindow;
    request.flow = TimeoutFlow::GlobalSettings;
    request.silentTimeout = silentTimeout;
    ExchangeResult result = ExchangeDump(session, request);
    session.status.hide();
    return result;
}

}  // namespace

void LoadMapFrame(GlobalsState& state) {
    if (state.EditMapCombo < 0 || state.EditMapCombo > 2) state.EditMapCombo = 0;
    const int selected = state.ProgChangeList.listIndex();
    const auto& map = state.settings.MidiMaps[static_cast<std::size_t>(state.EditMapCombo)];
    state.ProgChangeList.clear();
    for (int program = 0; program < kMapEntries; ++program)
        state.ProgChangeList.addItem(ProgChangeLine(program, map[static_cast<std::size_t>(program)]), program);
    state.ProgChangeList.setListIndex(selected >= 0 ? selected : 0);
    if (state.MapList.listCount() == 0)
        for (const auto& [text, value] : MapTargets()) state.MapList.addItem(text, value);
}

void ShowGlobalSettings(GlobalsState& state, const GlobalSettings& settings) {
    state.settings = settings;
    state.EditMapCombo = settings.CurrentMap >= 1 && settings.CurrentMap <= 3 ? settings.CurrentMap - 1 : 0;
    LoadMapFrame(state);
    state.markPristine();
    state.notifyChanged();
}

void MapListDoubleClick(GlobalsState& state) {
    const int program = state.ProgChangeList.listIndex();
    const int target = state.MapList.listIndex();
    if (program < 0 || program >= kMapEntries || target < 0) return;
    const int value = static_cast<int>(state.MapList.itemData(target));
    state.settings.MidiMaps[static_cast<std::size_t>(state.EditMapCombo)][static_cast<std::size_t>(program)] = value;
    state.ProgChangeList.setLine(program, ProgChangeLine(program, value), program);
    state.notifyChanged();
}

void InitAllMaps(GlobalsState& state) {
    InitMidiMap(state.settings, 0);
    LoadMapFrame(state);
    state.notifyChanged();
}

void InitThisMap(GlobalsState& state) {
    InitMidiMap(state.settings, state.EditMapCombo + 1);
    LoadMapFrame(state);
    state.notifyChanged();
}

bool ShowGlobalsDump(const GlobalsContext& session, const std::string& dump, const std::string& name,
                     std::string* problem) {
    const DecodedGlobals decoded = Sysex2GlobalForm(dump, session.midi.PC1600Model);
    if (!decoded.settings) {
        if (problem) *problem = decoded.problem;
        return false;
    }
    if (decoded.modelNotice) session.prompter.message(kPC1600SysexTitle, kPC1600SysexNotice);
    GlobalSettings settings = *decoded.settings;
    settings.Name = name;
    settings.Default = session.globals.settings.Default;
    ShowGlobalSettings(session.globals, settings);
    return true;
}

bool GetGlobalsButton(const GlobalsContext& session) {
    if (session.prompter.message("Get Globals from PC1600(x)",
                                 "These Global Settings will be overwritten with the current Global Settings from the "
                                 "PC1600(x).  Are you sure you want to continue?",
                                 MessageButtons::YesNo) != MessageAnswer::Yes)
        return false;
    const ExchangeResult result = GetFromDevice(session, "Getting Globals from PC1600(x)",
                                                "Retrieving the Global Settings from the PC1600(x)...", false);
    if (!result.received()) return false;
    std::string problem;
    if (!ShowGlobalsDump(session, result.dump, "Received from PC1600(x)", &problem)) {
        session.prompter.message("Cannot Get Globals", problem);
        return false;
    }
    return true;
}

bool SendGlobalsButton(const GlobalsContext& session) {
    std::string problem;
    const auto dump = GlobalForm2Sysex(session.globals.settings, session.midi.PC1600Model, session.midi.DeviceId,
                                       &problem);
    if (!dump || dump->empty()) {
        session.prompter.message("Cannot Send Globals",
                                 dump ? "Please choose the PC1600(x)'s MIDI channel on the MIDI Config Form." : problem);
        return false;
    }
    session.status.show("Sending Globals to PC1600(x)", "Sending the Global Settings to the PC1600(x)...", false);
    const bool sent = session.midiLink.MIDIOut.sendSysex(*dump);
    session.status.hide();
    if (!sent) session.prompter.message("Cannot Send Globals", session.midiLink.MIDIOut.lastError());
    return sent;
}

bool WriteGlobalsFile(const GlobalsContext& session, const std::string& path) {
    std::string bytes;
    if (IsTextFile(path)) {
        bytes = StoreTavloFormatGlobals(session.globals.settings);
    } else {
        std::string problem;
        const auto dump = GlobalForm2Sysex(session.globals.settings, session.midi.PC1600Model, session.midi.DeviceId,
                                           &problem);
        if (!dump || dump->empty()) {
            session.prompter.message("Cannot Save Globals",
                                     dump ? "Please choose the PC1600(x)'s MIDI channel on the MIDI Config Form."
                                          : problem);
            return false;
        }
        bytes = *dump;
    }
    if (!WriteWholeFile(path, bytes)) {
        session.prompter.message("Cannot Save Globals", "The file " + path + " can't be written.");
        return false;
    }
    return true;
}

bool ReadGlobalsFile(const GlobalsContext& session, const std::string& path) {
    const auto bytes = ReadWholeFile(path);
    const auto cannotLoad = [&] {
        session.prompter.message("Cannot Load Globals", "Cannot Load Globals from File");
        return false;
    };
    if (!bytes) return cannotLoad();
    if (IsTextFile(path)) {
        const GlobalsTextResult read = LoadTavloFormatGlobals(*bytes, session.globals.settings);
        if (!read.settings) {
            session.prompter.message(kCannotImportTitle, kCannotImportText);
            return false;
        }
        GlobalSettings settings = *read.settings;
        settings.Default = read.defaultYes && AskImportAsDefault(session.prompter);
        ShowGlobalSettings(session.globals, settings);
        return true;
    }
    for (const std::string& message : SplitSysex(*bytes))
        if (DeviceMessageCommand(message) == DeviceCommand::AllGlobals)
            return ShowGlobalsDump(session, message, "Loaded From Sysex") || cannotLoad();
    return cannotLoad();
}

bool SaveGlobalsButton(const GlobalsContext& session) {
    const auto path = session.prompter.saveFile(
        {"Save Globals to Sysex File", kFileFilter, ".syx", MSBModule::SafeFileName(session.globals.settings.Name)});
    return path && WriteGlobalsFile(session, *path);
}

bool LoadGlobalsButton(const GlobalsContext& session) {
    const auto path = session.prompter.openFile({"Load Globals from Sysex File", kFileFilter, ".syx", ""});
    return path && ReadGlobalsFile(session, *path);
}

std::string FirstRunGlobals(const GlobalsContext& session) {
    if (session.pool.db().queryInt("SELECT COUNT(*) FROM GlobalRec") > 0) return "";
    const ExchangeResult result = GetFromDevice(
        session, "Getting Initial Globals",
        "On first startup, the program will get a copy of your current Global Settings...", true);
    std::string word;
    if (!result.received() || !ShowGlobalsDump(session, result.dump, "Initial Default Globals")) {
        session.prompter.message("Cannot Communicate with PC1600(x)",
                                 "The program attempted to grab your Current Global Settings from the PC1600(x) for "
                                 "this first run but was unable.  please check your MIDI Configuration and try again "
                                 "from the Edit Globals form");
        GlobalSettings settings = NewGlobalSettings();
        settings.Name = "No Connection to PC1600(x)";
        ShowGlobalSettings(session.globals, settings);
        word = kErrorFirstGet;
    }
    session.globals.settings.Default = true;
    StoreGlobals(session);
    return word;
}

bool AskStoreGlobalsOnClose(const GlobalsContext& session) {
    if (!session.globals.Visible || !session.globals.changed()) return true;
    const MessageAnswer answer =
        session.prompter.message("Store Globals to Pool",
                                 "Do you want to store these Global Settings to the Pool before closing the window?",
                                 MessageButtons::YesNoCancel);
    if (answer == MessageAnswer::Cancel) return false;
    if (answer == MessageAnswer::Yes) StoreGlobals(session);
    return true;
}

}  // namespace tavlo

#include "midilink/PresetTransfer.h"

#include "base/MSBModule.h"
#include "sysex/DeviceMessages.h"
#include "midilink/LinkContext.h"
#include "midilink/MidiLink.h"
#include "midilink/MidiConfig.h"
#include "ui/StatusView.h"
#include "ui/Pump.h"
#include "ui/Prompter.h"
#include "db/PoolDatabase.h"

namespace tavlo {
namespace {

constexpr const char* kSelecting = "Selecting Preset on the PC1600(x)...";
constexpr const char* kRetrieving = "Retrieving the Preset from the PC1600(x)...";
constexpr const char* kParsing = "Parsing the New Preset Sysex data...";

void SelectOnDevice(const LinkContext& session, int slot) {
    session.status.setLine(kSelecting);
    if (slot >= 0 && slot < kPresetSlots)
        session.midiLink.MIDIOut.sendSysex(DeviceSlotCommand(session.midi.DeviceId, DeviceCommand::SelectPreset, slot));
}

}  // namespace

ExchangeResult GetPresetFromDevice(const LinkContext& session, const std::string& title, int slot) {
    SelectOnDevice(session, slot);
    if (!session.midi.ManualMode) {
        session.status.setLine(kRetrieving);
        Pause(session);
    }
    ExchangeRequest request;
    request.title = title;
    request.request = DeviceRequest(session.midi.DeviceId, DeviceCommand::RequestEditBuffer);
    request.awaitedCommand = DeviceCommand::PresetDump;
    request.manualPrompt = kManualPresetPrompt;
    request.automaticPrompt = kRetrieving;
    request.row = IntervalRow::SinglePreset;
    request.flow = TimeoutFlow::SinglePreset;
    ExchangeResult result = ExchangeDump(session, request);
    if (!result.received()) return result;
    Pause(session);
    SelectOnDevice(session, slot);
    session.status.setLine(kParsing);
    return result;
}

bool SendPresetToDevice(const LinkContext& session, const std::string& presetDump, int slot) {
    OutputPort& out = session.midiLink.MIDIOut;
    const int id = session.midi.DeviceId;
    session.status.setLine("Writing to Memory Location " + TwoDigits(slot) + "...");
    return out.sendSysex(presetDump) && out.sendSysex(DeviceSlotCommand(id, DeviceCommand::WriteEditBuffer, slot)) &&
           out.sendSysex(DeviceSlotCommand(id, DeviceCommand::SelectPreset, slot));
}

}  // namespace tavlo

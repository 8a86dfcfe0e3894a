#include "midilink/PeekList.h"

#include "sysex/AllPresetsDump.h"
#include "base/MSBModule.h"
#include "sysex/DeviceMessages.h"
#include "midilink/ExchangeDump.h"
#include "base/MSBModule.h"
#include "midilink/LinkContext.h"
#include "midilink/MidiLink.h"
#include "midilink/MidiConfig.h"
#include "ui/StatusView.h"
#include "ui/Pump.h"
#include "ui/Prompter.h"
#include "db/PoolDatabase.h"

namespace tavlo {

std::vector<std::string> PeekLines(std::string_view allPresets) {
    std::vector<std::string> lines;
    int index = 0;
    for (std::size_t at = kAllPresetsNamesOffset; at + kPresetNameNibbles <= allPresets.size() && index <= 50;
         at += kPresetNameNibbles, ++index) {
        const std::string name = MSBModule::TildeToGreater(NameFromNibbles(allPresets.substr(at, kPresetNameNibbles)));
        // Entries 0 to 49 are the slots; the last, 50, is the edit buffer.
        lines.push_back((index == 50 ? std::string("EditBuffer:  ") : TwoDigits(index) + ":  ") + name);
    }
    return lines;
}

void LoadPeekList(const LinkContext& session, ListState& peekList) {
    peekList.clear();
    ExchangeRequest request;
    request.title = "Peeking at PC1600(x) Presets";
    request.request = DeviceRequest(session.midi.DeviceId, DeviceCommand::RequestAllPresets);
    request.awaitedCommand = DeviceCommand::AllPresets;
    request.manualPrompt = kManualAllPresetsPrompt;
    request.automaticPrompt = "Waiting for ALL PRESETS data from PC1600(x).....";
    request.row = IntervalRow::MemoryImage;
    request.flow = TimeoutFlow::AllPresets;
    const ExchangeResult result = ExchangeDump(session, request);
    session.status.hide();
    if (!result.received()) return;
    for (auto& line : PeekLines(result.dump)) peekList.addItem(std::move(line));
}

}  // namespace tavlo

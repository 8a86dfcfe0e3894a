#include "midilink/ExchangeDump.h"

#include <limits>

#include "sysex/DeviceMessages.h"
#include "midilink/LinkContext.h"
#include "midilink/MidiLink.h"
#include "midilink/MidiConfig.h"
#include "ui/StatusView.h"
#include "ui/Pump.h"
#include "ui/Prompter.h"
#include "db/PoolDatabase.h"

namespace tavlo {

std::int64_t WaitInterval(IntervalRow row, int timeoutIndex) {
    static constexpr std::int64_t table[4][3] = {
        {9000, 16000, 32000},   // ALL GLOBALS from the global settings window
        {15000, 21000, 32000},  // single preset
        {30000, 45000, 64000},  // memory image, each of its three dumps
        {6000, 9000, 15000},    // ALL SCENES being sent
    };
    if (timeoutIndex < 0 || timeoutIndex > 2) timeoutIndex = 1;
    return table[static_cast<int>(row)][timeoutIndex];
}

FlowMessage TimeoutMessage(TimeoutFlow flow) {
    switch (flow) {
    case TimeoutFlow::SinglePreset:
        return {"Cannot Get Preset Edit Buffer",
                "There is no response from the PC1600(x) when asking for Preset.  Please check your MIDI Setup."};
    case TimeoutFlow::GlobalSettings:
        return {"Cannot Get Globals", "There is no response from the PC1600(x).  Please check your MIDI Setup."};
    case TimeoutFlow::AllPresets:
        return {"Cannot Communicate with PC1600(x)",
                "There is no response from the PC1600(x) while waiting for ALL PRESETS.  Please check your MIDI "
                "Setup."};
    case TimeoutFlow::AllScenes:
        return {"Cannot Communicate with PC1600(x)",
                "There is no response from the PC1600(x) while waiting for ALL SCENES.  Please check your MIDI "
                "Setup."};
    case TimeoutFlow::AllGlobals:
        return {"Cannot Communicate with PC1600(x)",
                "There is no response from the PC1600(x) while waiting for ALL GLOBALS.  Please check your MIDI "
                "Setup."};
    }
    return {};
}

const char* const kManualPresetPrompt =
    "Please send the Preset from your PC1600(x) now.  To do so, first select the Preset on your PC1600(x) (Tavlo "
    "will attempt to do this automatically for you).  Next, press the UTILITY button, go to the DUMP page, and "
    "select CURR PRST and press ENTER.  Tavlo is ready to receive the Preset now...";
const char* const kManualAllPresetsPrompt =
    "Ready for you to send ALL PRESETS from PC1600(x).  Please press the UTILITY button on your PC1600(x), go to "
    "the DUMP page, make sure PRESETS is selected, and press ENTER.  Tavlo is waiting for the data now...";
const char* const kManualAllGlobalsPrompt =
    "Ready to receive ALL GLOBALS.  Please send the ALL GLOBALS sysex from your PC1600(x) by pressing the UTILITY "
    "button, going to the DUMP page, and selecting GLOBALS, and then pressing ENTER.  Tavlo is waiting for the "
    "data...";

bool ExchangeRequest::awaits(std::string_view message) const {
    if (DeviceMessageCommand(message) != awaitedCommand) return false;
    const std::size_t length = FixedDumpLength(awaitedCommand);
    return length == 0 || message.size() == length;
}

void YieldWithTimers(const LinkContext& session) {
    session.pump.yield();
    session.midiLink.waitTimer.update(session.clock.now(), session.midiLink.TimedOut);
}

void Pause(const LinkContext& session, std::int64_t ms) {
    waitUntil(session.pump, session.clock, ms, [] { return false; });
}

ExchangeResult ExchangeDump(const LinkContext& session, const ExchangeRequest& request) {
    MidiLink& link = session.midiLink;
    StatusView& status = session.status;
    WaitTimer& timer = link.waitTimer;
    const bool manual = session.midi.ManualMode;

    link.MIDIIn.setBuffering(true);
    YieldWithTimers(session);
    status.show(request.title, manual ? request.manualPrompt : request.automaticPrompt, manual);
    status.resetCancelled();
    YieldWithTimers(session);

    session.midiLink.TimedOut = false;
    if (!manual) {
        timer.setInterval(request.interval > 0 ? request.interval
                                                : WaitInterval(request.row, session.midi.TimeoutIndex));
        timer.start(session.clock.now());
    }
    // Drains what is there; a line that never falls silent can't hold it.
    for (int queued = link.MIDIIn.count(); queued > 0; --queued) link.MIDIIn.remove();
    if (!manual && !request.request.empty()) link.MIDIOut.sendSysex(request.request);

    ExchangeResult result;
    // The one wait loop; in manual mode no timer runs, so only the dump or
    // Cancel ends it.
    waitUntil(session.pump, session.clock, std::numeric_limits<std::int64_t>::max(), [&] {
        session.midiLink.waitTimer.update(session.clock.now(), session.midiLink.TimedOut);
        // What is queued now, and no more: traffic that keeps coming (clock,
        // notes) must not keep the loop from its time-out and Cancel.
        for (int queued = link.MIDIIn.count(); queued > 0; --queued) {
            std::string message = link.MIDIIn.current();
            if (request.awaits(message)) {
                result.outcome = ExchangeResult::Outcome::Received;
                result.dump = std::move(message);
                return true;
            }
            // The wrong kind is thrown away. Only it: a dump may be arriving
            // around it.
            link.MIDIIn.remove();
        }
        if (session.midiLink.TimedOut) {
            result.outcome = ExchangeResult::Outcome::TimedOut;
            return true;
        }
        if (status.cancelled()) {
            result.outcome = ExchangeResult::Outcome::Cancelled;
            return true;
        }
        return false;
    });

    timer.stop();
    switch (result.outcome) {
    case ExchangeResult::Outcome::Received:
        link.MIDIIn.clear();
        YieldWithTimers(session);
        break;
    case ExchangeResult::Outcome::TimedOut: {
        if (!request.silentTimeout) {
            const FlowMessage message = TimeoutMessage(request.flow);
            session.prompter.message(message.title, message.text);
        }
        status.hide();
        break;
    }
    case ExchangeResult::Outcome::Cancelled:
        status.hide();
        break;
    }
    return result;
}

}  // namespace tavlo

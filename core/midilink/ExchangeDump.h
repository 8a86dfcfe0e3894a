#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "midilink/LinkContext.h"

namespace tavlo {

// The rows of the interval table: which flow waits.
enum class IntervalRow { GlobalsWindow, SinglePreset, MemoryImage, ScenesSend };

// WaitTimer's tick for a flow and a TimeoutCombo index (0 "Short", 1
// "Medium", 2 "Long"); a wait lasts two ticks. An index out of range counts
// as "Medium".
std::int64_t WaitInterval(IntervalRow row, int timeoutIndex);

// Whose time-out message a wait gives.
enum class TimeoutFlow { SinglePreset, GlobalSettings, AllPresets, AllScenes, AllGlobals };
struct FlowMessage {
    std::string title;
    std::string text;
};
FlowMessage TimeoutMessage(TimeoutFlow flow);

// The prompts of manual mode.
extern const char* const kManualPresetPrompt;
extern const char* const kManualAllPresetsPrompt;
extern const char* const kManualAllGlobalsPrompt;

struct ExchangeRequest {
    std::string title;            // caption of the status window
    std::string request;          // the message to send; empty for none
    int awaitedCommand = 0;       // command byte of the dump wanted
    std::string manualPrompt;
    std::string automaticPrompt;
    IntervalRow row = IntervalRow::SinglePreset;
    TimeoutFlow flow = TimeoutFlow::SinglePreset;
    // A tick of its own instead of the table's (scripts that set their own
    // time-out); 0 takes the table.
    std::int64_t interval = 0;
    // A time-out shows no message: the caller tells the user its own way.
    bool silentTimeout = false;

    // The rule of the awaited message, the same for every caller: the
    // family's header, the awaited command, and for a dump of fixed length
    // (ALL SCENES) exactly that length. The device identifier isn't looked
    // at, so a device on another identifier is still heard.
    bool awaits(std::string_view message) const;
};

struct ExchangeResult {
    enum class Outcome { Received, TimedOut, Cancelled };
    Outcome outcome = Outcome::TimedOut;
    std::string dump;  // the whole message when received
    bool received() const { return outcome == Outcome::Received; }
};

// The one pattern of every transfer: status window, flush the input, send
// the request (not in manual mode), poll until the awaited dump, the
// time-out (not in manual mode) or Cancel. A time-out shows the flow's
// message; a cancel shows nothing. Whatever else arrives is dropped and the
// wait goes on; the time-out counts from the start of the wait however much
// other traffic comes, and Cancel is seen at once.
ExchangeResult ExchangeDump(const LinkContext& session, const ExchangeRequest& request);

// One yield to the toolkit, with WaitTimer's ticks run after it.
void YieldWithTimers(const LinkContext& session);

// PauseTimer (5000 ms) and SendWaitTimer (60000 ms) of the memory image
// window: a one-shot pause that yields until its tick.
inline constexpr std::int64_t kPauseTimerMs = 5000;
inline constexpr std::int64_t kSendWaitTimerMs = 60000;
void Pause(const LinkContext& session, std::int64_t ms = kPauseTimerMs);

}  // namespace tavlo

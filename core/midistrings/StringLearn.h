#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "midistrings/StringEditState.h"
#include "midistrings/StringsContext.h"

namespace tavlo {

// Record Sysex: messages that arrive at the learn port while the pass runs
// become substrings of the string being edited.
struct LearnPass {
    int available = 80;  // bytes the string can still take
    int total = 0;       // bytes kept so far
    std::vector<std::string> kept;
    std::string DoneLearningButton;  // the caption of the button that ends the pass
};

inline constexpr const char* kRecordSysexTitle = "About to Record Sysex";
const std::string& RecordSysexText();

// The pass starts with what the string already holds.
LearnPass BeginLearnPass(const StringsContext& session);
// Takes one whole message: a sysex that fits the bytes available, or a
// channel message (two bytes for status C and D, three for the others)
// while the count stays at or below 80; at most 51 messages. System
// realtime and other messages are passed over. True when it was kept.
bool LearnMessage(LearnPass& pass, std::string_view message);
// Appends what was kept, in order, as the Append button would.
void FinishLearnPass(StringEditState& state, const StringsContext& session, const LearnPass& pass);

// Where a pass takes its messages from: the learn port's queue of whole
// messages.
class LearnMessages {
public:
    virtual ~LearnMessages() = default;
    // Empties the queue and starts keeping what arrives.
    virtual void clear() = 0;
    // The next whole message, or empty when none is waiting.
    virtual std::string take() = 0;
    // The pass is over: nothing more needs keeping.
    virtual void finish() {}
};

class InputPort;
// The learn port (MIDILearnIn) as the source of a pass.
class LearnPortMessages : public LearnMessages {
public:
    explicit LearnPortMessages(InputPort& port) : port_(port) {}
    void clear() override;
    std::string take() override;
    void finish() override;

private:
    InputPort& port_;
};

// The whole pass: tells the user, empties the queue and keeps what arrives
// until state.Learning is cleared (the button that ends the pass), yielding
// to the window all the while; then appends what was kept.
void RunLearnPass(StringEditState& state, const StringsContext& session, LearnMessages& port);

}  // namespace tavlo

#include "midistrings/StringLearn.h"

#include "midilink/InputPort.h"
#include "base/MSBModule.h"
#include "midistrings/StringEditor.h"
#include "sysex/StringNotation.h"
#include "midistrings/StringsContext.h"
#include "editor/EditorState.h"
#include "sysex/StringWorkArea.h"
#include "db/PoolDatabase.h"
#include "ui/Pump.h"
#include "ui/Prompter.h"

namespace tavlo {

namespace {

constexpr int kByteLimit = 80;
constexpr size_t kMessageLimit = 51;

void caption(LearnPass& pass) {
    pass.DoneLearningButton = pass.kept.empty()
                                  ? "CLICK WHEN FINISHED LEARNING (total bytes available: " +
                                        std::to_string(pass.available) + ")"
                                  : "CLICK WHEN FINISHED LEARNING (total bytes: " + std::to_string(pass.total) +
                                        " of " + std::to_string(pass.available) + ")";
}

}  // namespace

const std::string& RecordSysexText() {
    static const std::string text =
        "Once you click OK on this Dialog, send a Sysex (or any other except SYSTEM REALTIMEs, etc. which are "
        "ignored) message, up to 80 bytes, from any MIDI Device into the MIDI Learn Port as configured in the MIDI "
        "Configuration Window, and it will be recorded into the String Edit Form.";
    return text;
}

LearnPass BeginLearnPass(const StringsContext& session) {
    LearnPass pass;
    pass.available = kByteLimit - NumberOfStringBytes(session.stringWork.Strings, -1);
    caption(pass);
    return pass;
}

bool LearnMessage(LearnPass& pass, std::string_view message) {
    if (message.empty() || pass.kept.size() >= kMessageLimit) return false;
    const auto status = static_cast<unsigned char>(message[0]);
    int size = 0;
    if (status == 0xF0) {
        size = static_cast<int>(message.size());
        if (pass.total + size > pass.available) return false;
    } else if (status >= 0x80 && status < 0xF0) {
        const int high = status >> 4;
        size = high == 0xC || high == 0xD ? 2 : 3;
        if (static_cast<int>(message.size()) < size || pass.total + size > kByteLimit) return false;
    } else {
        return false;
    }
    pass.kept.emplace_back(message.substr(0, static_cast<size_t>(size)));
    pass.total += size;
    caption(pass);
    return true;
}

void FinishLearnPass(StringEditState& state, const StringsContext& session, const LearnPass& pass) {
    state.Learning = false;
    for (const std::string& message : pass.kept) {
        const auto status = static_cast<unsigned char>(message[0]);
        if (status == 0xF0) {
            MessageComboClick(state, session, kSysexKind);
            SetStringText(state, MSBModule::Trim(MSBModule::BytesToHexText(message)));
        } else {
            // 9, 8, A, B, C, D, E: Note On .. Pitch Bend.
            static constexpr int kKindOfStatus[7] = {1, 0, 2, 3, 4, 5, 6};
            const int kind = kKindOfStatus[(status >> 4) - 8];
            MessageComboClick(state, session, kind);
            SetChannel(state, status & 0x0F);
            SetValue1(state, message.size() > 1 ? static_cast<unsigned char>(message[1]) & 0x7F : 0);
            SetValue2(state, message.size() > 2 ? static_cast<unsigned char>(message[2]) & 0x7F : 0);
        }
        if (!AppendString(state, session)) break;
    }
    state.notifyChanged();
}

void RunLearnPass(StringEditState& state, const StringsContext& session, LearnMessages& port) {
    LearnPass pass = BeginLearnPass(session);
    state.DoneLearningButton = pass.DoneLearningButton;
    state.notifyChanged();
    session.prompter.message(kRecordSysexTitle, RecordSysexText());
    state.Learning = true;
    state.notifyChanged();
    port.clear();
    while (!waitUntil(session.pump, session.clock, 60'000, [&] {
        for (std::string message = port.take(); !message.empty(); message = port.take()) {
            if (LearnMessage(pass, message)) {
                state.DoneLearningButton = pass.DoneLearningButton;
                state.notifyChanged();
            }
        }
        return !state.Learning;
    })) {
        // No time-out: the pass runs until the user ends it.
    }
    port.finish();
    // A window closed during the pass takes nothing of what arrived.
    if (StringEditCancelled(state)) {
        state.Learning = false;
        state.notifyChanged();
        return;
    }
    FinishLearnPass(state, session, pass);
}

void LearnPortMessages::clear() {
    port_.setBuffering(true);
    port_.flush();
}

std::string LearnPortMessages::take() {
    if (port_.count() == 0) return {};
    std::string message = port_.current();
    port_.remove();
    return message;
}

void LearnPortMessages::finish() {
    port_.setBuffering(false);
    port_.flush();
}

}  // namespace tavlo

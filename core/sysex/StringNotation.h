#pragma once
#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "sysex/StringWorkArea.h"
#include "sysex/MessageString.h"

namespace tavlo {

class Prompter;

// The kinds of message a substring can be: the string editor's MessageCombo.
struct MessageKind {
    std::string_view text;      // MessageCombo line
    std::string_view templ;     // status template, "?" standing for the channel
    int valueCount;             // message bytes with the status; 99 and above: no slider value
    std::string_view listName;  // name shown in brackets behind a list line
};

inline constexpr std::array<MessageKind, 17> kMessageKinds = {{
    {"Note On", "9?", 3, "noteon"},
    {"Note Off", "8?", 3, "noteoff"},
    {"Polyphonic Aftertouch", "A?", 3, "polyat"},
    {"Control Change", "B?", 3, "ctrlch"},
    {"Program Change", "C?", 2, "progch"},
    {"Channel Aftertouch", "D?", 2, "chanat"},
    {"Pitch Bend", "E?", 3, "pitchb"},
    {"System Exclusive", "F0", 101, "sysex"},
    {"Song Position Pointer", "F2", 3, "sngpos"},
    {"Song Select", "F3", 2, "sngsel"},
    {"Tune Request", "F6", 1, "tunerq"},
    {"MIDI Start", "FA", 1, "midistart"},
    {"MIDI Stop", "FC", 1, "midistop"},
    // 101 where its neighbours have 1: it behaves the same, since neither takes a value.
    {"MIDI Continue", "FB", 101, "midicont"},
    {"MIDI Active Sense", "FE", 1, "actsens"},
    {"MIDI System Reset", "FF", 1, "sysreset"},
    {"Free Byte", "", 0, "freebyte"},
}};
inline constexpr int kSysexKind = 7;
inline constexpr int kFreeByteKind = 16;

// Value1Slider/Value2Slider positions above the data bytes stand for the
// special tokens.
inline constexpr int kValuePr = 128;
inline constexpr int kValueCs = 129;
inline constexpr int kValueDv = 130;
inline constexpr int kValueGc = 131;
inline constexpr int kValueRv = 132;

// Number of "pr" bytes a fader's value fills under a parameter format; 1 for
// a code outside the list.
int PrByteCount(int paramFormat);

// Which control's string is being edited: it decides what "pr", "rv" and
// "cs" may do.
enum class StringContext { Fader, Button, Setup };

inline constexpr const char* kStringErrorTitle = "MIDI Message Error needs corrected";
// The one message for every fault of entered text, lines joined by CR LF.
const std::string& StringErrorText();
inline constexpr const char* kErrorRendering = "<error>";

// What checking entered text gives, without any dialog.
struct EnteredStringCheck {
    std::string collapsed;  // the input with runs of blanks collapsed
    std::string entered;    // cleaned entered text; the input as it came when in error
    std::string rendered;   // RenderedMessage; "<error>" when in error
    bool ok = true;
};
EnteredStringCheck CheckEnteredString(std::string_view text, StringContext context, bool pc1600Model);

// The string editor's check of typed text: rewrites `stringIn` with its
// blanks collapsed, sets work.RenderedMessage and returns the cleaned entered
// text. On an error it shows the error box, sets "<error>" and returns the
// input as it came.
std::string ValidateEnteredString(std::string& stringIn, StringContext context, bool pc1600Model,
                                  StringWorkArea& work, Prompter& prompter);

// The rendered text of a message built from the editor's controls: kind
// (MessageCombo index, -1 for none), ChannelCombo index (16 for the global
// channel) and the two slider positions. Nothing without a kind.
std::optional<std::string> GenerateMessageBytes(int kind, int channelIndex, int value1, int value2,
                                                bool faderString);

// Bytes of substring `index` of the set, from its list line; with -1 the sum
// over all its substrings.
int NumberOfStringBytes(const MessageStringSet& strings, int index);

// "90 3C 7F  (noteon)": a list line from a substring's text and its kind.
std::string MakeListItem(std::string_view text, int commandType);
// A control's whole string as its text box shows it: every list line cut
// before its "(", trimmed, joined by one blank.
std::string JoinedStringText(const MessageStringSet& strings);

// The numeric value of a three-character token as a numeric-prefix reader
// gives it: "255", "&HF", "1e2", "abc" (0).
double NumericPrefixValue(std::string_view token);

}  // namespace tavlo

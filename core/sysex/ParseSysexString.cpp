#include "sysex/ParseSysexString.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "base/MSBModule.h"
#include "sysex/StringNotation.h"

namespace tavlo {
namespace {

// The value of a token read as hexadecimal, stopping at the first character
// that is no hexadecimal digit.
int hexValue(std::string_view token) {
    int value = 0;
    for (char c : token.substr(0, 2)) {
        const int digit = MSBModule::HexDigit(c);
        if (digit < 0) break;
        value = value * 16 + digit;
    }
    return value;
}

std::string_view pairAt(std::string_view text, std::size_t pos) {
    if (pos >= text.size()) return {};
    return text.substr(pos, 2);
}

bool hasGlobalChannel(std::string_view text, std::size_t pos) {
    return pos + 5 <= text.size() && text.substr(pos + 2, 3) == "-gc";
}

bool isChannelStatusWithTwoData(char c) { return c == '8' || c == '9' || c == 'A' || c == 'B' || c == 'E'; }

// A data value: a hexadecimal byte, or a special token at its slider number.
// Special tokens come back negated so that the "exceeds 127" test passes them.
int dataValue(std::string_view token) {
    if (token == "pr") return -kValuePr;
    if (token == "cs") return -kValueCs;
    if (token == "dv") return -kValueDv;
    if (token == "gc") return -kValueGc;
    if (token == "rv") return -kValueRv;
    return hexValue(token);
}

struct Piece {
    std::size_t start;
    std::size_t length;
    int type;
    int channel = 16;
    int value1 = 0;
    int value2 = 0;
};

}  // namespace

std::string MakeMultipleNotesSingle(const std::string& text) {
    std::string out;
    bool inSysex = false;
    std::size_t p = 0;
    while (p < text.size()) {
        const std::string_view token = pairAt(text, p);
        if (token == "F0") inSysex = true;
        else if (token == "F7") inSysex = false;
        if (inSysex || !isChannelStatusWithTwoData(text[p])) {
            out += std::string(token) + " ";
            p += 3;
            continue;
        }
        // A status with two data bytes: repeat it before every pair of data bytes behind it.
        const bool global = hasGlobalChannel(text, p);
        const std::string status = text.substr(p, global ? 5 : 2);
        const std::size_t start = p + (global ? 6 : 3);
        std::size_t dataTokens = 0;
        for (std::size_t q = start; q < text.size() && hexValue(pairAt(text, q)) <= 127; q += 3) ++dataTokens;
        if (dataTokens <= 1) {
            out += status + " ";
            if (dataTokens == 1) out += std::string(pairAt(text, start)) + " ";
        } else {
            const std::size_t pairs = dataTokens / 2;
            for (std::size_t k = 0; k < pairs; ++k) {
                const std::size_t from = start + 6 * k;
                out += status + " " + text.substr(from, std::min<std::size_t>(6, text.size() - from));
            }
            if (dataTokens % 2 == 1) {
                const std::size_t from = start + 6 * pairs;
                out += text.substr(from, std::min<std::size_t>(3, text.size() - from));
            }
        }
        p = start + 3 * dataTokens;
    }
    return MSBModule::Trim(out);
}

namespace {

// How a message of a status takes its place in the text: its kind, the
// characters of its form and of its step to the next message, its data
// values, and whether the status carries a channel.
struct MessageForm {
    int type = -1;
    std::size_t form = 0;
    std::size_t step = 0;
    int values = 0;  // data values at +3 and +6, behind any "-gc"
    bool channelStatus = false;
};

MessageForm formOf(char first, std::string_view status) {
    switch (first) {
        case '9': return {0, 8, 9, 2, true};
        case '8': return {1, 8, 9, 2, true};
        case 'A': return {2, 8, 9, 2, true};
        case 'B': return {3, 8, 9, 2, true};
        case 'E': return {6, 8, 9, 2, true};
        case 'C': return {4, 5, 6, 1, true};
        case 'D': return {5, 5, 6, 1, true};
        default: break;
    }
    if (status == "F0") return {kSysexKind};
    if (status == "F2") return {8, 8, 9};
    if (status == "F3") return {9, 5, 6, 1};
    if (status == "F6") return {10, 2, 3};
    if (status == "FA") return {11, 2, 3};
    if (status == "FC") return {12, 2, 3};
    if (status == "FB") return {13, 2, 3};
    if (status == "FE") return {14, 2, 3};
    if (status == "FF") return {15, 2, 3};
    return {};
}

// The text cut into its messages, each a piece of the text with its kind.
std::vector<Piece> splitIntoPieces(std::string_view t) {
    std::vector<Piece> pieces;
    std::size_t p = 0;
    while (p < t.size()) {
        MessageForm m = formOf(t[p], pairAt(t, p));
        const bool global = hasGlobalChannel(t, p);
        const std::size_t extra = global ? 3 : 0;

        if (m.type == kSysexKind) {
            std::size_t q = p + 3;
            while (q < t.size() && pairAt(t, q) != "F7") q += 3;
            if (q >= t.size()) {  // no F7: the rest is a free byte string
                pieces.push_back({p, t.size() - p, kFreeByteKind});
                break;
            }
            pieces.push_back({p, q + 2 - p, kSysexKind});
            p = q + 3;
            continue;
        }
        if (m.type < 0) {
            // Up to the next token that may start a message.
            std::size_t q = p + 3;
            while (q < t.size() && !((t[q] >= '8' && t[q] <= '9') || (t[q] >= 'A' && t[q] <= 'F'))) q += 3;
            const std::size_t end = std::min(q, t.size());
            pieces.push_back({p, end - p, kFreeByteKind});
            p = q;
            continue;
        }

        m.form += extra;
        m.step += extra;
        if (p + m.form > t.size()) {  // the form doesn't fit: the rest is a free byte string
            pieces.push_back({p, t.size() - p, kFreeByteKind});
            break;
        }
        Piece piece{p, m.form, m.type};
        if (m.channelStatus) piece.channel = global ? 16 : std::max(0, MSBModule::HexDigit(t[p + 1]));
        bool split = false;
        for (int v = 0; v < m.values; ++v) {
            const std::size_t at = p + extra + 3 + 3 * static_cast<std::size_t>(v);
            const int value = dataValue(pairAt(t, at));
            if (value > 127) {
                // A data byte that is a status: what stands before it is a free byte string.
                pieces.push_back({p, at - p, kFreeByteKind});
                p = at;
                split = true;
                break;
            }
            (v == 0 ? piece.value1 : piece.value2) = value < 0 ? -value : value;
        }
        if (split) continue;
        pieces.push_back(piece);
        p += m.step;
    }
    // Slot 50 is never used: a longer string keeps its bytes in one last free byte string.
    if (pieces.size() > static_cast<std::size_t>(kSubstringLimit)) {
        Piece& last = pieces[kSubstringLimit - 1];
        last = Piece{last.start, t.size() - last.start, kFreeByteKind};
        pieces.resize(kSubstringLimit);
    }
    return pieces;
}

}  // namespace

void ParseSysexString(std::string& text, StringWorkArea& work) {
    text = MakeMultipleNotesSingle(text);
    const std::string_view t = text;
    MessageStringSet& set = work.Strings;
    set.Count = 0;
    for (const Piece& piece : splitIntoPieces(t)) {
        MessageSubstring& s = set.Slots[static_cast<std::size_t>(set.Count)];
        s.CommandType = static_cast<std::int16_t>(piece.type);
        s.CommandChannel = static_cast<std::int16_t>(piece.channel);
        s.Value1 = static_cast<std::int16_t>(piece.value1);
        s.Value2 = static_cast<std::int16_t>(piece.value2);
        s.SysexMake.clear();
        s.SysexModel.clear();
        s.EnteredString = MSBModule::Trim(t.substr(piece.start, piece.length));
        s.ListItem = MakeListItem(s.EnteredString, piece.type);
        s.OwnCheck = 0;
        ++set.Count;
    }
}

}  // namespace tavlo

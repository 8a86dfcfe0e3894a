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

void ParseSysexString(std::string& text, StringWorkArea& work) {
    text = MakeMultipleNotesSingle(text);
    const std::string_view t = text;
    std::vector<Piece> pieces;

    std::size_t p = 0;
    while (p < t.size()) {
        const char first = t[p];
        const std::string_view status = pairAt(t, p);
        const bool global = hasGlobalChannel(t, p);
        const std::size_t extra = global ? 3 : 0;

        int type = -1;
        std::size_t form = 0;
        std::size_t step = 0;
        int values = 0;  // data values at +3 and +6, behind any "-gc"
        bool channelStatus = false;
        switch (first) {
            case '9': type = 0, form = 8, step = 9, values = 2, channelStatus = true; break;
            case '8': type = 1, form = 8, step = 9, values = 2, channelStatus = true; break;
            case 'A': type = 2, form = 8, step = 9, values = 2, channelStatus = true; break;
            case 'B': type = 3, form = 8, step = 9, values = 2, channelStatus = true; break;
            case 'E': type = 6, form = 8, step = 9, values = 2, channelStatus = true; break;
            case 'C': type = 4, form = 5, step = 6, values = 1, channelStatus = true; break;
            case 'D': type = 5, form = 5, step = 6, values = 1, channelStatus = true; break;
            default: break;
        }
        if (type < 0) {
            if (status == "F0") type = kSysexKind;
            else if (status == "F2") type = 8, form = 8, step = 9;
            else if (status == "F3") type = 9, form = 5, step = 6, values = 1;
            else if (status == "F6") type = 10, form = 2, step = 3;
            else if (status == "FA") type = 11, form = 2, step = 3;
            else if (status == "FC") type = 12, form = 2, step = 3;
            else if (status == "FB") type = 13, form = 2, step = 3;
            else if (status == "FE") type = 14, form = 2, step = 3;
            else if (status == "FF") type = 15, form = 2, step = 3;
        }

        if (type == kSysexKind) {
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
        if (type < 0) {
            // Up to the next token that may start a message.
            std::size_t q = p + 3;
            while (q < t.size() && !((t[q] >= '8' && t[q] <= '9') || (t[q] >= 'A' && t[q] <= 'F'))) q += 3;
            const std::size_t end = std::min(q, t.size());
            pieces.push_back({p, end - p, kFreeByteKind});
            p = q;
            continue;
        }

        form += extra;
        step += extra;
        if (p + form > t.size()) {  // the form doesn't fit: the rest is a free byte string
            pieces.push_back({p, t.size() - p, kFreeByteKind});
            break;
        }
        Piece piece{p, form, type};
        if (channelStatus) piece.channel = global ? 16 : std::max(0, MSBModule::HexDigit(t[p + 1]));
        bool split = false;
        for (int v = 0; v < values; ++v) {
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
        p += step;
    }

    // Slot 50 is never used: a longer string keeps its bytes in one last free byte string.
    if (pieces.size() > static_cast<std::size_t>(kSubstringLimit)) {
        Piece& last = pieces[kSubstringLimit - 1];
        last = Piece{last.start, t.size() - last.start, kFreeByteKind};
        pieces.resize(kSubstringLimit);
    }

    MessageStringSet& set = work.Strings;
    set.Count = 0;
    for (const Piece& piece : pieces) {
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

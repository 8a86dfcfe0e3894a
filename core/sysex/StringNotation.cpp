#include "sysex/StringNotation.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstdint>
#include <cstdio>

#include "base/MSBModule.h"
#include "sysex/PresetCodes.h"
#include "ui/Prompter.h"

namespace tavlo {
namespace {

bool isHexDigit(char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

bool isSpecialToken(std::string_view token) {
    return token == "pr" || token == "rv" || token == "gc" || token == "dv" || token == "cs";
}

std::string upperHexByte(int value) {
    char buffer[8];
    std::snprintf(buffer, sizeof buffer, "%02X", value & 0xFF);
    return buffer;
}

// The rendered form of a three-character token's value: two digits below 256,
// the platform's long hexadecimal for what a numeric reader makes of odd input.
std::string renderNumber(double value) {
    const auto rounded = static_cast<std::int64_t>(std::nearbyint(value));  // rounds half to even
    const auto asLong = static_cast<std::uint32_t>(static_cast<std::int32_t>(rounded));
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "%X", asLong);
    std::string text = buffer;
    if (rounded < 16) text.insert(0, "0");
    return text;
}

// Two characters of text at a zero-based position, or fewer at its end.
std::string_view pairAt(std::string_view text, std::size_t pos) {
    if (pos >= text.size()) return {};
    return text.substr(pos, 2);
}

int hexPrefixValue(std::string_view digits) {
    int value = 0;
    for (char c : digits) {
        if (!isHexDigit(c)) break;
        value = value * 16 + (c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10);
    }
    return value;
}

}  // namespace

int PrByteCount(int paramFormat) {
    if (paramFormat < 0 || paramFormat >= static_cast<int>(PresetCodes::kParamFormats.size())) return 1;
    return PresetCodes::kParamFormats[static_cast<std::size_t>(paramFormat)].bytes;
}

const std::string& StringErrorText() {
    static const std::string text =
        "There is an error in your entered Message.  Please follow these guidelines:\r\n"
        "   - Separate data values with one space.\r\n"
        "   - Entere hex values as two-characters including 0123456789ABCDEF.\r\n"
        "   - Enter decimal values as three number, such as 001, 127, etc.  They must be in the range 000 to 255.\r\n"
        "   - The only other allowable values are PR=Fader value, GC=Global Channel, RV=Remote Velocity (Button only), "
        "CS=Checksum, DV=Global Device Number.\r\n"
        "     NOTE the PC1600 (non-X) version CANNOT use CS, DV, GC or RV values.\r\n"
        "   - The Checksum (CS) value can only be included as part of a Sysex String (between an F0 and F7 byte).\r\n"
        "   - A to-be-calculated CS in a Button string cannot be in a Sysex String containing any other special "
        "characters within the range of bytes used in the calculation.\r\n"
        "   - The FIRST byte of a BUTTON String cannot be any of the special codes, DV, GC, PR, RV, or CS.";
    return text;
}

double NumericPrefixValue(std::string_view token) {
    std::size_t i = 0;
    while (i < token.size() && (token[i] == ' ' || token[i] == '\t')) ++i;
    if (i + 1 < token.size() && token[i] == '&') {
        const char base = static_cast<char>(token[i + 1] | 0x20);
        double value = 0;
        if (base == 'h') {
            for (std::size_t k = i + 2; k < token.size() && isHexDigit(token[k]); ++k)
                value = value * 16 + hexPrefixValue(token.substr(k, 1));
            return value;
        }
        if (base == 'o') {
            for (std::size_t k = i + 2; k < token.size() && token[k] >= '0' && token[k] <= '7'; ++k)
                value = value * 8 + (token[k] - '0');
            return value;
        }
        return 0;
    }
    // Sign, digits, a decimal point and an exponent, as far as they form a number.
    std::string number;
    if (i < token.size() && (token[i] == '+' || token[i] == '-')) number += token[i++];
    bool digits = false;
    while (i < token.size() && token[i] >= '0' && token[i] <= '9') number += token[i++], digits = true;
    if (i < token.size() && token[i] == '.') {
        number += token[i++];
        while (i < token.size() && token[i] >= '0' && token[i] <= '9') number += token[i++], digits = true;
    }
    if (!digits) return 0;
    if (i < token.size() && (token[i] == 'e' || token[i] == 'E' || token[i] == 'd' || token[i] == 'D')) {
        std::string exponent = "e";
        std::size_t k = i + 1;
        if (k < token.size() && (token[k] == '+' || token[k] == '-')) exponent += token[k++];
        bool expDigits = false;
        while (k < token.size() && token[k] >= '0' && token[k] <= '9') exponent += token[k++], expDigits = true;
        if (expDigits) number += exponent;
    }
    return std::strtod(number.c_str(), nullptr);
}

namespace {

// Steps 3 and 4: each token is a byte in hex or decimal, a status on the
// global channel or a special code; the typed form gathers in `entered`, the
// hex form in `rendered`. True when every token passed.
bool checkTokens(const std::string& s, StringContext context, bool pc1600Model, std::string& entered,
                 std::string& rendered) {
    const bool button = context == StringContext::Button;
    const bool fader = context == StringContext::Fader;
    bool error = false;
    // Tokens end at a blank or at the last character.
    std::size_t start = 0;
    for (std::size_t i = 0; i < s.size(); ++i) {
        const bool last = i + 1 == s.size();
        // The first byte of a button string may not be a special token, as typed.
        if (button && i == 0 && isSpecialToken(pairAt(s, 0))) error = true;
        if (s[i] != ' ' && !last) continue;
        const std::size_t end = last ? i + 1 : i;  // one past the token's last character
        const std::string token = MSBModule::ToLower(MSBModule::Trim(std::string_view(s).substr(start, end - start)));
        start = i + 1;

        const bool globalStatus = token.size() >= 5 && token.compare(2, 3, "-gc") == 0;
        bool append = false;
        if (globalStatus) {
            append = true;  // a status on the global channel is taken unexamined
        } else if (token.size() == 3) {
            const double value = NumericPrefixValue(token);
            if (value < 0 || value > 255) error = true;  // "-01" is no byte
            entered += " " + token;
            rendered += " " + renderNumber(value);
        } else if (token.size() != 2) {
            error = true;
        } else if (!isSpecialToken(token)) {
            if (isHexDigit(token[0]) && isHexDigit(token[1])) {
                entered += " " + MSBModule::ToUpper(token);
                rendered += " " + MSBModule::ToUpper(token);
            } else {
                error = true;
            }
        } else {
            if (fader && token == "rv") error = true;
            if (!fader && token == "pr") error = true;
            append = true;
        }
        if (append) {
            entered += " " + token;
            rendered += " " + token;
        }
        // What the version 1.1 device cannot take; a button's "cs" is
        // calculated here, so only a byte reaches the device.
        if (pc1600Model && (token == "rv" || token == "gc" || token == "dv" || globalStatus || (token == "cs" && !button)))
            error = true;
    }
    return !error;
}

// Step 5: each "cs" must stand inside F0 ... F7 with at least five bytes
// before it; in button and setup strings it is calculated now. Sets `error`
// on a misplaced one; with an error no checksum is calculated.
void placeChecksums(std::string& rendered, bool fader, bool& error) {
    for (std::size_t i = 0; i < rendered.size(); i += 3) {
        if (MSBModule::ToLower(pairAt(rendered, i)) != "cs") continue;
        bool foundF0 = false;
        std::size_t j = 0;
        for (std::size_t back = i; back >= 3;) {
            back -= 3;
            const std::string pair = MSBModule::ToUpper(pairAt(rendered, back));
            if (pair == "F7") {
                error = true;
                break;
            }
            if (pair == "F0") {
                foundF0 = true;
                j = back;
                break;
            }
        }
        if (!foundF0) {
            error = true;
            continue;
        }
        bool foundF7 = false;
        for (std::size_t k = i + 3; k < rendered.size() && !foundF7; k += 3)
            foundF7 = MSBModule::ToUpper(pairAt(rendered, k)) == "F7";
        if (!foundF7) error = true;
        if ((i - j) / 3 < 6) error = true;
        if (error || fader) continue;

        // The model identifier may take an extra 00 byte: one character at a
        // time from the third byte behind F0, reading across the blanks.
        int zeros = 0;
        int others = 0;
        for (std::size_t p = j + 9; p <= i && others < 2; ++p) {
            if (pairAt(rendered, p) == "00") ++zeros;
            else ++others;
        }
        std::string summed;
        for (std::size_t p = j + 15 + 3 * static_cast<std::size_t>(zeros); p < i && !error; p += 3) {
            const std::string pair = MSBModule::ToUpper(pairAt(rendered, p));
            if (pair == "DV" || pair == "RV" || pair == "GC") error = true;
            else summed += static_cast<char>(hexPrefixValue(pair));
        }
        if (error) continue;
        rendered.replace(i, 2, upperHexByte(MSBModule::RolandChecksum(summed)));
    }
}

}  // namespace

EnteredStringCheck CheckEnteredString(std::string_view input, StringContext context, bool pc1600Model) {
    EnteredStringCheck result;
    // Runs of blanks collapse: a blank right behind a blank is dropped.
    std::string& s = result.collapsed;
    for (std::size_t k = 0; k < input.size(); ++k)
        if (!(input[k] == ' ' && k > 0 && input[k - 1] == ' ')) s += input[k];

    std::string entered;
    std::string rendered;
    bool error = !checkTokens(s, context, pc1600Model, entered, rendered);
    rendered = MSBModule::Trim(rendered);
    placeChecksums(rendered, context == StringContext::Fader, error);

    result.ok = !error;
    if (error) {
        result.rendered = kErrorRendering;
        result.entered = std::string(input);
    } else {
        result.rendered = rendered;
        result.entered = MSBModule::Trim(entered);
    }
    return result;
}

std::string ValidateEnteredString(std::string& stringIn, StringContext context, bool pc1600Model,
                                  StringWorkArea& work, Prompter& prompter) {
    EnteredStringCheck check = CheckEnteredString(stringIn, context, pc1600Model);
    stringIn = check.collapsed;
    work.RenderedMessage = check.rendered;
    if (!check.ok) prompter.message(kStringErrorTitle, StringErrorText(), MessageButtons::OK);
    return check.entered;
}

std::optional<std::string> GenerateMessageBytes(int kind, int channelIndex, int value1, int value2,
                                                bool faderString) {
    if (kind < 0 || kind >= static_cast<int>(kMessageKinds.size())) return std::nullopt;
    const MessageKind& entry = kMessageKinds[static_cast<std::size_t>(kind)];
    std::string status(entry.templ);
    if (!status.empty() && status.back() == '?') {
        if (channelIndex == 16) status = status.substr(0, 1) + "0-gc";
        else status[1] = "0123456789ABCDEF"[channelIndex & 0x0F];
    }
    auto valueText = [&](int value, bool second) -> std::string {
        if (value >= 0 && value < 128) return upperHexByte(value);
        switch (value) {
            case kValuePr: return faderString ? "pr" : "rv";
            case kValueCs: return "cs";
            case kValueDv: return "dv";
            case kValueGc: return "gc";
            case kValueRv: return second ? "rv" : "";
            default: return "";
        }
    };
    std::string first;
    std::string second;
    if (entry.valueCount > 1 && entry.valueCount < 99) first = valueText(value1, false);
    if (entry.valueCount > 2 && entry.valueCount < 99) second = valueText(value2, true);
    return "  " + status + " " + first + " " + second;
}

int NumberOfStringBytes(const MessageStringSet& strings, int index) {
    auto bytesOf = [&](int slot) {
        std::string line = MSBModule::Trim(strings.Slots[static_cast<std::size_t>(slot)].ListItem);
        if (const auto bracket = line.find('('); bracket != std::string::npos) line = line.substr(0, bracket);
        line = MSBModule::Trim(line);
        int count = 1;
        for (char c : line)
            if (c == ' ' || c == '-') ++count;
        return count;
    };
    if (index == -1) {
        int total = 0;
        const int count = std::min<int>(strings.Count, kStringSlots);
        for (int slot = 0; slot < count; ++slot) total += bytesOf(slot);
        return total;
    }
    if (index < 0 || index >= kStringSlots) return 0;
    return bytesOf(index);
}

std::string MakeListItem(std::string_view text, int commandType) {
    std::string_view name;
    if (commandType >= 0 && commandType < static_cast<int>(kMessageKinds.size()))
        name = kMessageKinds[static_cast<std::size_t>(commandType)].listName;
    return MSBModule::Trim(text) + "  (" + std::string(name) + ")";
}

std::string JoinedStringText(const MessageStringSet& strings) {
    std::string joined;
    const int count = std::min<int>(strings.Count, kStringSlots);
    for (int slot = 0; slot < count; ++slot) {
        std::string line = strings.Slots[static_cast<std::size_t>(slot)].ListItem;
        if (const auto bracket = line.find('('); bracket != std::string::npos) line = line.substr(0, bracket);
        joined += MSBModule::Trim(line) + " ";
    }
    return MSBModule::Trim(joined);
}

}  // namespace tavlo

#include "base/MSBModule.h"

#include <cstdio>

#include <array>
#include <cctype>

namespace tavlo::MSBModule {
namespace {

unsigned char code(char c) { return static_cast<unsigned char>(c); }

constexpr char kQuoteStored = static_cast<char>(151);
constexpr char kApostropheStored = static_cast<char>(152);
constexpr char kBarStored = static_cast<char>(150);

constexpr std::array<const char*, 12> kPitchNames = {"C",  "C#", "D",  "D#", "E",  "F",
                                                     "F#", "G",  "G#", "A",  "A#", "B"};

}  // namespace

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

std::string SafeDBString(std::string_view text) {
    std::string out(text);
    for (char& c : out) {
        if (code(c) < 32 || code(c) > 126) c = ' ';
        else if (c == '"') c = kQuoteStored;
        else if (c == '\'') c = kApostropheStored;
        else if (c == '|') c = kBarStored;
    }
    return out;
}

std::string DisplayDBString(std::string_view text) {
    std::string out(text);
    for (char& c : out) {
        if (c == kQuoteStored) c = '"';
        else if (c == kApostropheStored) c = '\'';
        else if (c == kBarStored) c = '|';
    }
    return out;
}

std::string DoubleAmpersands(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (char c : text) {
        out += c;
        if (c == '&') out += '&';
    }
    return out;
}

std::string BinaryToHex(std::string_view bits) {
    std::string padded(bits);
    if (padded.size() % 8 != 0) padded.insert(0, 8 - padded.size() % 8, '0');
    std::string out;
    for (std::size_t i = 0; i + 4 <= padded.size(); i += 4) {
        int value = 0;
        bool valid = true;
        for (std::size_t k = 0; k < 4; ++k) {
            const char b = padded[i + k];
            if (b != '0' && b != '1') valid = false;
            value = value * 2 + (b == '1');
        }
        if (valid) out += "0123456789ABCDEF"[value];
    }
    return out;
}

std::string HexToBinary(std::string_view hex) {
    std::string out;
    out.reserve(hex.size() * 4);
    for (char c : hex) {
        const int value = HexDigit(c);
        if (value < 0) return {};
        for (int bit = 3; bit >= 0; --bit) out += ((value >> bit) & 1) ? '1' : '0';
    }
    return out;
}

std::string TextToNibbles(std::string_view text) {
    std::string out;
    out.reserve(text.size() * 2);
    for (char c : text) {
        out += static_cast<char>(code(c) >> 4);
        out += static_cast<char>(code(c) & 0x0F);
    }
    return out;
}

std::string BytesToHexText(std::string_view bytes) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string out;
    out.reserve(bytes.size() * 3);
    for (char c : bytes) {
        out += kDigits[code(c) >> 4];
        out += kDigits[code(c) & 0x0F];
        out += ' ';
    }
    return out;
}

std::string GreaterToTilde(std::string_view text) {
    std::string out(text);
    for (char& c : out)
        if (c == '>') c = '~';
    return out;
}

std::string TildeToGreater(std::string_view text) {
    std::string out(text);
    for (char& c : out)
        if (c == '~') c = '>';
    return out;
}

std::string NoteName(int note) {
    // The octave rounds towards minus infinity, so negative notes keep C-1 below them.
    const int octave = (note >= 0 ? note / 12 : -((-note + 11) / 12)) - 1;
    const int pitch = note - 12 * (octave + 1);
    return std::string(kPitchNames[pitch]) + std::to_string(octave);
}

int NoteNumber(std::string_view raw) {
    const std::string text = Trim(raw);
    auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    if (text.empty() || text.find_first_of("ABCDEFG") != 0) return -1;
    // The last character is the octave's digit; "0" or a non-zero value.
    if (!isDigit(text.back())) return -1;
    std::string pitchName(1, text[0]);
    int octave = text.back() - '0';
    switch (text.size()) {
        case 2: break;
        case 3:
            if (text[1] == '#') pitchName += '#';
            else if (text[1] == '-') octave = -octave;
            else return -1;
            break;
        case 4:
            if (text[1] != '#' || text[2] != '-') return -1;
            pitchName += '#';
            octave = -octave;
            break;
        default: return -1;
    }
    for (int pitch = 0; pitch < 12; ++pitch)
        if (pitchName == kPitchNames[pitch]) return 12 * (octave + 1) + pitch;
    return -1;
}

std::string SafeFileName(std::string_view text) {
    std::string out;
    for (char c : text)
        if (std::string_view("/\\:*?<>|\"").find(c) == std::string_view::npos) out += c;
    return out;
}

std::string FilterNameCharacters(std::string_view text) {
    std::string out;
    for (char c : text)
        if (kNameCharacters.find(c) != std::string_view::npos) out += c;
    return out;
}

int RolandChecksum(std::string_view bytes) {
    int sum = 0;
    for (char c : bytes) sum += code(c);
    const int result = 128 - sum % 128;
    return result == 128 ? 0 : result;
}

int SysexChecksum(std::string_view message) {
    const std::size_t n = message.size();
    if (n < 8 || code(message[0]) != 240 || code(message[n - 1]) != 247) return -1;
    auto byte = [&](std::size_t oneBased) { return code(message[oneBased - 1]); };
    std::size_t p = 5;
    if (byte(4) == 0) p = byte(5) == 0 ? 7 : 6;
    std::size_t start = 6;
    if (byte(p) == 0) start = byte(p + 1) == 0 ? 8 : 7;
    if (start > n - 2) return RolandChecksum({});
    return RolandChecksum(message.substr(start - 1, (n - 2) - (start - 1)));
}

bool HasGoodChecksum(std::string_view message) {
    if (message.size() < 2) return false;
    return code(message[message.size() - 2]) == SysexChecksum(message);
}

std::string Trim(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    const auto last = text.find_last_not_of(' ');
    return std::string(text.substr(first, last - first + 1));
}

std::string TrimRight(std::string_view text) {
    const auto last = text.find_last_not_of(' ');
    return last == std::string_view::npos ? std::string() : std::string(text.substr(0, last + 1));
}

std::string ToUpper(std::string_view text) {
    std::string out(text);
    for (char& c : out) c = static_cast<char>(std::toupper(code(c)));
    return out;
}

std::string ToLower(std::string_view text) {
    std::string out(text);
    for (char& c : out) c = static_cast<char>(std::tolower(code(c)));
    return out;
}

}  // namespace tavlo::MSBModule

namespace tavlo {

std::string TwoDigits(int value) {
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "%02d", value);
    return buffer;
}

}  // namespace tavlo

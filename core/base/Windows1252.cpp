#include "base/Windows1252.h"

#include <array>
#include <cstdint>

namespace tavlo {
namespace {

// Code points of 0x80..0x9F. The five bytes Windows leaves undefined map to
// the C1 control of the same value, so every byte survives a round trip.
constexpr std::array<char32_t, 32> kHighTable = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 80-87
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  // 88-8F
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 90-97
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,  // 98-9F
};

char32_t toCodePoint(unsigned char byte) {
    return (byte >= 0x80 && byte <= 0x9F) ? kHighTable[byte - 0x80] : byte;
}

void appendUtf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

int fromCodePoint(char32_t cp) {
    if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF)) return static_cast<int>(cp);
    for (int i = 0; i < 32; ++i)
        if (kHighTable[i] == cp) return 0x80 + i;
    return -1;
}

}  // namespace

std::string Windows1252ToUtf8(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (char c : text) appendUtf8(out, toCodePoint(static_cast<unsigned char>(c)));
    return out;
}

std::string Utf8ToWindows1252(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    std::size_t i = 0;
    while (i < text.size()) {
        const auto lead = static_cast<unsigned char>(text[i]);
        int length = lead < 0x80 ? 1 : (lead >> 5) == 0x6 ? 2 : (lead >> 4) == 0xE ? 3 : (lead >> 3) == 0x1E ? 4 : 0;
        char32_t cp = 0;
        bool valid = length > 0 && i + length <= text.size();
        if (valid) {
            cp = length == 1 ? lead : lead & (0x7F >> length);
            for (int k = 1; k < length; ++k) {
                const auto next = static_cast<unsigned char>(text[i + k]);
                if ((next & 0xC0) != 0x80) { valid = false; break; }
                cp = (cp << 6) | (next & 0x3F);
            }
        }
        if (!valid) {
            out += static_cast<char>(lead);
            ++i;
            continue;
        }
        const int byte = fromCodePoint(cp);
        out += byte < 0 ? '?' : static_cast<char>(byte);
        i += length;
    }
    return out;
}

}  // namespace tavlo

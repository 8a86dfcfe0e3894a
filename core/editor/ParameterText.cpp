#include "editor/ParameterText.h"

#include <algorithm>
#include <cstdio>
#include <cctype>
#include <cstdlib>

#include "base/MSBModule.h"

namespace tavlo::ParameterText {

long LeadingNumber(std::string_view text) {
    const std::string trimmed = MSBModule::Trim(text);
    size_t i = 0;
    bool negative = false;
    if (i < trimmed.size() && (trimmed[i] == '-' || trimmed[i] == '+')) {
        negative = trimmed[i] == '-';
        ++i;
    }
    long value = 0;
    for (; i < trimmed.size() && trimmed[i] >= '0' && trimmed[i] <= '9'; ++i) {
        value = value * 10 + (trimmed[i] - '0');
        if (value > 1000000) break;  // far beyond any slider; stop before overflow
    }
    return negative ? -value : value;
}

bool ReadHex(std::string_view text, long& value) {
    const std::string upper = MSBModule::ToUpper(MSBModule::Trim(text));
    if (upper.size() < 2 || upper.back() != 'H') return false;
    long result = 0;
    for (size_t i = 0; i + 1 < upper.size(); ++i) {
        const char c = upper[i];
        int digit;
        if (c >= '0' && c <= '9') digit = c - '0';
        else if (c >= 'A' && c <= 'F') digit = c - 'A' + 10;
        else return false;
        result = result * 16 + digit;
        if (result > 1000000) result = 1000000;
    }
    value = result;
    return true;
}

long HexOrNumber(std::string_view text) {
    long value = 0;
    if (ReadHex(text, value)) return value;
    return LeadingNumber(text);
}

int ParseChannelText(std::string_view text) {
    const std::string upper = MSBModule::ToUpper(MSBModule::Trim(text));
    if (!upper.empty() && (upper[0] == 'C' || upper[0] == 'G')) return 16;
    const long value = std::clamp<long>(LeadingNumber(upper), 1, 16);
    return static_cast<int>(value) - 1;
}

std::string ThreeDigits(int value) {
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "%03d", value);
    return buffer;
}

std::string NoteText(int value) {
    if (value == 128) return "Fdr";
    if (value == 129) return "Rem";
    return MSBModule::NoteName(value) + " " + ThreeDigits(value);
}

int ParseNoteText(std::string_view text) {
    const std::string lower = MSBModule::ToLower(MSBModule::Trim(text));
    if (lower == "rv" || lower == "rem") return 129;
    if (lower == "fd" || lower == "fad" || lower == "fdr") return 128;
    long value = 0;
    if (ReadHex(lower, value)) return static_cast<int>(std::clamp<long>(value, 0, 127));
    if (!lower.empty() && (std::isdigit(static_cast<unsigned char>(lower[0])) || lower[0] == '-'))
        return static_cast<int>(std::clamp<long>(LeadingNumber(lower), 0, 127));
    // A note name; its own spelling has the letter in upper case. "C4 060",
    // the text rule's own form, reads by its name.
    std::string name = MSBModule::Trim(text);
    const auto blank = name.find(' ');
    if (blank != std::string::npos) name = name.substr(0, blank);
    if (!name.empty()) name[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(name[0])));
    const int note = MSBModule::NoteNumber(name);
    return note < 0 ? 0 : std::min(note, 127);
}

std::string VelocityText(int value) {
    if (value == 128) return "Fdr";
    if (value == 129) return "Rem";
    return ThreeDigits(value);
}

int ParseVelocityText(std::string_view text) {
    const std::string upper = MSBModule::ToUpper(MSBModule::Trim(text));
    if (!upper.empty() && upper[0] == 'F') return 128;
    if (!upper.empty() && upper[0] == 'R') return 129;
    return static_cast<int>(std::clamp<long>(HexOrNumber(upper), 0, 127));
}

int ParseProgChangeText(std::string_view text) {
    const long value = HexOrNumber(text);
    return value < 0 || value > 127 ? 0 : static_cast<int>(value);
}

int ParseRangeText(std::string_view text, int low, int high) {
    return static_cast<int>(std::clamp<long>(LeadingNumber(text), low, high));
}

std::string SetupValueText(int position) { return position <= 0 ? "Off" : ThreeDigits(position - 1); }

int ParseSetupValueText(std::string_view text) {
    const std::string upper = MSBModule::ToUpper(MSBModule::Trim(text));
    if (!upper.empty() && upper[0] == 'O') return 0;
    const long value = upper.empty() ? 0 : HexOrNumber(upper);
    return static_cast<int>(std::clamp<long>(value, 0, 127)) + 1;
}

int ParseSetupChannelText(std::string_view text) {
    return static_cast<int>(std::clamp<long>(LeadingNumber(text), 1, 16)) - 1;
}

int StepSlider(int value, SliderKey key, int minimum, int maximum, bool minimumOnTop) {
    const int low = std::min(minimum, maximum);
    const int high = std::max(minimum, maximum);
    const int tenth = std::max(1, (high - low) / 10);
    const int up = minimumOnTop ? -1 : 1;  // the value's direction of a handle moving up
    int next = value;
    switch (key) {
        case SliderKey::Home: next = low; break;
        case SliderKey::End: next = high; break;
        case SliderKey::Left:
        case SliderKey::Minus: next = value - 1; break;
        case SliderKey::Right:
        case SliderKey::Plus: next = value + 1; break;
        case SliderKey::Up: next = value + up; break;
        case SliderKey::Down: next = value - up; break;
        case SliderKey::PageUp: next = value + up * tenth; break;
        case SliderKey::PageDown: next = value - up * tenth; break;
    }
    return std::clamp(next, low, high);
}

}  // namespace tavlo::ParameterText

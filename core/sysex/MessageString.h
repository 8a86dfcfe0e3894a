#pragma once
#include <array>
#include <cstdint>
#include <string>

namespace tavlo {

inline constexpr int kStringSlots = 51;  // a string never reaches the last slot
inline constexpr int kSubstringLimit = 50;

// Channel value that means "the device's own global channel", shown as ChOut.
inline constexpr std::int16_t kChannelOut = 16;

// One message of a control's string, in the form the string editor builds it.
struct MessageSubstring {
    std::int16_t CommandType = -1;
    std::int16_t CommandChannel = 16;
    std::int16_t Value1 = 0;
    std::int16_t Value2 = 0;
    std::string SysexMake;
    std::string SysexModel;
    std::string EnteredString;
    std::string ListItem;
    std::int16_t OwnCheck = 1;

    bool operator==(const MessageSubstring&) const = default;
};

// The structured form of one message string: up to 50 substrings in slots
// 0 upward, as many as Count says.
struct MessageStringSet {
    std::array<MessageSubstring, kStringSlots> Slots{};
    std::int16_t Count = 0;

    // Empties slots 0 to 49 and the count; slot 50 is left alone on purpose.
    void clear();
    bool operator==(const MessageStringSet&) const = default;
};

}  // namespace tavlo

#include "preset/PresetDump.h"

#include <algorithm>
#include <cstdio>

#include "base/MSBModule.h"
#include "ui/ListState.h"

namespace tavlo {

bool IsPresetDump(std::string_view bytes) {
    static constexpr unsigned char kHeader[] = {0xF0, 0x00, 0x00, 0x1B, 0x0B};
    if (bytes.size() < kPresetDumpHeaderSize) return false;
    for (std::size_t i = 0; i < sizeof kHeader; ++i)
        if (static_cast<unsigned char>(bytes[i]) != kHeader[i]) return false;
    return static_cast<unsigned char>(bytes[6]) == kPresetDumpCommand &&
           static_cast<unsigned char>(bytes.back()) == 0xF7;
}

std::string SceneNameOfLine(std::string_view line) {
    if (line.size() <= 3) return {};
    std::string_view rest = line.substr(3);
    if (const auto mark = rest.find("[p:"); mark != std::string_view::npos) rest = rest.substr(0, mark);
    return MSBModule::Trim(rest);
}

int SceneIndexOf(const ListState& sceneList, std::string_view scene, std::int64_t scenePreset) {
    const int lines = std::min(sceneList.listCount(), kSceneLimit);
    for (int k = 0; k < lines; ++k)
        if (sceneList.itemData(k) == scenePreset && SceneNameOfLine(sceneList.list(k)) == scene) return k;
    return kNoSceneIndex;
}

std::string DeviceStringBytes(const MessageStringSet& strings) {
    std::string bytes;
    const int count = std::clamp<int>(strings.Count, 0, kStringSlots);
    for (int slot = 0; slot < count; ++slot) {
        const std::string& text = strings.Slots[static_cast<std::size_t>(slot)].EnteredString;
        for (std::size_t i = 0; i < text.size(); i += 3) {
            const std::string_view token = std::string_view(text).substr(i, 2);
            int value = 0;
            if (token == "pr" || token == "rv") value = 0xFF;
            else if (token == "gc") value = 0xFE;
            else if (token == "dv") value = 0xFD;
            else if (token == "cs") value = 0xFC;
            else
                for (char c : token) {
                    const int digit = MSBModule::HexDigit(c);
                    if (digit < 0) break;
                    value = value * 16 + digit;
                }
            bytes += static_cast<char>(value);
        }
    }
    return bytes;
}

unsigned char WireByte(int value) {
    char digits[16];
    if (value >= 0) std::snprintf(digits, sizeof digits, "%X", static_cast<unsigned>(value));
    else if (value >= -32768) std::snprintf(digits, sizeof digits, "%X", static_cast<unsigned>(value) & 0xFFFFu);
    else std::snprintf(digits, sizeof digits, "%X", static_cast<unsigned>(value));
    if (digits[1] == '\0') return static_cast<unsigned char>(MSBModule::HexDigit(digits[0]));
    return static_cast<unsigned char>(MSBModule::HexDigit(digits[0]) * 16 + MSBModule::HexDigit(digits[1]));
}

}  // namespace tavlo

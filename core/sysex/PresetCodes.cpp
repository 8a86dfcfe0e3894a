#include "sysex/PresetCodes.h"

#include <cstdio>

namespace tavlo::PresetCodes {

std::string DataWheelText(int index) {
    if (index == 0) return "Off";
    if (index >= 1 && index <= 16) return "Fader #" + std::to_string(index);
    if (index == 17) return "CV #1";
    if (index == 18) return "CV #2";
    if (index == 19) return "Last Fader!";
    return {};
}

std::string CaptionWithTag(std::string_view name, std::string_view tag) {
    std::string caption(name);
    if (!tag.empty()) caption += " (" + std::string(tag) + ")";
    return caption;
}

namespace {
std::string twoDigits(int value) {
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "%02d", value);
    return buffer;
}
}  // namespace

std::string FaderChannelText(int channel) { return channel == 16 ? "ChO" : twoDigits(channel + 1); }

std::string ButtonChannelText(int channel) { return channel == 16 ? "ChOut" : twoDigits(channel + 1); }

}  // namespace tavlo::PresetCodes

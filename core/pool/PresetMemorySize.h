#pragma once
#include <cstdint>
#include <string_view>

namespace tavlo {

class Database;

// Bytes of a message string in editor notation: three characters a byte.
int StringBytes(std::string_view editorNotation);

// The cost of one stored fader or button in the device's memory.
int FaderMemoryCost(int function, std::string_view name, std::string_view midiString);
int ButtonMemoryCost(int function, std::string_view name, std::string_view string1, std::string_view string2);
// The cost of the preset row itself: data wheel, setup channels, setup scene
// and setup string, with the setup block's own three bytes.
int PresetRowMemoryCost(int dataWheelLink, std::string_view setupChannelMap, long setupScenePreset,
                        std::string_view setupScene, std::string_view setupString);

// CalculatePresetMemorySize: what the stored preset `id` costs, summed from
// its FaderRec, ButtonRec and PresetRec rows. `withPresetRow` false leaves
// the preset row out, as the memory image does for "--Initialized--".
int CalculatePresetMemorySize(Database& db, std::int64_t id, bool withPresetRow = true);

}  // namespace tavlo

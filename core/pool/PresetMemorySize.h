#pragma once
#include <cstdint>
#include <memory>
#include <string_view>

namespace tavlo {

class Database;
class Statement;

// Bytes of a message string in editor notation: three characters a byte.
int StringBytes(std::string_view editorNotation);

// The cost of one stored fader or button in the device's memory.
int FaderMemoryCost(int function, std::string_view name, std::string_view midiString);
int ButtonMemoryCost(int function, std::string_view name, std::string_view string1, std::string_view string2);
// The cost of the preset row itself: data wheel, setup channels, setup scene
// and setup string, with the setup block's own three bytes.
int PresetRowMemoryCost(int dataWheelLink, std::string_view setupChannelMap, long setupScenePreset,
                        std::string_view setupScene, std::string_view setupString);

// The cost of stored presets, summed from their FaderRec, ButtonRec and
// PresetRec rows by the table above. It keeps its statements prepared, so a
// whole memory image is summed without preparing them fifty times over.
class PresetMemoryCost {
public:
    explicit PresetMemoryCost(Database& db);
    ~PresetMemoryCost();
    PresetMemoryCost(const PresetMemoryCost&) = delete;
    PresetMemoryCost& operator=(const PresetMemoryCost&) = delete;

    // `withPresetRow` false leaves the preset row out, as the memory image
    // does for "--Initialized--". The full sum, not cut to 16 bits.
    long operator()(std::int64_t id, bool withPresetRow = true);

private:
    std::unique_ptr<Statement> faders_, buttons_, preset_;
};

// CalculatePresetMemorySize: what the stored preset `id` costs, in the
// 16-bit signed field the pool window shows it from.
int CalculatePresetMemorySize(Database& db, std::int64_t id, bool withPresetRow = true);

}  // namespace tavlo

// The preset decoder on anything: it either decodes or refuses, and a
// refusal leaves what it decodes into exactly as it was.
#include <cstddef>
#include <cstdint>
#include <string>

#include "base/MSBModule.h"
#include "preset/PresetDecoder.h"
#include "preset/PresetEncoder.h"
#include "editor/ImageSlots.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::uint8_t mode = data[0];
    const std::string input(reinterpret_cast<const char*>(data + 1), size - 1);
    // Mode bit 0: the bytes are the dump as it comes; otherwise they are a raw
    // body, framed as the device frames it, which reaches the records sooner.
    std::string dump;
    if (mode & 1) {
        dump = input;
    } else {
        dump = std::string{'\xF0', '\x00', '\x00', '\x1B', '\x0B', '\x00', '\x04'};
        dump += std::string(32, '\x02');
        const auto bodySize = static_cast<unsigned>(input.size());
        for (int shift = 12; shift >= 0; shift -= 4) dump += static_cast<char>((bodySize >> shift) & 0x0F);
        dump += tavlo::MSBModule::TextToNibbles(input);
        dump += '\xF7';
    }
    tavlo::DecodedPreset decoded;
    decoded.preset.Name = "Before";
    const tavlo::ImageSlots image;
    const bool pc1600Model = (mode & 2) != 0;
    const tavlo::WorkingPreset before = decoded.preset;
    const tavlo::DecodeResult result = tavlo::DecodePresetDump(dump, image.SceneList, pc1600Model, decoded);
    if (!result.ok) {
        if (!(decoded.preset == before) || result.reason.empty()) __builtin_trap();
        return 0;
    }
    // Whatever decoded can be encoded again.
    const std::string setupLine = decoded.SelectPresetSceneCombo.text();
    const std::string again = tavlo::Form2PresetSysex(decoded.preset, {image.SceneList, setupLine}, pc1600Model, 0);
    if (again.size() < 44) __builtin_trap();
    return 0;
}

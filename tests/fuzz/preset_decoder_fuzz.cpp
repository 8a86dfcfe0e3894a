// PresetSysex2Form on anything: it either decodes or refuses, and a refusal
// leaves the editor exactly as it was.
#include <cstddef>
#include <cstdint>
#include <string>

#include "base/MSBModule.h"
#include "preset/PresetDecoder.h"
#include "preset/PresetEncoder.h"
#include "ui/Prompter.h"
#include "editor/EditorDumps.h"
#include "editor/EditorState.h"
#include "editor/ImageSlots.h"
#include "midilink/MidiConfig.h"

namespace {

class SilentPrompter : public tavlo::Prompter {
public:
    tavlo::MessageAnswer message(const std::string&, const std::string&, tavlo::MessageButtons) override {
        return tavlo::MessageAnswer::OK;
    }
    std::optional<std::string> input(const std::string&, const std::string&, const std::string&) override {
        return std::nullopt;
    }
    std::optional<std::string> openFile(const tavlo::FileRequest&) override { return std::nullopt; }
    std::optional<std::string> saveFile(const tavlo::FileRequest&) override { return std::nullopt; }
    tavlo::ChoiceAnswer choose(const tavlo::ChoiceRequest&) override { return {}; }
};

}  // namespace

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
    tavlo::EditorState editor;
    editor.preset.Name = "Before";
    tavlo::ImageSlots memImage;
    tavlo::MidiConfig midi;
    midi.PC1600Model = (mode & 2) != 0;
    SilentPrompter prompter;
    const tavlo::WorkingPreset before = editor.preset;
    const tavlo::DecodeResult result = tavlo::PresetSysex2Form(dump, editor, memImage.SceneList, midi.PC1600Model, prompter);
    if (!result.ok) {
        if (!(editor.preset == before) || result.reason.empty()) __builtin_trap();
        return 0;
    }
    // Whatever decoded can be encoded again.
    const std::string again = tavlo::EditorPresetSysex(editor, memImage.SceneList, midi);
    if (again.size() < 44) __builtin_trap();
    return 0;
}

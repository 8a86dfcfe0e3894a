#include "editor/EditorState.h"
#include "memimage/MemImageState.h"
#include "midilink/MidiConfig.h"
#include "midilink/VirtualPC1600.h"
#include "preset/PresetEncoder.h"

namespace tavlo {

std::string InitializedPresetDump(bool pc1600Model) {
    // A cleared device holds what the encoder makes of a fresh preset under
    // the reserved name: nothing is written here by hand.
    EditorState editor;
    editor.preset = WorkingPreset{};
    editor.preset.Name = kInitializedName;
    editor.SelectPresetSceneCombo.addItem(kNoScene, -1);
    editor.SelectPresetSceneCombo.setListIndex(0);
    MemImageState memImage;
    MidiConfig midi;
    midi.PC1600Model = pc1600Model;
    return Form2PresetSysex(editor, memImage, midi);
}

}  // namespace tavlo

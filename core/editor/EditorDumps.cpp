#include "editor/EditorDumps.h"

#include "editor/EditorState.h"
#include "editor/PresetOperations.h"
#include "midilink/MidiConfig.h"
#include "preset/PresetEncoder.h"
#include "ui/Prompter.h"

namespace tavlo {

std::string EditorPresetSysex(const EditorState& editor, const ListState& imageScenes, const MidiConfig& midi) {
    const std::string setupLine = editor.SelectPresetSceneCombo.text();
    return Form2PresetSysex(editor.preset, {imageScenes, setupLine}, midi.PC1600Model, midi.DeviceId);
}

DecodedPreset DecodingFrom(const EditorState& editor) {
    return {editor.preset, editor.FaderLabel, editor.PCButton, editor.BSceneCombo, editor.SelectPresetSceneCombo, {}};
}

void TakeDecodedPreset(EditorState& editor, DecodedPreset decoded, Prompter& prompter) {
    editor.preset = std::move(decoded.preset);
    editor.FaderLabel = std::move(decoded.FaderLabel);
    editor.PCButton = std::move(decoded.PCButton);
    editor.BSceneCombo = std::move(decoded.BSceneCombo);
    editor.SelectPresetSceneCombo = std::move(decoded.SelectPresetSceneCombo);
    editor.CurrentButton = 0;
    SelectFader(editor, 0);
    editor.notifyChanged();
    for (const auto& [title, text] : decoded.messages) prompter.message(title, text, MessageButtons::OK);
}

DecodeResult PresetSysex2Form(std::string_view dump, EditorState& editor, const ListState& imageScenes,
                              bool pc1600Model, Prompter& prompter) {
    DecodedPreset decoded = DecodingFrom(editor);
    const DecodeResult result = DecodePresetDump(dump, imageScenes, pc1600Model, decoded);
    if (result.ok) TakeDecodedPreset(editor, std::move(decoded), prompter);
    return result;
}

}  // namespace tavlo

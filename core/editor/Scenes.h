#pragma once
#include <cstdint>
#include <string>

#include "editor/EditorState.h"
#include "editor/EditorContext.h"

namespace tavlo {

class Database;

// Scenes of the preset in the editor: named snapshots of its 18 slider
// positions, kept in SceneRec and referred to by Send Scene buttons and
// setup scenes of any preset in the pool as a pair of name and owner ID.

// True while the memory image window is open.
bool MemoryImageOpen(const EditorContext& session);

// Rebuilds SelectSceneCombo, BSceneCombo and SelectPresetSceneCombo from the
// preset's scenes; lines of other presets' scenes and the selections stay.
void RefillSceneLists(EditorState& editor);

// MakeSceneButton: asks for a name and stores the slider positions.
bool MakeScene(const EditorContext& session);
// SelectSceneCombo_Click: moves the sliders; a value beyond the fader's
// range is cut, and stays cut in the scene.
void SelectScene(EditorState& editor, int listIndex);
bool RenameScene(const EditorContext& session);
bool DeleteScene(const EditorContext& session);
// CopySceneButton: the selected scene's values go to the clipboard.
void CopyScene(EditorState& editor);

// BSceneCombo_Click and SelectPresetSceneCombo_Click.
void ChooseButtonScene(EditorState& editor, int line);
void ChooseSetupScene(EditorState& editor, int line);

// AllScenesForm.FillSceneList: every scene of the pool but the excluded
// preset's, "'scene'  - from Preset 'preset'" with the SceneRec.ID as data.
// False, after telling the user, when there are none.
bool FillSceneList(const EditorContext& session, const std::string& excludedPreset, ListState& sceneList);
// What the other-scene buttons do with the scene picked in AllScenesForm.
void AddOtherScene(const EditorContext& session, bool forButton, std::int64_t sceneID);
// BOtherSceneButton / SOtherSceneButton: the user picks a scene of another
// preset ("AllScenesForm"); OK without a line is refused and asks again,
// Cancel changes nothing.
void PickOtherScene(const EditorContext& session, bool forButton);

}  // namespace tavlo

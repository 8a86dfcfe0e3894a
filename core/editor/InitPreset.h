#pragma once

namespace tavlo {

class Session;

// The initialisation of InitPresetButton: a new, empty preset, with the
// setup channels, setup string and data wheel link that DefaultsTable holds,
// and the editor's lists and captions back to their start.
void InitializePreset(Session& session);

// InitPresetButton. While ProgramInit is true it first offers to store edits
// ("Store Preset in Pool?"); Cancel leaves everything as it was and returns
// false. Callers that must not ask clear ProgramInit, or use the function
// below.
bool InitPresetButton(Session& session);
void InitPresetWithoutQuestions(Session& session);

}  // namespace tavlo

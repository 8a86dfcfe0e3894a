#pragma once

namespace tavlo {

class Session;

// A fresh preset in the editor, with the defaults the user set for new
// presets (setup channels, setup string, data wheel); it counts as
// unchanged. The pool's own initialisation replaces this where it exists.
void StartNewPreset(Session& session);

}  // namespace tavlo

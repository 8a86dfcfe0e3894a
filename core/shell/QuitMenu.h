#pragma once
#include <vector>

#include "shell/WindowStates.h"

namespace tavlo {

class Program;

// The end of a run: writes where every window stands, asks about unsaved
// work, and closes the pool. Returns false when the user cancelled; the
// program then goes on with the pool open.
bool QuitMenu(Program& session, const std::vector<WindowStateRow>& windows);

}  // namespace tavlo

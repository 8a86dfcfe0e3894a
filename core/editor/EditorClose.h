#pragma once
#include <functional>

namespace tavlo {

class Session;

// The editor window's close: it asks to store an edited preset (or stores
// without asking when the preset stands in the memory image) and then only
// hides. False when the user cancelled and the window stays.
bool EditorQueryClose(Session& session, const std::function<void()>& storeInPool);

}  // namespace tavlo

#pragma once

namespace tavlo {

class Session;

// The editor window's close: it offers to store an edited preset (or stores
// without asking when the preset stands in the memory image) and then only
// hides. False when the window stays: the user cancelled, or the store
// asked for it to stay open.
bool EditorQueryClose(Session& session);

}  // namespace tavlo

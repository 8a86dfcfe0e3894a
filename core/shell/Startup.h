#pragma once
#include <string>

namespace tavlo {

class PoolDatabase;
class Prompter;
class Program;

// Opens the pool and proves it usable. When it isn't, the user has been told
// why (the critical error for a pool without its "--Initialized--" preset)
// and false is returned: the program ends with no window left.
bool OpenPoolForStartup(PoolDatabase& pool, const std::string& path, Prompter& prompter);

// The rest of the start-up that needs no window: scenes that crept onto the
// "--Initialized--" preset are removed, and the editor and the memory image
// come to their initial state.
void PrepareSession(Program& session);

}  // namespace tavlo

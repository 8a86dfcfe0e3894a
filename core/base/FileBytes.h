#pragma once
#include <optional>
#include <string>

namespace tavlo {

// The whole of a file, byte for byte; nothing when it can't be read.
std::optional<std::string> ReadWholeFile(const std::string& path);

// Writes a whole file so that it is either all there or as it was: the bytes
// go to a temporary file beside it, which then replaces it. False when any
// step fails; the old file is then untouched and no temporary is left.
bool WriteWholeFile(const std::string& path, const std::string& bytes);

}  // namespace tavlo

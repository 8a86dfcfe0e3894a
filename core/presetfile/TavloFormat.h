#pragma once
#include <cstdint>
#include <string>
#include <vector>

namespace tavlo {

class Database;
struct WorkingPreset;

// The lines every preset text file shares between writer and loader.
namespace TavloText {
inline constexpr const char* kDashes = "------------------------------------------";
inline constexpr const char* kSetupDashes = "-------------------------------------------------";
inline constexpr const char* kSelf = "<self>";
inline constexpr const char* kIndent = "    ";
inline constexpr const char* kFailureTitle = "Cannot Load Tavlo Format Preset";
}  // namespace TavloText

// SaveTavloFormat: the preset as the text of a .tpr file, every line ended by
// CR LF. The pool gives the names behind scene references and the preset's
// stored scenes (in the order they were stored, so two writes of one preset
// are the same text); without a pool, references read "<none>" and there are
// no scenes. `associated` holds AssociatedList's "make: model" lines.
std::string SaveTavloFormat(Database* db, const WorkingPreset& preset, const std::vector<std::string>& associated);

}  // namespace tavlo

#pragma once
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "globals/GlobalSettings.h"

namespace tavlo {

class Prompter;

// The .tgl text of one set of settings, lines ending CR LF, from
// "[GLOBAL DATA] " to "[END GLOBAL DATA]". A memory image file carries the
// same text in its middle.
std::string StoreTavloFormatGlobals(const GlobalSettings& settings);

struct GlobalsTextResult {
    std::optional<GlobalSettings> settings;  // nothing when the format is refused
    bool defaultYes = false;  // "[DEFAULT] Yes": the caller asks AskImportAsDefault
    std::size_t consumed = 0; // characters up to and with the "[END GLOBAL DATA]" line
    std::string problem;      // for the developer: the line that was refused
};

// Reads the text from its start: every keyword in order, a value the form
// can't hold refused like a wrong keyword. `current` gives what a combo
// keeps when its value matches no line. The settings' Default is false: it
// is the answer to the default question.
GlobalsTextResult LoadTavloFormatGlobals(std::string_view text, const GlobalSettings& current);

inline constexpr const char* kCannotImportTitle = "Cannot Import";
extern const char* const kCannotImportText;

// The question of a .tgl marked as default; true on Yes.
bool AskImportAsDefault(Prompter& prompter);

}  // namespace tavlo

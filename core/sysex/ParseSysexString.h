#pragma once
#include <string>

#include "sysex/StringWorkArea.h"

namespace tavlo {

// Writes running status out: "B0 07 40 08 50" becomes "B0 07 40 B0 08 50".
// Tokens inside F0 ... F7 are left alone.
std::string MakeMultipleNotesSingle(const std::string& text);

// Breaks a whole string in notation into the substrings the string editor
// works on: work.Strings (its Count is NumberOfStrings) from slot 0 upward.
// `text` becomes what MakeMultipleNotesSingle makes of it. Whatever cannot be
// classified becomes a "freebyte" substring; nothing is an error. A string of
// more than 50 messages keeps its bytes: the 50th substring holds the rest.
void ParseSysexString(std::string& text, StringWorkArea& work);

}  // namespace tavlo

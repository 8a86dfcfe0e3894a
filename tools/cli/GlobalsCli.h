#pragma once
#include <iosfwd>
#include <optional>
#include <string>

#include "CliCommand.h"
#include "PresetJson.h"
#include "globals/GlobalSettings.h"

// What the globals and midi commands share: global settings read from and
// written to files by their extension.
namespace tavlo::cli {

// A path ending ".tgl" (any case) is the text form; anything else a dump.
bool IsTglPath(const std::string& path);
// --model pc1600|pc1600x (default pc1600x); false, with the reason on `err`,
// for anything else.
bool ModelOption(const CliArgs& args, bool& pc1600, std::ostream& err);
// The settings of a .tgl text or of the first ALL GLOBALS of a dump (named
// "Loaded From Sysex"); nothing, with the reason on `err`, when refused. A
// .tgl's "[DEFAULT] Yes" gives Default; a dump's model notice goes to `err`.
std::optional<GlobalSettings> SettingsFromBytes(const std::string& bytes, bool tgl, bool pc1600, std::ostream& err);
// The .tgl text or the dump; nothing, with the reason, when a value is out of
// a byte's range.
std::optional<std::string> SettingsToBytes(const GlobalSettings& settings, bool tgl, bool pc1600, int deviceId,
                                           std::ostream& err);

}  // namespace tavlo::cli

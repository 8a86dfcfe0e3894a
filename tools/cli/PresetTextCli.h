#pragma once
#include <iosfwd>
#include <string>

#include "CliCommand.h"

namespace tavlo::cli {

struct PoolPresetSession;

// pool export NAME -o FILE.tpr: the stored preset as preset text.
int PoolExportText(PoolPresetSession& cli, const std::string& typedName, const std::string& file, std::ostream& out,
                   std::ostream& err);

// pool import FILE.tpr: the preset text into the pool, its questions
// answered from --on-clash and --missing-scenes.
int PoolImportText(const CliArgs& args, std::ostream& out, std::ostream& err);

}  // namespace tavlo::cli

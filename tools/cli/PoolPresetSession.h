#pragma once
#include <iosfwd>
#include <memory>
#include <string>

#include "CliCommand.h"
#include "CliPrompter.h"
#include "db/PoolDatabase.h"
#include "shell/Program.h"
#include "ui/SteadyClock.h"
#include "ui/StreamPrompter.h"

namespace tavlo::cli {

// A session for one preset command: the pool of --pool, the command-line
// prompter, and no windows.
struct PoolPresetSession {
    explicit PoolPresetSession(std::ostream& err);
    bool open(const CliArgs& args, std::ostream& err);
    // The ID of a preset by the name as typed, or -1.
    std::int64_t presetId(const std::string& typedName);
    // The same, saying on `err` when the pool has no such preset.
    std::int64_t presetId(const std::string& typedName, std::ostream& err);
    // Makes the preset the selected line of the pool list, as a click would.
    bool selectPreset(const std::string& typedName, std::ostream& err);
    // The name the pool holds for a preset, as the pool list shows it; empty
    // when there is no such preset.
    std::string storedName(std::int64_t id);
    // The highest preset ID, and the count of rows changed since the pool was
    // opened: what a flow that refused nothing has done.
    std::int64_t lastPresetId();
    std::int64_t changes();
    // The exit status: a refusal shown to the user is a failure.
    int finish(std::ostream& err, int okStatus);

    CliPrompter prompter;
    SilentStatusView status;
    SleepingPump pump;
    SteadyClock clock;
    std::unique_ptr<Program> session;
    PoolDatabase& pool;
};

}  // namespace tavlo::cli

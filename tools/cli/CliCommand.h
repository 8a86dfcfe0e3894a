#pragma once
#include <functional>
#include <iosfwd>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace tavlo::cli {

// Exit statuses of tavlo-cli.
inline constexpr int kExitOk = 0;
inline constexpr int kExitFailed = 1;     // the thing checked is not sound
inline constexpr int kExitBadInput = 2;   // a file, dump or text that is refused
inline constexpr int kExitTimedOut = 3;   // the device did not answer
inline constexpr int kExitCancelled = 4;  // Ctrl-C ended a wait
inline constexpr int kExitUsage = 64;

// A command line that can't be read as written: an option's value that is no
// number of the kind asked for, or out of its range. main() gives the one
// line and kExitUsage.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The words after the command: positional arguments, "--name value" options
// and flags. Only the options and flags the command knows are taken; "--"
// ends them, so that what follows (a preset named "--Initialized--") is
// positional.
class CliArgs {
public:
    CliArgs(std::vector<std::string> words, std::vector<std::string> valueOptions, std::vector<std::string> flags);
    const std::vector<std::string>& positional() const { return positional_; }
    std::optional<std::string> option(const std::string& name) const;
    bool flag(const std::string& name) const;
    // The value of a number option, `fallback` when the option isn't given.
    // Anything but plain decimal digits (no sign, blank, unit or exponent)
    // or a value outside low..high throws UsageError.
    long long wholeNumber(const std::string& name, long long low, long long high, long long fallback) const;
    // A number of seconds: decimal digits with an optional fraction ("0.5"),
    // at most `high`; otherwise as wholeNumber.
    double seconds(const std::string& name, double high, double fallback) const;
    // The pool to use: --pool PATH, else the user's own.
    std::string poolPath() const;
    // Text of an unknown option or a missing value, empty when all is well.
    const std::string& error() const { return error_; }

private:
    std::vector<std::string> positional_;
    std::map<std::string, std::string> options_;
    std::vector<std::string> flags_;
    std::string error_;
};

// The whole of a file named on the command line; nothing, with the words
// "tavlo-cli: cannot read PATH" on `err`, when it can't be read.
std::optional<std::string> ReadInputFile(const std::string& path, std::ostream& err);

struct CliCommand {
    std::string name;                       // "pool check", "contents"
    std::string usage;                      // one line for the help text
    std::vector<std::string> valueOptions;  // options that take a value ("--pool", "-o")
    std::vector<std::string> flags;         // options that take none ("--yes")
    std::function<int(const CliArgs&, std::ostream& out, std::ostream& err)> run;
};

// Each command group registers its commands from its own source file.
void RegisterCommand(CliCommand command);
const std::map<std::string, CliCommand>& Commands();

// --model: true for the PC1600 (version 1.1), false for the PC1600X; nothing
// (and the reason on `err`) for any other word.
std::optional<bool> PC1600ModelOption(const CliArgs& args, std::ostream& err);

// "usage: tavlo-cli USAGE" of the command, on `err`; returns kExitUsage.
int UsageOf(const std::string& commandName, std::ostream& err);

struct CommandRegistrar {
    explicit CommandRegistrar(CliCommand command) { RegisterCommand(std::move(command)); }
};

}  // namespace tavlo::cli

// tavlo-cli: Tavlo's work without windows, for scripts and for checking
// files, dumps and pools from outside.
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "CliCommand.h"
#include "db/PoolDatabase.h"

using namespace tavlo::cli;

namespace {

void printUsage(std::ostream& out) {
    out << "usage: tavlo-cli COMMAND [ARGUMENTS] [--pool PATH]\n\ncommands:\n";
    for (const auto& [name, command] : Commands()) out << "  " << command.usage << "\n";
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::string> words(argv + 1, argv + argc);
    if (words.empty() || words[0] == "--help" || words[0] == "-h" || words[0] == "help") {
        printUsage(words.empty() ? std::cerr : std::cout);
        return words.empty() ? kExitUsage : kExitOk;
    }
    // A command is one word ("contents") or two ("pool check").
    const CliCommand* command = nullptr;
    std::size_t used = 0;
    if (words.size() >= 2) {
        const auto it = Commands().find(words[0] + " " + words[1]);
        if (it != Commands().end()) command = &it->second, used = 2;
    }
    if (!command) {
        const auto it = Commands().find(words[0]);
        if (it != Commands().end()) command = &it->second, used = 1;
    }
    if (!command) {
        std::cerr << "tavlo-cli: unknown command: " << words[0] << (words.size() > 1 ? " " + words[1] : "") << "\n";
        printUsage(std::cerr);
        return kExitUsage;
    }
    const std::vector<std::string> rest(words.begin() + static_cast<long>(used), words.end());
    // Every command explains itself, whatever else is on the line (up to "--").
    const auto optionsEnd = std::find(rest.begin(), rest.end(), "--");
    if (std::find(rest.begin(), optionsEnd, "--help") != optionsEnd) {
        std::cout << "usage: tavlo-cli " << command->usage << "\n";
        return kExitOk;
    }
    const CliArgs args(rest, command->valueOptions, command->flags);
    if (!args.error().empty()) {
        std::cerr << "tavlo-cli: " << command->name << ": " << args.error() << " (see: tavlo-cli " << command->name
                  << " --help)\n";
        return kExitUsage;
    }
    // A pool named on the command line must be there: a mistyped path would
    // otherwise become a new, empty pool that takes what is stored.
    if (const auto pool = args.option("--pool"); pool && command->name != "pool init" && !std::filesystem::exists(*pool)) {
        std::cerr << "tavlo-cli: there is no pool at " << *pool << " (tavlo-cli pool init --pool " << *pool
                  << " makes one)\n";
        return kExitBadInput;
    }
    try {
        return command->run(args, std::cout, std::cerr);
    } catch (const UsageError& e) {
        std::cerr << "tavlo-cli: " << command->name << ": " << e.what() << "\n";
        return kExitUsage;
    } catch (const tavlo::PoolBusy&) {
        const tavlo::PoolMessage message = tavlo::PoolBusyMessage(args.poolPath());
        std::cerr << message.title << ": " << message.text << "\n";
        return kExitBadInput;
    } catch (const tavlo::DatabaseError& e) {
        const tavlo::PoolMessage message = tavlo::DatabaseErrorMessage(e, args.poolPath());
        std::cerr << message.title << ": " << message.text << " (" << e.what() << ")\n";
        return kExitFailed;
    } catch (const std::exception& e) {
        std::cerr << "tavlo-cli: " << e.what() << "\n";
        return kExitFailed;
    }
}

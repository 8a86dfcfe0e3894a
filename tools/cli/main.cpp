// tavlo-cli: Tavlo's work without windows, for scripts and for checking
// files, dumps and pools from outside.
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
    CliArgs args(std::vector<std::string>(words.begin() + static_cast<long>(used), words.end()), command->valueOptions);
    if (!args.error().empty()) {
        std::cerr << "tavlo-cli: " << args.error() << "\nusage: tavlo-cli " << command->usage << "\n";
        return kExitUsage;
    }
    try {
        return command->run(args, std::cout, std::cerr);
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

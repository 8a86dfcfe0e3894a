// tavlo-cli pool init / pool check
#include <filesystem>
#include <iostream>

#include "CliCommand.h"
#include "db/PoolDatabase.h"

namespace tavlo::cli {
namespace {

int poolInit(const CliArgs& args, std::ostream& out, std::ostream& err) {
    const std::string path = args.poolPath();
    const bool existed = std::filesystem::exists(path);
    PoolDatabase pool;
    const PoolOpenResult result = pool.open(path);
    if (!result.ok()) {
        const PoolMessage message = PoolOpenMessage(result, path);
        err << message.title << ": " << message.text << "\n";
        return kExitBadInput;
    }
    out << (existed && !result.created ? "pool already exists: " : "created pool: ") << path << "\n";
    return kExitOk;
}

int poolCheck(const CliArgs& args, std::ostream& out, std::ostream&) {
    const std::string path = args.poolPath();
    const PoolCheckReport report = CheckPool(path);
    out << "pool: " << path << "\n";
    for (const std::string& line : report.lines) out << "  " << line << "\n";
    if (report.inUse) return kExitBadInput;
    out << (report.sound ? "sound" : "NOT SOUND") << "\n";
    return report.sound ? kExitOk : kExitFailed;
}

const CommandRegistrar init{{"pool init", "pool init [--pool PATH]   create a new pool with its seed rows", {"--pool"}, {}, poolInit}};
const CommandRegistrar check{{"pool check", "pool check [--pool PATH]  check a pool: integrity, schema, seed rows", {"--pool"}, {}, poolCheck}};

}  // namespace
}  // namespace tavlo::cli

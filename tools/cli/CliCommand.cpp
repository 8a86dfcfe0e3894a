#include "CliCommand.h"

#include <algorithm>
#include <ostream>

#include "db/PoolDatabase.h"
#include "sysex/SysexFileContents.h"

namespace tavlo::cli {

CliArgs::CliArgs(std::vector<std::string> words, std::vector<std::string> valueOptions) {
    valueOptions.push_back("--pool");
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (word.size() > 2 && word.rfind("--", 0) == 0) {
            std::string name = word;
            std::optional<std::string> value;
            if (const auto eq = word.find('='); eq != std::string::npos) {
                name = word.substr(0, eq);
                value = word.substr(eq + 1);
            }
            if (std::find(valueOptions.begin(), valueOptions.end(), name) != valueOptions.end()) {
                if (!value) {
                    if (i + 1 >= words.size()) {
                        error_ = "option " + name + " needs a value";
                        return;
                    }
                    value = words[++i];
                }
                options_[name] = *value;
            } else {
                flags_.push_back(name);
            }
        } else if (word == "-o") {
            if (i + 1 >= words.size()) {
                error_ = "option -o needs a file name";
                return;
            }
            options_["-o"] = words[++i];
        } else {
            positional_.push_back(word);
        }
    }
}

std::optional<std::string> CliArgs::option(const std::string& name) const {
    const auto it = options_.find(name);
    if (it == options_.end()) return std::nullopt;
    return it->second;
}

bool CliArgs::flag(const std::string& name) const {
    return std::find(flags_.begin(), flags_.end(), name) != flags_.end();
}

std::string CliArgs::poolPath() const { return option("--pool").value_or(PoolDatabase::DefaultPath()); }

namespace {
std::map<std::string, CliCommand>& registry() {
    static std::map<std::string, CliCommand> commands;
    return commands;
}
}  // namespace

void RegisterCommand(CliCommand command) {
    const std::string name = command.name;
    registry()[name] = std::move(command);
}

const std::map<std::string, CliCommand>& Commands() { return registry(); }

std::optional<std::string> ReadInputFile(const std::string& path, std::ostream& err) {
    auto bytes = ReadWholeFile(path);
    if (!bytes) err << "tavlo-cli: cannot read " << path << "\n";
    return bytes;
}

}  // namespace tavlo::cli

#include "CliCommand.h"

#include "base/MSBModule.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <ostream>

#include "db/PoolDatabase.h"
#include "base/FileBytes.h"
#include "sysex/SysexFileContents.h"

namespace tavlo::cli {

namespace {
bool listed(const std::vector<std::string>& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

// A number as written for display in a message: 86400, 0.5.
std::string numberText(double value) {
    std::string text = std::to_string(value);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text;
}
}  // namespace

CliArgs::CliArgs(std::vector<std::string> words, std::vector<std::string> valueOptions,
                 std::vector<std::string> flags) {
    bool optionsEnded = false;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (optionsEnded) {
            positional_.push_back(word);
            continue;
        }
        if (word == "--") {
            optionsEnded = true;
            continue;
        }
        const bool longOption = word.size() > 2 && word.rfind("--", 0) == 0;
        // Other words with one dash stay positional: a name may begin with one.
        if (!longOption && word != "-o") {
            positional_.push_back(word);
            continue;
        }
        std::string name = word;
        std::optional<std::string> value;
        if (const auto eq = word.find('='); longOption && eq != std::string::npos) {
            name = word.substr(0, eq);
            value = word.substr(eq + 1);
        }
        if (listed(valueOptions, name)) {
            if (!value) {
                if (i + 1 >= words.size()) {
                    error_ = "option " + name + " needs a value";
                    return;
                }
                value = words[++i];
            }
            options_[name] = *value;
        } else if (listed(flags, name)) {
            if (value) {
                error_ = "option " + name + " takes no value";
                return;
            }
            flags_.push_back(name);
        } else {
            error_ = "unknown option " + name;
            return;
        }
    }
}

std::optional<std::string> CliArgs::option(const std::string& name) const {
    const auto it = options_.find(name);
    if (it == options_.end()) return std::nullopt;
    return it->second;
}

bool CliArgs::flag(const std::string& name) const { return listed(flags_, name); }

long long CliArgs::wholeNumber(const std::string& name, long long low, long long high, long long fallback) const {
    const std::optional<std::string> text = option(name);
    if (!text) return fallback;
    long long value = 0;
    const char* end = text->data() + text->size();
    const auto [stop, status] = std::from_chars(text->data(), end, value);
    // from_chars would take a leading minus; only digits are a whole number here.
    if (text->empty() || !std::isdigit(static_cast<unsigned char>(text->front())) || stop != end ||
        status != std::errc() || value < low || value > high)
        throw UsageError(name + " takes a whole number from " + std::to_string(low) + " to " + std::to_string(high) +
                         ", not \"" + *text + "\"");
    return value;
}

double CliArgs::seconds(const std::string& name, double high, double fallback) const {
    const std::optional<std::string> text = option(name);
    if (!text) return fallback;
    bool digits = false, point = false, plain = true;
    for (const char c : *text) {
        if (std::isdigit(static_cast<unsigned char>(c))) digits = true;
        else if (c == '.' && !point) point = true;
        else plain = false;
    }
    double value = 0;
    const char* end = text->data() + text->size();
    if (plain && digits) {
        const auto [stop, status] = std::from_chars(text->data(), end, value, std::chars_format::fixed);
        if (stop == end && status == std::errc() && value <= high) return value;
    }
    throw UsageError(name + " takes a number of seconds from 0 to " + numberText(high) + ", not \"" + *text + "\"");
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

int UsageOf(const std::string& commandName, std::ostream& err) {
    err << "usage: tavlo-cli " << Commands().at(commandName).usage << "\n";
    return kExitUsage;
}

std::optional<std::string> ReadInputFile(const std::string& path, std::ostream& err) {
    auto bytes = ReadWholeFile(path);
    if (!bytes) err << "tavlo-cli: cannot read " << path << "\n";
    return bytes;
}


std::optional<bool> PC1600ModelOption(const CliArgs& args, std::ostream& err) {
    const std::string model = MSBModule::ToLower(args.option("--model").value_or("pc1600x"));
    if (model == "pc1600x") return false;
    if (model == "pc1600") return true;
    err << "tavlo-cli: --model is pc1600 or pc1600x, not " << model << "\n";
    return std::nullopt;
}

}  // namespace tavlo::cli

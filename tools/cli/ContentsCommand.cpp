// tavlo-cli contents: the "Sysex File Contents" listing of a file.
#include <iostream>

#include "CliCommand.h"
#include "base/Windows1252.h"
#include "sysex/SysexFileContents.h"

namespace tavlo::cli {
namespace {

int contents(const CliArgs& args, std::ostream& out, std::ostream& err) {
    if (args.positional().size() != 1) {
        err << "usage: tavlo-cli contents FILE.syx\n";
        return kExitUsage;
    }
    const std::string& path = args.positional()[0];
    const auto bytes = ReadInputFile(path, err);
    if (!bytes) return kExitBadInput;
    // The message box's text, with the terminal's line ends.
    std::string text = SysexFileContents(Utf8ToWindows1252(path), *bytes);
    for (std::size_t at; (at = text.find('\r')) != std::string::npos;) text.erase(at, 1);
    out << Windows1252ToUtf8(text);
    return kExitOk;
}

const CommandRegistrar registrar{
    {"contents", "contents FILE.syx   list the messages of a sysex file", {}, {}, contents}};

}  // namespace
}  // namespace tavlo::cli

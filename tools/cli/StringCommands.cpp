// tavlo-cli string check / string parse: the message string notation from outside.
#include <iostream>

#include "CliCommand.h"
#include "PresetJson.h"
#include "base/MSBModule.h"
#include "sysex/ParseSysexString.h"
#include "sysex/StringNotation.h"
#include "base/Windows1252.h"

namespace tavlo::cli {
namespace {

// The text may come as one quoted word or as several.
std::string joinedText(const CliArgs& args) {
    std::string text;
    for (const std::string& word : args.positional()) text += (text.empty() ? "" : " ") + word;
    return Utf8ToWindows1252(text);
}

int stringCheck(const CliArgs& args, std::ostream& out, std::ostream& err) {
    const std::string context = MSBModule::ToLower(args.option("--context").value_or(""));
    const std::string model = MSBModule::ToLower(args.option("--model").value_or("pc1600x"));
    StringContext kind;
    if (context == "fader") kind = StringContext::Fader;
    else if (context == "button") kind = StringContext::Button;
    else if (context == "setup") kind = StringContext::Setup;
    else {
        err << "usage: tavlo-cli string check --context fader|button|setup [--model pc1600|pc1600x] TEXT\n";
        return kExitUsage;
    }
    if (model != "pc1600" && model != "pc1600x") {
        err << "tavlo-cli: --model is pc1600 or pc1600x, not " << model << "\n";
        return kExitUsage;
    }
    const EnteredStringCheck check = CheckEnteredString(joinedText(args), kind, model == "pc1600");
    if (!check.ok) {
        std::string text = StringErrorText();
        for (std::size_t at; (at = text.find('\r')) != std::string::npos;) text.erase(at, 1);
        err << kStringErrorTitle << ": " << text << "\n";
        return kExitBadInput;
    }
    // Bytes as a list line counts them: one more than its blanks and dashes.
    int bytes = 0;
    if (!check.rendered.empty()) {
        bytes = 1;
        for (char c : check.rendered) bytes += (c == ' ' || c == '-');
    }
    out << "entered: " << Windows1252ToUtf8(check.entered) << "\n";
    out << "rendered: " << Windows1252ToUtf8(check.rendered) << "\n";
    out << "bytes: " << bytes << "\n";
    return kExitOk;
}

int stringParse(const CliArgs& args, std::ostream& out, std::ostream&) {
    std::string text = joinedText(args);
    StringWorkArea work;
    ParseSysexString(text, work);
    if (args.flag("--json")) {
        out << StringSetToJson(work.Strings).dump(2) << "\n";
        return kExitOk;
    }
    for (int i = 0; i < work.Strings.Count; ++i)
        out << Windows1252ToUtf8(work.Strings.Slots[static_cast<std::size_t>(i)].ListItem) << "\n";
    return kExitOk;
}

const CommandRegistrar check{
    {"string check",
     "string check --context fader|button|setup [--model pc1600|pc1600x] TEXT   check typed bytes of a MIDI string",
     {"--context", "--model"},
     {},
     stringCheck}};
const CommandRegistrar parse{
    {"string parse", "string parse TEXT [--json]   split a MIDI string into its messages", {}, {"--json"}, stringParse}};

}  // namespace
}  // namespace tavlo::cli

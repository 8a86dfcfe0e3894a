#include "globals/GlobalsText.h"

#include <cstdio>
#include <vector>

#include "base/MSBModule.h"
#include "ui/Prompter.h"

namespace tavlo {

const char* const kCannotImportText =
    "There is a problem with the Format of the Tavlo Globals File being imported.";

namespace {

constexpr const char* kEnd = "\r\n";
constexpr const char* kFilterIndent = "     ";

std::string MapLine(int program, int value) {
    char number[8];
    std::snprintf(number, sizeof number, "%03d", program);
    return std::string(number) + "     " + (value < 50 ? " -> P" + TwoDigits(value) : " -> S" + TwoDigits(value - 50));
}

// The text line by line, each with where the next one starts.
class LineReader {
public:
    explicit LineReader(std::string_view text) : text_(text) {}
    std::optional<std::string_view> next() {
        if (at_ >= text_.size()) return std::nullopt;
        std::size_t end = text_.find('\n', at_);
        std::string_view line = text_.substr(at_, end == std::string_view::npos ? std::string_view::npos : end - at_);
        at_ = end == std::string_view::npos ? text_.size() : end + 1;
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        return line;
    }
    std::size_t position() const { return at_; }

private:
    std::string_view text_;
    std::size_t at_ = 0;
};

std::optional<int> Number(std::string_view text) {
    if (text.empty() || text.size() > 5) return std::nullopt;
    int value = 0;
    for (char c : text) {
        if (c < '0' || c > '9') return std::nullopt;
        value = value * 10 + (c - '0');
    }
    return value;
}

struct Refused {
    std::string line;
};

// A keyword's value: the text after "[KEYWORD]" and its blank.
std::string_view ValueOf(std::string_view line, std::string_view keyword) {
    if (line.substr(0, keyword.size()) != keyword) throw Refused{std::string(line)};
    std::string_view value = line.substr(keyword.size());
    if (!value.empty() && value.front() != ' ') throw Refused{std::string(line)};
    if (!value.empty()) value.remove_prefix(1);
    return value;
}

// Every number must fit the byte the dump gives it.
int NumberIn(std::string_view value, int low, int high) {
    const auto number = Number(MSBModule::Trim(value));
    if (!number || *number < low || *number > high) throw Refused{std::string(value)};
    return *number;
}

}  // namespace

std::string StoreTavloFormatGlobals(const GlobalSettings& s) {
    std::string out;
    const auto line = [&](const std::string& text) { out += text + kEnd; };
    line("[GLOBAL DATA] " + MSBModule::Trim(s.Name));
    line("[CHIN] " + std::to_string(s.ChIn));
    line("[CHOUT] " + std::to_string(s.ChOut));
    line("[RECCH] " + RecChannelText(s.RecChannel));
    line("[VIEWANG] " + std::to_string(s.ViewAngle));
    line("[SYXDELAY] " + std::to_string(s.PerMessage));
    line("[BYTEDELAY] " + PerByteText(s.PerByte));
    line(s.Default ? "[DEFAULT] Yes" : "[DEFAULT] No");
    line("[DEVNUM] " + std::to_string(s.DevNum));
    line("[REMBUTTON] " + ComboText(RemoteButtonLines(), s.RemoteButton));
    line("[REMCH] " + std::to_string(s.RemoteChannel));
    line("[STARTNOTE] " + std::to_string(s.StartingNote));
    line("[FOOTSW1] " + ComboText(FootSwitchLines(), s.FootSwitch1));
    line("[FOOTSW2] " + ComboText(FootSwitchLines(), s.FootSwitch2));
    line("[START FILTERS]");
    for (int k = 0; k < kFilterCount; ++k)
        if (s.Filters[static_cast<std::size_t>(k)]) line(std::string(kFilterIndent) + kFilterCaptions[static_cast<std::size_t>(k)]);
    line("[END FILTERS]");
    line("[CURMAP] " + ComboText(CurrentMapLines(), s.CurrentMap));
    for (int map = 1; map <= 3; ++map) {
        line("[BEGIN MAP " + std::to_string(map) + "]");
        for (int program = 0; program < kMapEntries; ++program)
            line(MapLine(program, s.MidiMaps[static_cast<std::size_t>(map - 1)][static_cast<std::size_t>(program)]));
        line("[END MAP " + std::to_string(map) + "]");
    }
    line("[END GLOBAL DATA]");
    return out;
}

GlobalsTextResult LoadTavloFormatGlobals(std::string_view text, const GlobalSettings& current) {
    GlobalsTextResult result;
    LineReader reader(text);
    const auto next = [&]() -> std::string_view {
        const auto line = reader.next();
        if (!line) throw Refused{"(end of file)"};
        return *line;
    };
    const auto combo = [&](std::string_view keyword, const std::vector<std::string>& lines, int kept) {
        // A text that names no line leaves the combo as it was.
        const std::string_view line = next();
        const auto value = ComboValue(lines, MSBModule::Trim(ValueOf(line, keyword)));
        if (value && *value > 127) throw Refused{std::string(line)};
        return value.value_or(kept);
    };
    try {
        GlobalSettings s = current;
        s.Name = MSBModule::Trim(ValueOf(next(), "[GLOBAL DATA]"));
        if (s.Name.empty()) s.Name = "Imported Globals";
        s.ChIn = NumberIn(ValueOf(next(), "[CHIN]"), 1, 128);
        s.ChOut = NumberIn(ValueOf(next(), "[CHOUT]"), 1, 128);
        const std::string rec = MSBModule::Trim(ValueOf(next(), "[RECCH]"));
        s.RecChannel = MSBModule::ToUpper(rec) == "OFF" ? 0 : NumberIn(rec, 0, 127);
        s.ViewAngle = NumberIn(ValueOf(next(), "[VIEWANG]"), 0, 127);
        s.PerMessage = NumberIn(ValueOf(next(), "[SYXDELAY]"), 0, 127);
        s.PerByte = NumberIn(ValueOf(next(), "[BYTEDELAY]"), 0, 1279) / 10;
        result.defaultYes = MSBModule::ToUpper(MSBModule::Trim(ValueOf(next(), "[DEFAULT]"))) == "YES";
        s.Default = false;
        s.DevNum = NumberIn(ValueOf(next(), "[DEVNUM]"), 0, 127);
        s.RemoteButton = combo("[REMBUTTON]", RemoteButtonLines(), s.RemoteButton);
        // 0 is what an original PC1600's dump leaves.
        s.RemoteChannel = NumberIn(ValueOf(next(), "[REMCH]"), 0, 128);
        s.StartingNote = NumberIn(ValueOf(next(), "[STARTNOTE]"), 0, 127);
        s.FootSwitch1 = combo("[FOOTSW1]", FootSwitchLines(), s.FootSwitch1);
        s.FootSwitch2 = combo("[FOOTSW2]", FootSwitchLines(), s.FootSwitch2);
        if (next() != "[START FILTERS]") throw Refused{"[START FILTERS]"};
        s.Filters.fill(false);
        for (std::string_view line = next(); line != "[END FILTERS]"; line = next()) {
            const std::string caption = MSBModule::Trim(line);
            bool known = false;
            for (int k = 0; k < kFilterCount; ++k)
                if (caption == kFilterCaptions[static_cast<std::size_t>(k)])
                    s.Filters[static_cast<std::size_t>(k)] = known = true;
            if (!known) throw Refused{std::string(line)};
        }
        s.CurrentMap = combo("[CURMAP]", CurrentMapLines(), s.CurrentMap);
        for (int map = 1; map <= 3; ++map) {
            if (next() != "[BEGIN MAP " + std::to_string(map) + "]") throw Refused{"[BEGIN MAP]"};
            auto& entries = s.MidiMaps[static_cast<std::size_t>(map - 1)];
            for (int k = 0; k < kMapEntries; ++k) {
                const std::string_view line = next();
                const auto program = Number(line.substr(0, 3));
                const std::size_t arrow = line.find(" -> ", 3);
                if (!program || *program >= kMapEntries || arrow == std::string_view::npos ||
                    !MSBModule::Trim(line.substr(3, arrow - 3)).empty() || arrow + 5 > line.size())
                    throw Refused{std::string(line)};
                const char kind = line[arrow + 4];
                const auto number = Number(MSBModule::Trim(line.substr(arrow + 5)));
                if (!number || (kind == 'P' && *number >= 50) || (kind == 'S' && *number > 77) ||
                    (kind != 'P' && kind != 'S'))
                    throw Refused{std::string(line)};
                entries[static_cast<std::size_t>(*program)] = kind == 'P' ? *number : *number + 50;
            }
            if (next() != "[END MAP " + std::to_string(map) + "]") throw Refused{"[END MAP]"};
        }
        if (next() != "[END GLOBAL DATA]") throw Refused{"[END GLOBAL DATA]"};
        result.settings = s;
        result.consumed = reader.position();
    } catch (const Refused& refused) {
        result.problem = refused.line;
        result.settings.reset();
        result.defaultYes = false;
    }
    return result;
}

bool AskImportAsDefault(Prompter& prompter) {
    return prompter.message("Importimg Globals as Defaults",
                            "The Globals being Imported are set to be the Defaults.  Would you like them to become "
                            "the New Defaults (YES) or keep your current Defaults as-is (NO)?",
                            MessageButtons::YesNo) == MessageAnswer::Yes;
}

}  // namespace tavlo

#include "sysex/SysexFileContents.h"

#include <fstream>
#include <iterator>

#include "base/FileBytes.h"
#include "base/MSBModule.h"
#include "ui/Prompter.h"

namespace tavlo {
namespace {

constexpr const char* kLineEnd = "\r\n";

std::string entryLine(std::string_view entry, std::size_t offset) {
    static constexpr unsigned char kFamily[] = {0xF0, 0x00, 0x00, 0x1B, 0x0B};
    int type = -1;
    if (entry.size() >= 7) {
        bool family = true;
        for (std::size_t i = 0; i < sizeof kFamily; ++i)
            if (static_cast<unsigned char>(entry[i]) != kFamily[i]) family = false;
        const auto command = static_cast<unsigned char>(entry[6]);
        if (family && command < 5) type = command;
    }
    const std::string at = "(offset " + std::to_string(offset) + ")";
    switch (type) {
        case 0: return "PC1600(x) RECALL PRESET Request " + at;
        case 1: return "PC1600(x) ALL PRESETS Data " + at;
        case 2: return "PC1600(x) ALL SCENES Data " + at;
        case 3: return "PC1600(x) ALL GLOBALS Data " + at;
        case 4: return "PC1600(x) CURRENT EDIT BUFFER Data " + at;
        default: return MSBModule::BytesToHexText(entry.substr(0, 7)) + ", " + at;
    }
}

}  // namespace

std::string SysexFileContents(std::string_view fileName, std::string_view bytes) {
    std::string text = "The Sysex messages found in the file:";
    text += kLineEnd;
    text += kLineEnd;
    text += "   " + std::string(fileName) + kLineEnd + kLineEnd;
    text += " Are....";
    text += kLineEnd;
    text += kLineEnd;
    int entries = 0;
    for (std::size_t i = 0; i < bytes.size() && entries < kSysexFileEntryLimit; ++i) {
        if (static_cast<unsigned char>(bytes[i]) != 0xF0) continue;
        ++entries;
        text += "       " + entryLine(bytes.substr(i, 7), i + 1) + kLineEnd;
    }
    return text;
}

void SysexFileMenu(Prompter& prompter) {
    const auto path = prompter.openFile({kListSysexFileTitle, kSysexFileFilter, ".syx", {}});
    if (!path || path->empty()) return;
    const auto bytes = ReadWholeFile(*path);
    if (!bytes) {
        prompter.message(kSysexFileContentsTitle, "The file " + *path + " could not be read.");
        return;
    }
    prompter.message(kSysexFileContentsTitle, SysexFileContents(*path, *bytes));
}

}  // namespace tavlo

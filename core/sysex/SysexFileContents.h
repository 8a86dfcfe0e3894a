#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace tavlo {

class Prompter;

inline constexpr const char* kSysexFileContentsTitle = "Sysex File Contents";
inline constexpr const char* kListSysexFileTitle = "List Contents of a Sysex File";
inline constexpr const char* kSysexFileFilter = "Sysex Files (*.syx)|*.syx";
inline constexpr int kSysexFileEntryLimit = 200;

// The listing of the messages in a sysex file, as its message box shows it:
// one line for each F0, up to 200, naming the device's dumps and showing the
// first seven bytes of any other message. Lines end in CR LF.
std::string SysexFileContents(std::string_view fileName, std::string_view bytes);


// "Sysex File Contents" of the File menu: asks for a file and shows its listing.
void SysexFileMenu(Prompter& prompter);

}  // namespace tavlo

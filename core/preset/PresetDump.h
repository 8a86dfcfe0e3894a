#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "preset/WorkingPreset.h"

namespace tavlo {

class ListState;

// The single preset dump: F0 00 00 1B 0B, device identifier, 04, the name,
// the size and the body in nibbles, F7.
inline constexpr unsigned char kPresetDumpCommand = 0x04;
inline constexpr std::size_t kPresetDumpHeaderSize = 7;
// Header, 32 name bytes, 4 size bytes and the closing F7.
inline constexpr std::size_t kPresetDumpFrameSize = 44;
inline constexpr int kNoSceneIndex = 100;

// The test a sysex file passes before it is decoded as one preset: the maker
// and family header, the preset dump command and the closing F7. The device
// identifier isn't looked at.
bool IsPresetDump(std::string_view bytes);
inline constexpr const char* kCannotImportPresetTitle = "Cannot Import Preset Sysex";
inline constexpr const char* kCannotImportPresetText =
    "The Sysex file you selected appears not to be PC1600(x) Preset dump data.";

// The scene's name in a memory image scene line "07:  Name  [p:03]": from
// the fourth character up to "[p:", trimmed.
std::string SceneNameOfLine(std::string_view line);
// Position of a scene in the memory image's SceneList, 0 to 99: the first
// line with that name and owner; 100 when none matches.
int SceneIndexOf(const ListState& sceneList, std::string_view scene, std::int64_t scenePreset);

// The bytes a control's string sends: every substring's entered text walked
// three characters at a time, special tokens as FF, FE, FD and FC.
std::string DeviceStringBytes(const MessageStringSet& strings);

// A number as the dump writes it into one byte: its hexadecimal digits taken
// as they come, so that above 255 only the first two count and -1 gives FF.
unsigned char WireByte(int value);

}  // namespace tavlo

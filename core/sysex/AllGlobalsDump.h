#pragma once
#include <string>
#include <string_view>

namespace tavlo {

// ALL GLOBALS: header (command 03), three program change maps of 128 bytes,
// then the settings bytes, F7. 420 bytes from a PC1600X; 418 in the form
// Tavlo writes for the original PC1600, which lacks the two delay bytes. The
// original device itself puts an F7 in the record channel's place: its dump
// ends there (414 bytes) or runs on to the F7 at 418.
inline constexpr std::size_t kAllGlobalsLengthX = 420;
inline constexpr std::size_t kAllGlobalsLength1600 = 418;
inline constexpr std::size_t kAllGlobalsLengthDevice1600 = 414;

// Offsets (from 0) of the fields after the maps.
namespace GlobalsOffset {
inline constexpr std::size_t Map1 = 7;
inline constexpr std::size_t Map2 = 135;
inline constexpr std::size_t Map3 = 263;
inline constexpr std::size_t ViewAngle = 391;
inline constexpr std::size_t ChannelIn = 392;
inline constexpr std::size_t ChannelOut = 393;
inline constexpr std::size_t Filters = 394;  // 15 bytes
inline constexpr std::size_t DeviceNumber = 409;
inline constexpr std::size_t RemoteFunction = 410;
inline constexpr std::size_t RemoteChannel = 411;
inline constexpr std::size_t StartingNote = 412;
inline constexpr std::size_t RecordChannel = 413;
inline constexpr std::size_t CurrentMap = 414;
inline constexpr std::size_t FootSwitch1 = 415;
inline constexpr std::size_t FootSwitch2 = 416;
inline constexpr std::size_t MessageDelay = 417;
inline constexpr std::size_t ByteDelay = 418;
}  // namespace GlobalsOffset

// The settings of a cleared device, and Tavlo's new settings: the default
// maps (programs 0-49 to presets in maps 1 and 2, map 3 to scenes), channels
// 1, nothing filtered, remote off on channel 1 from note 60, everything else
// 0. The original PC1600 sends them as that device does, 414 bytes.
std::string DefaultAllGlobalsDump(int deviceId, bool pc1600Model);

// True when byte 414 (offset 413) is F7: the dump comes from an original
// PC1600 device.
bool IsDevice1600GlobalsDump(std::string_view dump);

// A dump of the device family with command 03 in one of the accepted forms:
// 420 or 418 bytes ending in F7, or 414 bytes from an original PC1600.
bool IsAllGlobalsDump(std::string_view dump);

// The bytes from the first map byte up to the delay per byte (offsets 7 to
// 418) of an accepted dump, positions past the message's end and the F7 of
// an original device read as 0.
std::string AllGlobalsBody(std::string_view dump);
inline constexpr std::size_t kAllGlobalsBodyLength = kAllGlobalsLengthX - 8;

}  // namespace tavlo

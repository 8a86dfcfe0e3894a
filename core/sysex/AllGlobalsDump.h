#pragma once
#include <string>
#include <string_view>

namespace tavlo {

// ALL GLOBALS: header (command 03), three program change maps of 128 bytes,
// then the settings bytes, F7. 420 bytes from a PC1600X, 418 from the
// original PC1600, which lacks the two delay bytes.
inline constexpr std::size_t kAllGlobalsLengthX = 420;
inline constexpr std::size_t kAllGlobalsLength1600 = 418;

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

// The settings of a device fresh from the factory as far as Tavlo knows
// them: the default maps (programs 0-49 to presets in maps 1 and 2, map 3 to
// scenes), channels 1, nothing filtered, everything else 0.
std::string DefaultAllGlobalsDump(int deviceId, bool pc1600Model);

// A dump of the device family with command 03, of either model's length,
// ending in F7.
bool IsAllGlobalsDump(std::string_view dump);

}  // namespace tavlo

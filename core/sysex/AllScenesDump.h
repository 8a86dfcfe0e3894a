#pragma once
#include <array>
#include <string>
#include <string_view>

namespace tavlo {

// ALL SCENES: header (command 02), 64h, 100 records of 44 bytes, F7; always
// 4409 bytes. A record: the preset slot as a nibble pair (0Fh 0Fh marks an
// empty record on the PC1600X), six zeros, 18 fader values as nibble pairs.
inline constexpr std::size_t kAllScenesLength = 4409;
inline constexpr std::size_t kSceneRecordLength = 44;
inline constexpr int kAllScenesRecords = 100;
inline constexpr std::size_t kAllScenesRecordsOffset = 8;

struct SceneRecord {
    bool empty = true;
    int presetSlot = 0;
    std::array<int, 18> values{};

    bool operator==(const SceneRecord&) const = default;
};

// An empty record: 0Fh 0Fh and 42 zeros, or 44 zeros on the PC1600 model.
std::string EmptySceneRecord(bool pc1600Model);
std::string EncodeSceneRecord(const SceneRecord& record, bool pc1600Model);
// `bytes` must be 44 long. On the PC1600 model an all-zero record counts as
// empty, as that model doesn't mark them.
SceneRecord DecodeSceneRecord(std::string_view bytes, bool pc1600Model);

std::string BuildAllScenesDump(int deviceId, const std::array<SceneRecord, kAllScenesRecords>& records,
                               bool pc1600Model);
// A dump of the device family with command 02, 4409 bytes, ending in F7.
bool IsAllScenesDump(std::string_view dump);

}  // namespace tavlo

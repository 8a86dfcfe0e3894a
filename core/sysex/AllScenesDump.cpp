#include "sysex/AllScenesDump.h"

#include "sysex/DeviceMessages.h"

namespace tavlo {
namespace {

void PutPair(std::string& out, int value) {
    out += static_cast<char>((value >> 4) & 15);
    out += static_cast<char>(value & 15);
}

int GetPair(std::string_view bytes, std::size_t at) {
    return ((static_cast<unsigned char>(bytes[at]) & 15) << 4) | (static_cast<unsigned char>(bytes[at + 1]) & 15);
}

}  // namespace

std::string EmptySceneRecord(bool pc1600Model) {
    std::string record(kSceneRecordLength, '\0');
    if (!pc1600Model) record[0] = record[1] = '\x0F';
    return record;
}

std::string EncodeSceneRecord(const SceneRecord& record, bool pc1600Model) {
    if (record.empty) return EmptySceneRecord(pc1600Model);
    std::string out;
    PutPair(out, record.presetSlot);
    out.append(6, '\0');
    for (int value : record.values) PutPair(out, value);
    return out;
}

SceneRecord DecodeSceneRecord(std::string_view bytes, bool pc1600Model) {
    SceneRecord record;
    if (bytes.size() < kSceneRecordLength) return record;
    record.presetSlot = GetPair(bytes, 0);
    bool allZero = record.presetSlot == 0;
    for (std::size_t i = 0; i < record.values.size(); ++i) {
        record.values[i] = GetPair(bytes, 8 + 2 * i);
        allZero = allZero && record.values[i] == 0;
    }
    record.empty = record.presetSlot == 255 || (pc1600Model && allZero);
    if (record.empty) record = SceneRecord{};
    return record;
}

std::string BuildAllScenesDump(int deviceId, const std::array<SceneRecord, kAllScenesRecords>& records,
                               bool pc1600Model) {
    std::string dump = DeviceDumpHeader(deviceId, DeviceCommand::AllScenes);
    dump += '\x64';
    for (const auto& record : records) dump += EncodeSceneRecord(record, pc1600Model);
    dump += '\xF7';
    return dump;
}

bool IsAllScenesDump(std::string_view dump) {
    return DeviceMessageCommand(dump) == DeviceCommand::AllScenes && dump.size() == kAllScenesLength &&
           static_cast<unsigned char>(dump.back()) == 0xF7;
}

}  // namespace tavlo

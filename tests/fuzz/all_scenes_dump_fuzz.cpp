// IsAllScenesDump and DecodeSceneRecord on anything, for both models: every
// record of an accepted dump decodes, encodes and decodes again the same,
// and the records build an accepted dump.
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "sysex/AllScenesDump.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string dump(reinterpret_cast<const char*>(data), size);
    // A short record decodes as empty rather than being read past its end.
    for (bool pc1600Model : {false, true})
        if (!tavlo::DecodeSceneRecord(dump.substr(0, tavlo::kSceneRecordLength - 1), pc1600Model).empty)
            __builtin_trap();
    if (!tavlo::IsAllScenesDump(dump)) return 0;
    for (bool pc1600Model : {false, true}) {
        std::array<tavlo::SceneRecord, tavlo::kAllScenesRecords> records;
        for (std::size_t r = 0; r < records.size(); ++r) {
            const std::string bytes =
                dump.substr(tavlo::kAllScenesRecordsOffset + r * tavlo::kSceneRecordLength, tavlo::kSceneRecordLength);
            records[r] = tavlo::DecodeSceneRecord(bytes, pc1600Model);
            const std::string encoded = tavlo::EncodeSceneRecord(records[r], pc1600Model);
            if (encoded.size() != tavlo::kSceneRecordLength) __builtin_trap();
            if (!(tavlo::DecodeSceneRecord(encoded, pc1600Model) == records[r])) __builtin_trap();
        }
        if (!tavlo::IsAllScenesDump(tavlo::BuildAllScenesDump(dump[5], records, pc1600Model))) __builtin_trap();
    }
    return 0;
}

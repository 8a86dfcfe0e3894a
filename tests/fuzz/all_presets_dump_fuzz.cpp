// ParseAllPresetsDump, AllPresetsNames and PeekLines on anything: a dump is
// read whole or refused with a reason, and what was read builds a dump that
// reads back the same.
#include <cstddef>
#include <cstdint>
#include <string>

#include "sysex/AllPresetsDump.h"
#include "midilink/PeekList.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string dump(reinterpret_cast<const char*>(data), size);
    if (tavlo::AllPresetsNames(dump).size() != tavlo::kAllPresetsEntries) __builtin_trap();
    if (tavlo::PeekLines(dump).size() > tavlo::kAllPresetsEntries) __builtin_trap();
    std::string reason;
    const auto parsed = tavlo::ParseAllPresetsDump(dump, &reason);
    if (!parsed) {
        if (reason.empty()) __builtin_trap();
        return 0;
    }
    for (const auto& entry : parsed->entries)
        if (entry.name.size() != tavlo::kPresetNameNibbles || entry.body.size() != 2 * std::size_t(entry.size))
            __builtin_trap();
    const std::string again = tavlo::BuildAllPresetsDump(parsed->deviceId, parsed->selectedSlot, parsed->entries);
    const auto reread = tavlo::ParseAllPresetsDump(again);
    if (!reread || reread->entries != parsed->entries) __builtin_trap();
    return 0;
}

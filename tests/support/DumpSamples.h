#pragma once
#include <string>

#include "base/MSBModule.h"
#include "sysex/AllPresetsDump.h"
#include "sysex/DeviceMessages.h"
#include "ui/ListState.h"

namespace tavlo::testing {

// Bytes written as numbers, for dumps and records.
inline std::string Bytes(std::initializer_list<int> values) {
    std::string out;
    for (int v : values) out += static_cast<char>(v);
    return out;
}

// A memory image's SceneList with every slot free: "NN:  --Empty--   [p:--]", data -1.
inline ListState FreeSceneList() {
    ListState scenes;
    for (int s = 0; s < kSceneSlots; ++s) scenes.addItem(TwoDigits(s) + ":  --Empty--   [p:--]", -1);
    return scenes;
}

// A preset entry with a name and a body of `size` raw bytes whose nibbles
// follow from the seed, so that entries differ and a misplaced byte shows.
inline AllPresetsEntry SampleEntry(const std::string& name, int size, unsigned seed) {
    AllPresetsEntry entry;
    std::string padded = name;
    padded.resize(16, ' ');
    entry.name = MSBModule::TextToNibbles(padded);
    entry.size = size;
    for (int i = 0; i < 2 * size; ++i) {
        seed = seed * 1103515245u + 12345u;
        entry.body += static_cast<char>((seed >> 16) & 15);
    }
    return entry;
}

// 51 entries: 50 slots and the edit buffer, `size` raw bytes each.
inline AllPresetsEntries SampleEntries(int size) {
    AllPresetsEntries entries;
    for (int k = 0; k < kAllPresetsEntries; ++k)
        entries[static_cast<std::size_t>(k)] =
            SampleEntry("Preset " + std::to_string(k), size + k % 7, static_cast<unsigned>(k) + 1);
    return entries;
}

}  // namespace tavlo::testing

#include "pool/PresetMemorySize.h"

#include "base/MSBModule.h"
#include "db/Database.h"
#include "preset/WorkingPreset.h"

namespace tavlo {

int StringBytes(std::string_view text) { return static_cast<int>((text.size() + 1) / 3); }

int FaderMemoryCost(int function, std::string_view name, std::string_view midiString) {
    const int length = static_cast<int>(MSBModule::Trim(name).size());
    switch (function) {
        case 1: return 5 + length;
        case 2: return 3 + length;
        case 3: return 6 + length + StringBytes(midiString);
        default: return 0;
    }
}

int ButtonMemoryCost(int function, std::string_view name, std::string_view string1, std::string_view string2) {
    const int length = static_cast<int>(MSBModule::Trim(name).size());
    switch (function) {
        case 1:
        case 2:
        case 8: return length;
        case 3: return 2 + length;
        case 4: return 3 + length;
        case 5: return 1 + length + StringBytes(string1);
        case 6:
        case 7: return 2 + length + StringBytes(string1) + StringBytes(string2);
        case 9: return 1 + length;
        default: return 0;
    }
}

int PresetRowMemoryCost(int dataWheelLink, std::string_view map, long setupScenePreset, std::string_view setupScene,
                        std::string_view setupString) {
    int cost = dataWheelLink != 0 ? 1 : 0;
    bool setupBlock = false;
    for (std::size_t channel = 0; channel < 16; ++channel) {
        bool used = false;
        for (std::size_t k = 0; k < 4; ++k) {
            const std::size_t pos = 4 * channel + k;
            if (pos < map.size() && map[pos] != '\0') used = true;
        }
        if (used) {
            cost += 3;
            setupBlock = true;
        }
    }
    if (setupScenePreset != -1 && setupScene != kNoScene) {
        cost += 2;
        setupBlock = true;
    }
    const std::string trimmed = MSBModule::Trim(setupString);
    if (!trimmed.empty()) {
        cost += StringBytes(trimmed);
        setupBlock = true;
    }
    if (setupBlock) cost += 3;
    return cost;
}

PresetMemoryCost::PresetMemoryCost(Database& db)
    : faders_(std::make_unique<Statement>(
          db.prepare("SELECT Function, Name, MIDIString FROM FaderRec WHERE PresetREF = :ID"))),
      buttons_(std::make_unique<Statement>(
          db.prepare("SELECT Function, Name, String1, String2 FROM ButtonRec WHERE PresetREF = :ID"))),
      preset_(std::make_unique<Statement>(
          db.prepare("SELECT DataWheelLink, SetupChannelMap, SetupScenePreset, SetupScene, SetupString "
                     "FROM PresetRec WHERE ID = :ID"))) {}

PresetMemoryCost::~PresetMemoryCost() = default;

long PresetMemoryCost::operator()(std::int64_t id, bool withPresetRow) {
    long size = 0;
    Statement& faders = *faders_;
    faders.reset();
    faders.bind(":ID", id);
    while (faders.step())
        size += FaderMemoryCost(static_cast<int>(faders.getInt(0)), faders.getText(1), faders.getText(2));
    Statement& buttons = *buttons_;
    buttons.reset();
    buttons.bind(":ID", id);
    while (buttons.step())
        size += ButtonMemoryCost(static_cast<int>(buttons.getInt(0)), buttons.getText(1), buttons.getText(2),
                                 buttons.getText(3));
    if (withPresetRow) {
        Statement& preset = *preset_;
        preset.reset();
        preset.bind(":ID", id);
        if (preset.step())
            size += PresetRowMemoryCost(static_cast<int>(preset.getInt("DataWheelLink")),
                                        preset.getBlob("SetupChannelMap"), static_cast<long>(preset.getInt(2)),
                                        preset.getText(3), preset.getText(4));
    }
    return size;
}

int CalculatePresetMemorySize(Database& db, std::int64_t id, bool withPresetRow) {
    // The device counts in a 16-bit field.
    return static_cast<std::int16_t>(PresetMemoryCost(db)(id, withPresetRow));
}

}  // namespace tavlo

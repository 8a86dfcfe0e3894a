#pragma once
#include <array>
#include <cstdint>
#include <string>

#include "sysex/MessageString.h"

namespace tavlo {

inline constexpr int kFaderCount = 18;   // faders 1-16, CV1, CV2
inline constexpr int kButtonCount = 16;
inline constexpr int kSetupChannelCount = 16;
inline constexpr int kSceneLimit = 100;

inline constexpr const char* kInitializedName = "--Initialized--";
inline constexpr const char* kTempName = ">>>TEMP>>>";
inline constexpr const char* kEmptySceneName = "--Empty--";
inline constexpr const char* kNoScene = "<none>";

struct FaderDef {
    std::string Name;
    std::int16_t Value = 0;
    std::int16_t Function = 0;
    std::int16_t Min = 0;
    std::int16_t Max = 127;
    std::int16_t Channel = kChannelOut;
    std::int16_t CCNum = 0;
    std::int16_t Polarity = -1;
    std::int16_t ReplaceMode = 0;
    std::string MIDIString;
    std::int16_t ParamFormat = 0;
    std::string MasterOf = std::string(kFaderCount, ' ');
    std::string DeviceMapString;

    bool operator==(const FaderDef&) const = default;
};

struct ButtonDef {
    std::string Name;
    std::int16_t Function = 0;
    std::int16_t Channel = kChannelOut;
    std::int16_t ProgChange = 0;
    std::int16_t Velocity = 127;
    std::int16_t Note = 60;
    std::string String1;
    std::string String2;
    std::string Scene = kNoScene;
    std::int32_t ScenePreset = -1;
    std::string DeviceMapString;

    bool operator==(const ButtonDef&) const = default;
};

struct SetupChannelDef {
    std::int16_t Bank = 0;        // 0 off, else bank number + 1
    std::int16_t BankIsMSB = 0;   // non-zero: bank goes out as Bank MSB
    std::int16_t ProgChange = 0;  // 0 off, else program + 1
    std::int16_t Volume = 0;      // 0 off, else volume + 1

    bool operator==(const SetupChannelDef&) const = default;
};

struct SceneDef {
    std::array<std::int16_t, kFaderCount> Values{};
    std::string Name;

    bool operator==(const SceneDef&) const = default;
};

// The one preset being edited: what the editor window shows, with the string
// sets kept beside it.
struct WorkingPreset {
    std::string Name;    // PresetNameText, at most 16 characters
    std::string Notes;   // PresetNotesText
    std::int32_t ID = 0; // InvisiblePresetID: PresetRec.ID of the pool row
    std::array<FaderDef, kFaderCount> Faders{};
    std::array<ButtonDef, kButtonCount> Buttons{};
    std::int16_t DataWheelLink = 0;  // DataWheelCombo list index
    std::array<SetupChannelDef, kSetupChannelCount> SetupChannels{};
    std::string SetupString;         // SStringText, editor notation
    MessageStringSet SetupStrings;
    std::string SetupScene = kNoScene;
    std::int32_t SetupScenePreset = -1;
    std::array<SceneDef, kSceneLimit> Scenes{};
    std::int16_t SceneCount = 0;
    std::array<MessageStringSet, kFaderCount> FaderStrings{};
    std::array<MessageStringSet, kButtonCount> ButtonStrings1{};
    std::array<MessageStringSet, kButtonCount> ButtonStrings2{};

    bool operator==(const WorkingPreset&) const = default;
};

}  // namespace tavlo

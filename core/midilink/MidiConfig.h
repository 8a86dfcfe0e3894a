#pragma once
#include <string>

#include "ui/Observable.h"

namespace tavlo {

inline constexpr const char* kNoDevice = "__NONE__";
inline constexpr int kDefaultFreeMemory = 20904;

// The settings of the MIDI configuration window that every other part reads.
struct MidiConfig : Observable {
    // ModelOption(1): true for the original PC1600 (version 1.1), false for
    // the PC1600X (or an expanded PC1600 version 2.2).
    bool PC1600Model = false;
    // MIDIChannelCombo list index: the device identifier, MIDI channel less one.
    int DeviceId = 0;
    std::string MIDIInDevice = kNoDevice;
    std::string MIDIOutDevice = kNoDevice;
    std::string MIDILearnInDevice = kNoDevice;
    std::string MIDISimOutDevice = kNoDevice;
    int TimeoutIndex = 1;       // TimeoutCombo
    bool ManualMode = false;    // ManualCheck
    long FreeMemory = kDefaultFreeMemory;  // FreeMemoryConfig
    std::string Printer;
};

}  // namespace tavlo

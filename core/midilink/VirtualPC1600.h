#pragma once
#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "sysex/AllPresetsDump.h"
#include "sysex/AllScenesDump.h"
#include "midilink/MessageQueue.h"

namespace tavlo {

inline constexpr const char* kVirtualDeviceName = "Tavlo Virtual PC1600";

struct VirtualDeviceSettings {
    int deviceId = 0;           // answers only messages with this identifier
    bool pc1600Model = false;   // the original version 1.1 model
    int replyDelayMs = 0;       // time before a reply starts
    bool wirePacing = false;    // replies take as long as on a MIDI cable
};

// A PC1600(x) that lives in the program: it answers the requests for its
// memory, stores the dumps it is sent, selects presets into its edit buffer
// and writes the edit buffer to slots. It knows nothing of ports: messages
// go in, replies come out.
class VirtualPC1600 {
public:
    explicit VirtualPC1600(VirtualDeviceSettings settings = {});

    const VirtualDeviceSettings& settings() const { return settings_; }
    void setSettings(const VirtualDeviceSettings& settings) { settings_ = settings; }

    // Every slot and the edit buffer the "--Initialized--" preset, scenes
    // empty, global settings at their defaults.
    void clearMemory();

    // One whole message received; the replies, in order. Messages for other
    // identifiers, of other makers, or that are damaged are ignored.
    std::vector<std::string> receive(std::string_view message);

    std::string allPresetsDump() const;
    std::string allScenesDump() const;
    std::string allGlobalsDump() const;
    std::string editBufferDump() const;

    const AllPresetsEntry& slot(int index) const { return slots_.at(static_cast<std::size_t>(index)); }
    const AllPresetsEntry& editBuffer() const { return editBuffer_; }
    int selectedPreset() const { return selected_; }

    // The memory as a .syx file: ALL PRESETS, ALL SCENES, ALL GLOBALS.
    std::string memoryAsSyx() const;
    // Takes every dump of the device family found in `bytes`; false with a
    // reason when there is none. What isn't in the file stays as it was.
    bool loadMemory(std::string_view bytes, std::string& error);
    bool loadFile(const std::string& path, std::string& error);
    bool saveFile(const std::string& path, std::string& error) const;

private:
    bool store(std::string_view message);
    static bool fits(const std::array<AllPresetsEntry, 50>& slots, const AllPresetsEntry& editBuffer);

    VirtualDeviceSettings settings_;
    std::array<AllPresetsEntry, 50> slots_;
    AllPresetsEntry editBuffer_;
    std::string scenes_;   // the 4400 record bytes
    std::string globals_;  // AllGlobalsBody: every settings byte of the PC1600X
    int selected_ = 0;
};

// Takes the oldest message of `queue` to the device and hands each of its
// replies to `reply`, in order: the loop of a device on MIDI ports of its
// own. False when the queue is empty.
bool AnswerOldest(MessageQueue& queue, VirtualPC1600& device, const std::function<void(const std::string&)>& reply);

// The single preset dump of the "--Initialized--" preset: what every slot of
// a cleared device holds.
std::string InitializedPresetDump(bool pc1600Model);

}  // namespace tavlo

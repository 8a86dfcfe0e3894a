#include "midilink/VirtualPC1600.h"

#include <fstream>

#include "sysex/AllGlobalsDump.h"
#include "sysex/DeviceMessages.h"
#include "base/FileBytes.h"

namespace tavlo {

VirtualPC1600::VirtualPC1600(VirtualDeviceSettings settings) : settings_(settings) { clearMemory(); }

void VirtualPC1600::clearMemory() {
    const auto entry = EntryFromPresetDump(InitializedPresetDump(settings_.pc1600Model));
    for (auto& slot : slots_) slot = entry.value_or(AllPresetsEntry{});
    editBuffer_ = slots_[0];
    scenes_.clear();
    for (int s = 0; s < kAllScenesRecords; ++s) scenes_ += EmptySceneRecord(settings_.pc1600Model);
    globals_ = AllGlobalsBody(DefaultAllGlobalsDump(settings_.deviceId, settings_.pc1600Model));
    selected_ = 0;
}

std::string VirtualPC1600::allPresetsDump() const {
    AllPresetsEntries entries;
    for (std::size_t k = 0; k < slots_.size(); ++k) entries[k] = slots_[k];
    entries[50] = editBuffer_;
    return BuildAllPresetsDump(settings_.deviceId, selected_, entries);
}

std::string VirtualPC1600::allScenesDump() const {
    return DeviceDumpHeader(settings_.deviceId, DeviceCommand::AllScenes) + '\x64' + scenes_ + '\xF7';
}

std::string VirtualPC1600::allGlobalsDump() const {
    // The original model ends its dump with the F7 in the record channel's
    // place, as that device does.
    const std::size_t length = settings_.pc1600Model ? GlobalsOffset::RecordChannel - GlobalsOffset::Map1 : globals_.size();
    return DeviceDumpHeader(settings_.deviceId, DeviceCommand::AllGlobals) + globals_.substr(0, length) + '\xF7';
}

std::string VirtualPC1600::editBufferDump() const { return PresetDumpFromEntry(settings_.deviceId, editBuffer_); }

bool VirtualPC1600::fits(const std::array<AllPresetsEntry, 50>& slots, const AllPresetsEntry& editBuffer) {
    // The directory's running total is four hex digits: a memory that
    // can't be dumped is refused, as a full device refuses a preset.
    long total = editBuffer.size;
    for (const auto& slot : slots) total += slot.size;
    return total <= 0xFFFF;
}

bool VirtualPC1600::store(std::string_view message) {
    switch (DeviceMessageCommand(message)) {
    case DeviceCommand::AllPresets: {
        const auto parsed = ParseAllPresetsDump(message);
        if (!parsed) return false;
        for (std::size_t k = 0; k < slots_.size(); ++k) slots_[k] = parsed->entries[k];
        editBuffer_ = parsed->entries[50];
        if (parsed->selectedSlot < 50) selected_ = parsed->selectedSlot;
        return true;
    }
    case DeviceCommand::AllScenes:
        if (!IsAllScenesDump(message)) return false;
        scenes_ = std::string(message.substr(kAllScenesRecordsOffset, kSceneRecordLength * kAllScenesRecords));
        return true;
    case DeviceCommand::AllGlobals:
        if (!IsAllGlobalsDump(message)) return false;
        globals_ = AllGlobalsBody(message);
        return true;
    case DeviceCommand::PresetDump: {
        if (static_cast<unsigned char>(message.back()) != 0xF7) return false;
        const auto entry = EntryFromPresetDump(message);
        if (!entry || !fits(slots_, *entry)) return false;
        editBuffer_ = *entry;
        return true;
    }
    default:
        return false;
    }
}

std::vector<std::string> VirtualPC1600::receive(std::string_view message) {
    std::vector<std::string> replies;
    if (!IsDeviceMessage(message) || DeviceMessageId(message) != settings_.deviceId) return replies;
    const int command = DeviceMessageCommand(message);
    const auto slotArgument = [&]() -> int {
        if (message.size() < 9) return -1;
        const int slot = static_cast<unsigned char>(message[7]);
        return slot < 50 ? slot : -1;
    };
    switch (command) {
    case DeviceCommand::RequestAllPresets: replies.push_back(allPresetsDump()); break;
    case DeviceCommand::RequestAllScenes: replies.push_back(allScenesDump()); break;
    case DeviceCommand::RequestAllGlobals: replies.push_back(allGlobalsDump()); break;
    case DeviceCommand::RequestEditBuffer: replies.push_back(editBufferDump()); break;
    case DeviceCommand::SelectPreset:
        // The edit buffer counts in the directory too: a slot that would
        // overflow it as the edit buffer is not selected.
        if (const int slot = slotArgument(); slot >= 0 && fits(slots_, slots_[static_cast<std::size_t>(slot)])) {
            selected_ = slot;
            editBuffer_ = slots_[static_cast<std::size_t>(slot)];
        }
        break;
    case DeviceCommand::WriteEditBuffer:
        if (const int slot = slotArgument(); slot >= 0) {
            auto slots = slots_;
            slots[static_cast<std::size_t>(slot)] = editBuffer_;
            if (fits(slots, editBuffer_)) slots_ = slots;
        }
        break;
    default: store(message); break;
    }
    std::erase_if(replies, [](const std::string& reply) { return reply.empty(); });
    return replies;
}

std::string VirtualPC1600::memoryAsSyx() const { return allPresetsDump() + allScenesDump() + allGlobalsDump(); }

bool VirtualPC1600::loadMemory(std::string_view bytes, std::string& error) {
    int taken = 0;
    for (const std::string& message : SplitSysex(bytes)) {
        const int command = DeviceMessageCommand(message);
        if (command >= DeviceCommand::AllPresets && command <= DeviceCommand::PresetDump && store(message)) ++taken;
    }
    if (taken == 0) {
        error = "The file holds no PC1600(x) dump.";
        return false;
    }
    return true;
}

bool VirtualPC1600::loadFile(const std::string& path, std::string& error) {
    const auto bytes = ReadWholeFile(path);
    if (!bytes) {
        error = "The file " + path + " can't be read.";
        return false;
    }
    return loadMemory(*bytes, error);
}

bool AnswerOldest(MessageQueue& queue, VirtualPC1600& device, const std::function<void(const std::string&)>& reply) {
    if (queue.count() == 0) return false;
    const std::string message = queue.current();
    queue.remove();
    for (const auto& answer : device.receive(message)) reply(answer);
    return true;
}

bool VirtualPC1600::saveFile(const std::string& path, std::string& error) const {
    if (!WriteWholeFile(path, memoryAsSyx())) {
        error = "The file " + path + " can't be written.";
        return false;
    }
    return true;
}

}  // namespace tavlo

// Writes the seeds of the dump and virtual device fuzz targets from the
// dump writers themselves, so that they follow the layouts if those change:
//   fuzz_make_seeds tests/fuzz/seeds
#include <array>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "globals/GlobalSettings.h"
#include "globals/GlobalsText.h"
#include "sysex/AllGlobalsDump.h"
#include "sysex/AllPresetsDump.h"
#include "sysex/AllScenesDump.h"
#include "sysex/DeviceMessages.h"
#include "midilink/VirtualPC1600.h"

using namespace tavlo;

namespace {

std::filesystem::path gRoot;

void Write(const std::string& target, const std::string& name, const std::string& bytes) {
    const auto dir = gRoot / target;
    std::filesystem::create_directories(dir);
    std::ofstream(dir / name, std::ios::binary) << bytes;
}

std::array<SceneRecord, kAllScenesRecords> SomeScenes() {
    std::array<SceneRecord, kAllScenesRecords> records{};
    for (int r = 0; r < 3; ++r) {
        auto& record = records[static_cast<std::size_t>(r)];
        record.empty = false;
        record.presetSlot = r * 7;
        for (std::size_t v = 0; v < record.values.size(); ++v) record.values[v] = static_cast<int>((v * 13 + r) % 128);
    }
    return records;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: fuzz_make_seeds SEEDS_DIR\n";
        return 64;
    }
    gRoot = argv[1];
    // A device with a preset changed in its edit buffer and written to slot 3.
    VirtualPC1600 device(VirtualDeviceSettings{2, false, 0, false});
    AllPresetsEntry edited = device.editBuffer();
    edited.body += std::string(8, '\x05');
    edited.size += 4;
    device.receive(PresetDumpFromEntry(2, edited));
    device.receive(DeviceSlotCommand(2, DeviceCommand::WriteEditBuffer, 3));
    device.receive(DeviceSlotCommand(2, DeviceCommand::SelectPreset, 3));
    device.receive(BuildAllScenesDump(2, SomeScenes(), false));
    const VirtualPC1600 cleared1600(VirtualDeviceSettings{0, true, 0, false});

    Write("all_presets_dump_fuzz", "cleared.syx", cleared1600.allPresetsDump());
    Write("all_presets_dump_fuzz", "edited.syx", device.allPresetsDump());
    Write("all_scenes_dump_fuzz", "some-x.syx", device.allScenesDump());
    Write("all_scenes_dump_fuzz", "some-1600.syx", BuildAllScenesDump(0, SomeScenes(), true));
    Write("all_scenes_dump_fuzz", "empty-x.syx", BuildAllScenesDump(0, {}, false));
    Write("all_globals_dump_fuzz", "default-x.syx", DefaultAllGlobalsDump(1, false));
    Write("all_globals_dump_fuzz", "default-1600.syx", DefaultAllGlobalsDump(0, true));
    Write("all_globals_dump_fuzz", "request-then-1600.syx",
          DeviceRequest(0, DeviceCommand::RequestAllGlobals) + DefaultAllGlobalsDump(0, true));
    GlobalSettings edited1600 = NewGlobalSettings();
    edited1600.Name = "Stage";
    edited1600.Filters[0] = edited1600.Filters[7] = true;
    edited1600.FootSwitch1 = 20;
    edited1600.MidiMaps[1][9] = 127;
    Write("all_globals_dump_fuzz", "tavlo-1600.syx", *GlobalForm2Sysex(edited1600, true, 4));
    Write("globals_text_fuzz", "new.tgl", StoreTavloFormatGlobals(NewGlobalSettings()));
    Write("globals_text_fuzz", "edited.tgl", StoreTavloFormatGlobals(edited1600));
    Write("vdevice_load_memory_fuzz", "memory-x.syx", device.memoryAsSyx());
    Write("vdevice_load_memory_fuzz", "memory-1600.syx", cleared1600.memoryAsSyx());
    Write("vdevice_load_memory_fuzz", "edit-buffer.syx", device.editBufferDump());

    // Virtual device traffic: a first byte for identifier 2 (PC1600X) or 0
    // (PC1600), then requests, selects, writes and dumps as a program sends them.
    const std::string requests = DeviceRequest(2, DeviceCommand::RequestAllPresets) +
                                 DeviceRequest(2, DeviceCommand::RequestAllScenes) +
                                 DeviceRequest(2, DeviceCommand::RequestAllGlobals) +
                                 DeviceRequest(2, DeviceCommand::RequestEditBuffer);
    Write("virtual_pc1600_fuzz", "requests.bin", std::string(1, '\x02') + requests);
    Write("virtual_pc1600_fuzz", "select-write.bin",
          std::string(1, '\x02') + DeviceSlotCommand(2, DeviceCommand::SelectPreset, 3) +
              PresetDumpFromEntry(2, edited) + DeviceSlotCommand(2, DeviceCommand::WriteEditBuffer, 7) +
              DeviceRequest(2, DeviceCommand::RequestEditBuffer));
    Write("virtual_pc1600_fuzz", "memory-dumps.bin", std::string(1, '\x02') + device.allPresetsDump() +
                                                         device.allScenesDump() + device.allGlobalsDump());
    Write("virtual_pc1600_fuzz", "pc1600-requests.bin",
          std::string(1, '\x10') + DeviceRequest(0, DeviceCommand::RequestAllGlobals) +
              DeviceRequest(0, DeviceCommand::RequestEditBuffer));
    return 0;
}

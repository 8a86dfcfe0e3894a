#include "midilink/VirtualPC1600.h"

#include <gtest/gtest.h>

#include <fstream>

#include "DumpSamples.h"
#include "FakeTime.h"
#include "TempDir.h"
#include "sysex/AllGlobalsDump.h"
#include "sysex/AllScenesDump.h"
#include "sysex/DeviceMessages.h"
#include "midilink/VirtualDeviceBackend.h"

using namespace tavlo;
using namespace tavlo::testing;

namespace {

std::string OnlyReply(VirtualPC1600& device, const std::string& message) {
    const auto replies = device.receive(message);
    EXPECT_EQ(replies.size(), 1u);
    return replies.empty() ? std::string() : replies[0];
}

TEST(VirtualPC1600, AnswersARequestWithItsDumpUnderTheDevicesIdentifier) {
    const struct {
        unsigned char request, answer;
        bool pc1600Model;
        std::size_t length;  // 0: not checked
    } cases[] = {{0x11, 0x01, false, 0},  {0x12, 0x02, false, 4409}, {0x12, 0x02, true, 4409},
                 {0x13, 0x03, false, 420}, {0x13, 0x03, true, 414},   {0x14, 0x04, false, 0}};
    for (const auto& c : cases) {
        VirtualPC1600 device({.deviceId = 6, .pc1600Model = c.pc1600Model});
        const std::string reply = OnlyReply(device, DeviceRequest(6, c.request));
        EXPECT_EQ(DeviceMessageCommand(reply), c.answer);
        EXPECT_EQ(DeviceMessageId(reply), 6);
        EXPECT_EQ(static_cast<unsigned char>(reply.back()), 0xF7);
        EXPECT_TRUE(c.length == 0 || reply.size() == c.length) << int(c.request) << " " << reply.size();
    }
}

TEST(VirtualPC1600, IgnoresOtherIdentifiersOtherMakersAndNonsense) {
    VirtualPC1600 device({.deviceId = 2});
    device.receive(BuildAllPresetsDump(2, 0, SampleEntries(50)));
    const std::string before = device.memoryAsSyx();
    std::string otherMaker = DeviceRequest(2, 0x11);
    otherMaker[3] = 0x41;
    std::string cutInTheBodies = BuildAllPresetsDump(2, 0, SampleEntries(60));
    cutInTheBodies.resize(cutInTheBodies.size() - 200);
    const std::string messages[] = {
        DeviceRequest(3, 0x11), DeviceRequest(0, 0x13), otherMaker, "", std::string("\xF0\xF7", 2),
        std::string("\x90\x40\x40", 3), DeviceRequest(2, 0x7E),
        DeviceSlotCommand(2, 0x00, 50), DeviceSlotCommand(2, 0x20, 99),  // no such slot
        DeviceDumpHeader(2, 0x01) + "\x32\x00\xF7",                      // far too short
        cutInTheBodies + '\xF7', DeviceDumpHeader(2, 0x02) + std::string(100, 0) + '\xF7',
        DeviceDumpHeader(2, 0x03) + std::string(10, 0) + '\xF7', DeviceDumpHeader(2, 0x04) + "\x01\xF7"};
    for (const auto& m : messages) EXPECT_TRUE(device.receive(m).empty()) << MSBModule::BytesToHexText(m);
    EXPECT_TRUE(device.memoryAsSyx() == before);
}

TEST(VirtualPC1600, StoresEveryDumpItIsSentAndGivesItBackIntact) {
    VirtualPC1600 device({.deviceId = 0});
    // 40+ KB of presets.
    const std::string presets = BuildAllPresetsDump(0, 4, SampleEntries(400));
    ASSERT_GT(presets.size(), 40000u);
    std::array<SceneRecord, kAllScenesRecords> records{};
    records[3] = {false, 12, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 127, 0}};
    const std::string scenes = BuildAllScenesDump(0, records, false);
    std::string globals = DefaultAllGlobalsDump(0, false);
    globals[GlobalsOffset::ViewAngle] = 5;
    for (const auto& dump : {presets, scenes, globals}) EXPECT_TRUE(device.receive(dump).empty());
    EXPECT_EQ(OnlyReply(device, DeviceRequest(0, 0x11)), presets);
    EXPECT_EQ(OnlyReply(device, DeviceRequest(0, 0x12)), scenes);
    EXPECT_EQ(OnlyReply(device, DeviceRequest(0, 0x13)), globals);
    // The edit buffer is entry 50.
    EXPECT_EQ(OnlyReply(device, DeviceRequest(0, 0x14)), PresetDumpFromEntry(0, SampleEntries(400)[50]));
}

TEST(VirtualPC1600, SelectWriteAndEditBuffer) {
    VirtualPC1600 device({.deviceId = 1});
    device.receive(BuildAllPresetsDump(1, 0, SampleEntries(20)));
    const auto entries = SampleEntries(20);

    // 00 nn: slot nn into the edit buffer.
    device.receive(DeviceSlotCommand(1, 0x00, 17));
    EXPECT_EQ(OnlyReply(device, DeviceRequest(1, 0x14)), PresetDumpFromEntry(1, entries[17]));
    EXPECT_EQ(device.selectedPreset(), 17);

    // A preset dump into the edit buffer, 20 nn writes it to slot nn, the rest stays.
    const AllPresetsEntry fresh = SampleEntry("Fresh", 33, 77);
    device.receive(PresetDumpFromEntry(1, fresh));
    EXPECT_EQ(OnlyReply(device, DeviceRequest(1, 0x14)), PresetDumpFromEntry(1, fresh));
    device.receive(DeviceSlotCommand(1, 0x20, 42));
    const auto parsed = ParseAllPresetsDump(OnlyReply(device, DeviceRequest(1, 0x11)));
    ASSERT_TRUE(parsed);
    AllPresetsEntries expected = entries;
    expected[42] = expected[50] = fresh;
    EXPECT_TRUE(parsed->entries == expected);
    EXPECT_EQ(parsed->selectedSlot, 17);
}

// On the original model, whose ALL GLOBALS carries an F7 inside: the file
// must keep that dump whole.
TEST(VirtualPC1600, MemorySavesToASyxFileAndLoadsBack) {
    TempDir dir;
    VirtualPC1600 device({.deviceId = 3, .pc1600Model = true});
    device.receive(BuildAllPresetsDump(3, 9, SampleEntries(100)));
    std::string globals = DefaultAllGlobalsDump(3, true);
    ASSERT_EQ(static_cast<unsigned char>(globals[GlobalsOffset::RecordChannel]), 0xF7);
    globals[GlobalsOffset::ChannelIn] = 4;
    device.receive(globals);
    ASSERT_EQ(device.allGlobalsDump(), globals);
    std::string error;
    ASSERT_TRUE(device.saveFile(dir.file("memory.syx"), error)) << error;

    VirtualPC1600 other({.deviceId = 3, .pc1600Model = true});
    ASSERT_TRUE(other.loadFile(dir.file("memory.syx"), error)) << error;
    EXPECT_TRUE(other.memoryAsSyx() == device.memoryAsSyx());

    // Files without a dump of the device are refused with a reason, and change nothing.
    const std::string before = other.memoryAsSyx();
    for (const std::string& junk : {std::string(), std::string("hello"), std::string("\xF0\x41\x10\xF7", 4)}) {
        std::ofstream(dir.file("junk.syx"), std::ios::binary) << junk;
        error.clear();
        EXPECT_FALSE(other.loadFile(dir.file("junk.syx"), error));
        EXPECT_FALSE(error.empty());
    }
    EXPECT_FALSE(other.loadFile(dir.file("missing.syx"), error));
    EXPECT_TRUE(other.memoryAsSyx() == before);
}

TEST(VirtualDeviceBackend, RepliesWaitForTheDelayAndTheWireWhenPaced) {
    FakeClock clock;
    VirtualDeviceBackend backend(clock);
    backend.device().setSettings({.deviceId = 0, .pc1600Model = false, .replyDelayMs = 200, .wirePacing = true});
    std::vector<std::pair<std::string, std::int64_t>> got;
    std::string error;
    auto in = backend.openInput(kVirtualDeviceName, [&](std::string b, std::int64_t t) { got.emplace_back(b, t); },
                                error);
    auto out = backend.openOutput(kVirtualDeviceName, error);
    ASSERT_TRUE(in && out) << error;
    const std::int64_t sent = clock.now();
    ASSERT_TRUE(out->send(DeviceRequest(0, 0x13), error));
    in->poll();
    EXPECT_TRUE(got.empty());
    // 420 bytes take 134 ms on the cable.
    clock.advance(200 + WireTimeMs(420) - 1);
    in->poll();
    EXPECT_TRUE(got.empty());
    clock.advance(1);
    in->poll();
    ASSERT_EQ(got.size(), 1u);
    EXPECT_EQ(got[0].first.size(), 420u);
    EXPECT_EQ(got[0].second, sent + 200 + WireTimeMs(420));
    EXPECT_EQ(std::vector<std::string>{kVirtualDeviceName}, backend.inputNames());
    EXPECT_FALSE(backend.openOutput("Something else", error));
}

TEST(VirtualPC1600Cleared, EverySlotAndTheEditBufferHoldTheInitializedPresetAndTheScenesAreEmpty) {
    for (bool pc1600Model : {false, true}) {
        VirtualPC1600 device({.deviceId = 3, .pc1600Model = pc1600Model});
        const std::string presets = OnlyReply(device, DeviceRequest(3, 0x11));
        const auto parsed = ParseAllPresetsDump(presets);
        const auto initialized = EntryFromPresetDump(InitializedPresetDump(pc1600Model));
        ASSERT_TRUE(parsed && initialized) << pc1600Model;
        EXPECT_EQ(initialized->size, 72);  // 36 records of Length 1
        for (const AllPresetsEntry& entry : parsed->entries) EXPECT_EQ(entry, *initialized);
        for (const std::string& name : AllPresetsNames(presets)) EXPECT_EQ(name, "--Initialized-- ");
        EXPECT_EQ(OnlyReply(device, DeviceRequest(3, 0x14)).substr(7), InitializedPresetDump(pc1600Model).substr(7));
        // The scenes are marked empty as the model marks them.
        const std::string scenes = OnlyReply(device, DeviceRequest(3, 0x12));
        for (std::size_t s = 0; s < kAllScenesRecords; ++s)
            EXPECT_EQ(scenes.substr(8 + kSceneRecordLength * s, kSceneRecordLength), EmptySceneRecord(pc1600Model));
        // Clearing forgets what was stored.
        const std::string cleared = device.memoryAsSyx();
        device.receive(BuildAllPresetsDump(3, 3, SampleEntries(40)));
        EXPECT_NE(device.memoryAsSyx(), cleared);
        device.clearMemory();
        EXPECT_EQ(device.memoryAsSyx(), cleared);
    }
}

// Random damage to any message is left to virtual_pc1600_fuzz.
TEST(VirtualPC1600Damage, APresetTooBigForTheDirectoryIsRefused) {
    VirtualPC1600 device;
    device.receive(BuildAllPresetsDump(0, 0, SampleEntries(1200)));  // about 61 KB of 64
    const std::string before = device.allPresetsDump();
    device.receive(PresetDumpFromEntry(0, SampleEntry("Huge", 9000, 3)));
    EXPECT_TRUE(device.allPresetsDump() == before);  // the edit buffer kept what it had
    EXPECT_TRUE(device.editBuffer() == SampleEntries(1200)[50]);
    // One that fits is taken.
    device.receive(PresetDumpFromEntry(0, SampleEntry("Small", 1000, 3)));
    device.receive(DeviceSlotCommand(0, 0x20, 5));
    EXPECT_EQ(device.slot(5), SampleEntry("Small", 1000, 3));
    EXPECT_TRUE(IsAllGlobalsDump(device.allGlobalsDump()));
}

TEST(VirtualPC1600Damage, SelectingASlotTooBigForTheDirectoryIsRefused) {
    // Slot 0 is large and the edit buffer small: selecting slot 0 would make
    // the memory more than four hex digits can count, and the device would
    // have no ALL PRESETS to give.
    AllPresetsEntries entries;
    for (int k = 0; k < kAllPresetsEntries; ++k)
        entries[static_cast<std::size_t>(k)] = SampleEntry("Slot", k == 0 ? 20000 : k == 50 ? 100 : 900, k + 1u);
    VirtualPC1600 device;
    device.receive(BuildAllPresetsDump(0, 4, entries));
    const std::string before = device.allPresetsDump();
    ASSERT_FALSE(before.empty());
    device.receive(DeviceSlotCommand(0, 0x00, 0));
    EXPECT_TRUE(OnlyReply(device, DeviceRequest(0, 0x11)) == before);  // no 300 KB diff on failure
    EXPECT_EQ(device.selectedPreset(), 4);
    // A slot that fits is selected.
    device.receive(DeviceSlotCommand(0, 0x00, 7));
    EXPECT_EQ(device.editBuffer(), entries[7]);
}

}  // namespace

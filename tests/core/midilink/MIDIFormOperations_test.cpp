#include "midilink/MIDIFormOperations.h"

#include <gtest/gtest.h>

#include "LinkFixture.h"
#include "db/PoolDatabase.h"
#include "midilink/MidiConfig.h"
#include "ui/Prompter.h"

using namespace tavlo;
using namespace tavlo::testing;

namespace {

const char* const kFreeMemoryTitle = "Problem with Free Memory";
const char* const kFreeMemoryText =
    "The value you entered for Free Memory seems out of order.  The basic PC1600(x) has 20904 bytes free.  Please "
    "check your device.";
const char* const kCannotExitText =
    "You must specify the MIDI In and Out Ports which will allow this software to communicate with your PC1600(x).  "
    "If you don't want to specify a Learn Device now, just select any of them to get past this window.";

// Every MIDIConfigTable row, its columns joined by "|", each row ended by ";".
std::string ConfigRows(Program& program) {
    Statement s = program.pool.db().prepare(
        "SELECT MIDIInDevice || '|' || MIDIOutDevice || '|' || MIDIInChannel || '|' || MIDILearnInDevice || '|' || "
        "MIDISimOutDevice || '|' || LearnTolerance || '|' || PC1600Model || '|' || FreeMemory || '|' || Printer "
        "FROM MIDIConfigTable");
    std::string rows;
    while (s.step()) rows += s.getText(0) + ";";
    return rows;
}

// Two system devices, no port open: the window starts from here.
class MIDIFormTest : public LinkFixture {
protected:
    MIDIFormTest() : LinkFixture({"Interface 1", "Interface 2"}) {}
    void SetUp() override {}

    // Fills the lists as the start-up does and clicks the lines, as the window does.
    void selectAll(int in, int out, int learnIn, int simOut) {
        LoadMidiConfiguration(*ts);
        auto& form = ts->midiLink.form;
        form.MIDIInDevicesList.setListIndex(in);
        form.MIDIOutDevicesList.setListIndex(out);
        form.MIDILearnInDeviceList.setListIndex(learnIn);
        form.MIDISimOutDeviceList.setListIndex(simOut);
        MIDIInDevicesList_Click(*ts);
        MIDIOutDevicesList_Click(*ts);
        MIDILearnInDeviceList_Click(*ts);
        MIDISimOutDeviceList_Click(*ts);
    }
};

// Free memory from 1000 to 70000 by its leading digits, then In, Out and
// Learn In selected; the first check that fails shows its box and the window stays.
TEST_F(MIDIFormTest, OKRefusesWithTheFirstFailedCheck) {
    const char* const exit = "Cannot Exit";
    const struct {
        const char* freeMemory;
        int in, out, learnIn, simOut;
        const char* refusal;
    } cases[] = {{"999", 0, 0, 0, 0, kFreeMemoryTitle},   {"1000", 0, 0, 0, 0, nullptr},
                 {"70000", 0, 0, 0, 0, nullptr},          {"70001", 0, 0, 0, 0, kFreeMemoryTitle},
                 {"", 0, 0, 0, 0, kFreeMemoryTitle},      {"abc", 0, 0, 0, 0, kFreeMemoryTitle},
                 {"-5000", 0, 0, 0, 0, kFreeMemoryTitle}, {" 2000", 0, 0, 0, 0, nullptr},
                 {"5000 bytes", 0, 0, 0, 0, nullptr},     {"99999999999999999999", 0, 0, 0, 0, kFreeMemoryTitle},
                 {"20904", -1, 0, 0, 0, exit},            {"20904", 0, -1, 0, 0, exit},
                 {"20904", 0, 0, -1, 0, exit},            {"20904", -1, -1, -1, -1, exit},
                 {"20904", 0, 1, 1, -1, nullptr},         {"999", -1, -1, -1, -1, kFreeMemoryTitle}};
    for (const auto& c : cases) {
        selectAll(c.in, c.out, c.learnIn, c.simOut);
        ts->midiLink.form.FreeMemText = c.freeMemory;
        ts->midiLink.form.Visible = true;
        if (c.refusal)
            ts.prompter.expectMessage(c.refusal, c.refusal == exit ? kCannotExitText : kFreeMemoryText,
                                      MessageAnswer::OK);
        EXPECT_EQ(OKButton(*ts), !c.refusal) << c.freeMemory << " " << c.in << c.out << c.learnIn << c.simOut;
        EXPECT_EQ(ts->midiLink.form.Visible, c.refusal != nullptr) << c.freeMemory;
        EXPECT_TRUE(ts.prompter.done()) << c.freeMemory;
    }
}

TEST_F(MIDIFormTest, OKWritesTheOneRowWithThePackedLearnTolerance) {
    int notified = 0;
    ts->midi.subscribe([&] { ++notified; });
    selectAll(1, 0, 2, -1);
    ts->midi.DeviceId = 9;
    ts->midi.PC1600Model = true;
    ts->midi.TimeoutIndex = 2;
    ts->midi.ManualMode = true;
    ts->midiLink.LearnTolerance = "  12  ";
    ts->midiLink.form.FreeMemText = "31000";
    ts->midiLink.form.PrinterCombo.addItem("Office");
    ts->midiLink.form.PrinterCombo.setListIndex(0);
    ASSERT_TRUE(OKButton(*ts));
    ASSERT_TRUE(OKButton(*ts));  // the old row is replaced, not joined
    EXPECT_EQ(ConfigRows(*ts), std::string("Interface 2|Interface 1|9|") + kVirtualDeviceName + "|" + kNoDevice +
                                   "|12|2I1|-1|31000|Office;");
    EXPECT_EQ(ts->midi.FreeMemory, 31000);
    EXPECT_GT(notified, 0);
}

TEST(LearnTolerancePacking, PacksAndUnpacksAllThree) {
    EXPECT_EQ(PackLearnTolerance(" 5 ", 0, false), "5|0I0");
    const struct {
        const char *packed, *tolerance;
        int timeout;
        bool manual;
    } cases[] = {{"5|0I0", "5", 0, false}, {"|2I1", "", 2, true},    {"7", "7", 1, false},
                 {"", "", 1, false},       {"3|9I1", "3", 1, true}, {"3|x", "3", 0, false}};
    for (const auto& c : cases) {
        std::string tolerance;
        int timeout = -1;
        bool manual = true;
        UnpackLearnTolerance(c.packed, tolerance, timeout, manual);
        EXPECT_EQ(std::tie(tolerance, timeout, manual), std::tie(c.tolerance, c.timeout, c.manual)) << c.packed;
    }
}

TEST_F(MIDIFormTest, StartUpRestoresTheRowAndOpensThePorts) {
    ts->pool.db().exec(
        "INSERT INTO MIDIConfigTable (MIDIInDevice, MIDIOutDevice, MIDIInChannel, MIDILearnInDevice, "
        "MIDISimOutDevice, LearnTolerance, PC1600Model, FreeMemory, Printer) VALUES ('Interface 2', 'Interface 1', 4, "
        "'Gone Away', 'Interface 2', '8', -1, 12345, 'Office')");
    ts->midiLink.form.PrinterCombo.addItem("Home");
    ts->midiLink.form.PrinterCombo.addItem("Office");
    EXPECT_FALSE(LoadMidiConfiguration(*ts));
    const auto& form = ts->midiLink.form;
    const MidiLink& link = ts->midiLink;
    EXPECT_EQ(form.MIDIInDevicesList.text(), "Interface 2");
    EXPECT_EQ(form.MIDIOutDevicesList.text(), "Interface 1");
    EXPECT_EQ(form.MIDILearnInDeviceList.listIndex(), -1);  // a device no longer there
    EXPECT_EQ(form.MIDISimOutDeviceList.text(), "Interface 2");
    EXPECT_EQ(form.FreeMemText, "12345");
    EXPECT_EQ(form.PrinterCombo.text(), "Office");
    EXPECT_EQ(ts->midi.DeviceId, 4);
    EXPECT_TRUE(ts->midi.PC1600Model);
    // An old row holds the tolerance alone: "Medium", manual off.
    EXPECT_EQ(link.LearnTolerance, "8");
    EXPECT_EQ(ts->midi.TimeoutIndex, 1);
    EXPECT_FALSE(ts->midi.ManualMode);
    EXPECT_EQ(std::vector({link.MIDIIn.isOpen(), link.MIDIOut.isOpen(), link.MIDILearnIn.isOpen(),
                           link.MIDISimOut.isOpen(), form.Visible}),
              std::vector({true, true, false, true, false}));
}

// A first run selects the virtual PC1600 in every list when there is no
// other device; ALSA's Midi Through doesn't count as one.
TEST(MIDIFormFirstRun, SelectsTheVirtualPC1600WhenThereIsNoOtherDevice) {
    const std::pair<std::vector<std::string>, bool> cases[] = {
        {{}, true}, {{"Midi Through:Midi Through Port-0 14:0"}, true}, {{"USB MIDI"}, false}};
    for (const auto& [names, selected] : cases) {
        TestProgram ts;
        ts->midiLink.setSystemBackend(std::make_shared<LoopbackBackend>(names));
        ts->midiLink.form.PrinterCombo.addItem("Office");
        EXPECT_TRUE(LoadMidiConfiguration(*ts));
        const auto& form = ts->midiLink.form;
        for (const ListState* list : {&form.MIDIInDevicesList, &form.MIDIOutDevicesList, &form.MIDILearnInDeviceList,
                                      &form.MIDISimOutDeviceList}) {
            EXPECT_EQ(list->listCount(), static_cast<int>(names.size()) + 1);
            EXPECT_EQ(list->text(), selected ? kVirtualDeviceName : "") << names.size();
        }
        EXPECT_EQ(ts->midiLink.MIDIOut.isOpen(), selected);
        EXPECT_EQ(form.PrinterCombo.text(), "Office");
        EXPECT_TRUE(form.Visible);
        EXPECT_EQ(ts->midi.TimeoutIndex, 1);
    }
}

TEST_F(MIDIFormTest, ChannelSearchFindsTheDeviceOnItsIdentifier) {
    selectAll(2, 2, 2, 2);  // the virtual device
    ts->midiLink.virtualDevice().setSettings({.deviceId = 10});
    using Seen = std::pair<std::string, bool>;  // caption, controls enabled
    std::vector<Seen> seen;
    const auto& form = ts->midiLink.form;
    ts->midiLink.form.subscribe([&] { seen.emplace_back(form.Caption, form.ControlsEnabled); });
    const std::int64_t start = ts.clock.now();
    ts.prompter.expectMessage("Received Response", "Your PC1600(x) was found on MIDI In Channel 11!",
                              MessageAnswer::OK);
    EXPECT_TRUE(TestButton(*ts));
    EXPECT_TRUE(ts.prompter.done());
    EXPECT_EQ(ts->midi.DeviceId, 10);
    // Ten silent channels of two 1500 ms ticks each.
    EXPECT_GE(ts.clock.now() - start, 10 * 3000);
    EXPECT_LT(ts.clock.now() - start, 10 * 3000 + 1000);
    ASSERT_GE(seen.size(), 12u);
    EXPECT_EQ(seen[1], Seen("Midi Configuration - TESTING CHANNEL 1", false));
    EXPECT_EQ(seen[11].first, "Midi Configuration - TESTING CHANNEL 11");
    EXPECT_EQ(seen.back(), Seen("Midi Configuration", true));
    EXPECT_EQ(ts->midiLink.waitTimer.interval(), 45000);
}

TEST_F(MIDIFormTest, ChannelSearchWithoutAnswerSaysSoAndTakesChannel1) {
    selectAll(0, 0, 0, 0);
    // Something answers, but nothing of the family: a short reply, another maker.
    loop->onSend = [&](const std::string&, const std::string&) {
        loop->inject("Interface 1", std::string("\xF0\x00\x00\x1B\x0B\x00\x03\xF7", 8));
        loop->inject("Interface 1", std::string("\xF0\x41\x10\x42\x12\x40\x00\x7F\x00\x41\xF7\x00", 12));
    };
    ts->midi.DeviceId = 7;
    const std::int64_t start = ts.clock.now();
    ts.prompter.expectMessage("Cannot Get Preset Edit Buffer",
                              "There is no response from the PC1600(x) on any Channel.  Please check your MIDI Setup.",
                              MessageAnswer::OK);
    EXPECT_FALSE(TestButton(*ts));
    EXPECT_TRUE(ts.prompter.done());
    EXPECT_EQ(ts->midi.DeviceId, 0);
    EXPECT_GE(ts.clock.now() - start, 16 * 3000);
    EXPECT_LT(ts.clock.now() - start, 16 * 3000 + 1000);
    // One request on each identifier, in order.
    std::vector<std::string> requests;
    for (int id = 0; id < 16; ++id) requests.push_back(DeviceRequest(id, 0x13));
    EXPECT_EQ(sentMessages(), requests);
}

// Devices may come and go after the lists were filled: a click opens the
// device of the line by its name, or says that it is gone.
TEST_F(MIDIFormTest, AClickOpensTheDeviceOfTheLineByItsName) {
    LoadMidiConfiguration(*ts);
    auto& form = ts->midiLink.form;
    ts->midiLink.setSystemBackend(std::make_shared<LoopbackBackend>(std::vector<std::string>{"Interface 2"}));
    form.MIDIOutDevicesList.setListIndex(1);  // "Interface 2", now the first device
    EXPECT_TRUE(MIDIOutDevicesList_Click(*ts));
    EXPECT_EQ(ts->midiLink.MIDIOut.openName(), "Interface 2");
    form.MIDIInDevicesList.setListIndex(0);  // "Interface 1"
    ts.prompter.expectMessage("Cannot Open MIDI Port",
                              "The MIDI In port could not be opened.  The device \"Interface 1\" is not present on "
                              "this system.  Please choose another device in the MIDI Configuration.",
                              MessageAnswer::OK);
    EXPECT_FALSE(MIDIInDevicesList_Click(*ts));
    EXPECT_TRUE(ts.prompter.done());
    EXPECT_FALSE(ts->midiLink.MIDIIn.isOpen());
}

}  // namespace

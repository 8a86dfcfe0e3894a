#include "midilink/MIDIFormOperations.h"

#include <gtest/gtest.h>

#include "TestProgram.h"
#include "sysex/DeviceMessages.h"
#include "LoopbackBackend.h"
#include "shell/Program.h"
#include "ui/Prompter.h"
#include "db/PoolDatabase.h"
#include "midilink/MidiConfig.h"
#include "midilink/MidiLink.h"

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

struct ConfigRow {
    std::string in, out, learnIn, simOut, tolerance, printer;
    std::int64_t channel = -1, model = 0, free = 0;
};

ConfigRow ReadRow(Program& session, int* rows = nullptr) {
    ConfigRow row;
    Statement s = session.pool.db().prepare("SELECT * FROM MIDIConfigTable");
    int n = 0;
    while (s.step()) {
        ++n;
        row = {s.getText("MIDIInDevice"),  s.getText("MIDIOutDevice"), s.getText("MIDILearnInDevice"),
               s.getText("MIDISimOutDevice"), s.getText("LearnTolerance"), s.getText("Printer"),
               s.getInt("MIDIInChannel"),  s.getInt("PC1600Model"),   s.getInt("FreeMemory")};
    }
    if (rows) *rows = n;
    return row;
}

class MIDIFormTest : public ::testing::Test {
protected:
    void SetUp() override {
        loop = std::make_shared<LoopbackBackend>(std::vector<std::string>{"Interface 1", "Interface 2"}, &ts.clock);
        loop->echo = false;
        ts->midiLink.setSystemBackend(loop);
    }
    // Fills the lists as the start-up does and selects devices by line.
    void selectAll(int in, int out, int learnIn, int simOut) {
        LoadMidiConfiguration(*ts);
        auto& form = ts->midiLink.form;
        form.MIDIInDevicesList.setListIndex(in);
        form.MIDIOutDevicesList.setListIndex(out);
        form.MIDILearnInDeviceList.setListIndex(learnIn);
        form.MIDISimOutDeviceList.setListIndex(simOut);
        // As the window does on a click.
        MIDIInDevicesList_Click(*ts);
        MIDIOutDevicesList_Click(*ts);
        MIDILearnInDeviceList_Click(*ts);
        MIDISimOutDeviceList_Click(*ts);
    }

    TestProgram ts;
    std::shared_ptr<LoopbackBackend> loop;
};

TEST_F(MIDIFormTest, FreeMemoryMustLieFrom1000To70000) {
    struct Case {
        const char* text;
        bool accepted;
    };
    const Case cases[] = {{"999", false},  {"1000", true},  {"70000", true}, {"70001", false}, {"20904", true},
                          {"", false},     {"abc", false},  {"-5000", false}, {" 2000", true}, {"5000 bytes", true},
                          {"99999999999999999999", false}};
    for (const auto& c : cases) {
        selectAll(0, 0, 0, 0);
        ts->midiLink.form.FreeMemText = c.text;
        ts->midiLink.form.Visible = true;
        if (!c.accepted) ts.prompter.expectMessage(kFreeMemoryTitle, kFreeMemoryText, MessageAnswer::OK);
        EXPECT_EQ(OKButton(*ts), c.accepted) << c.text;
        EXPECT_EQ(ts->midiLink.form.Visible, !c.accepted) << c.text;
        EXPECT_TRUE(ts.prompter.done()) << c.text;
    }
}

TEST_F(MIDIFormTest, InOutAndLearnInMustBeSelectedSimOutNeedNot) {
    struct Case {
        int in, out, learnIn, simOut;
        bool accepted;
    };
    const Case cases[] = {{-1, 0, 0, 0, false}, {0, -1, 0, 0, false}, {0, 0, -1, 0, false},
                          {-1, -1, -1, -1, false}, {0, 1, 1, -1, true}};
    for (const auto& c : cases) {
        selectAll(c.in, c.out, c.learnIn, c.simOut);
        if (!c.accepted) ts.prompter.expectMessage("Cannot Exit", kCannotExitText, MessageAnswer::OK);
        EXPECT_EQ(OKButton(*ts), c.accepted) << c.in << c.out << c.learnIn << c.simOut;
        EXPECT_TRUE(ts.prompter.done());
    }
    // The free memory check comes first.
    selectAll(-1, -1, -1, -1);
    ts->midiLink.form.FreeMemText = "999";
    ts.prompter.expectMessage(kFreeMemoryTitle);
    EXPECT_FALSE(OKButton(*ts));
    EXPECT_TRUE(ts.prompter.done());
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
    int rows = 0;
    const ConfigRow row = ReadRow(*ts, &rows);
    EXPECT_EQ(rows, 1);
    EXPECT_EQ(row.in, "Interface 2");
    EXPECT_EQ(row.out, "Interface 1");
    EXPECT_EQ(row.learnIn, kVirtualDeviceName);
    EXPECT_EQ(row.simOut, kNoDevice);
    EXPECT_EQ(row.channel, 9);
    EXPECT_EQ(row.tolerance, "12|2I1");
    EXPECT_EQ(row.model, -1);
    EXPECT_EQ(row.free, 31000);
    EXPECT_EQ(row.printer, "Office");
    EXPECT_EQ(ts->midi.FreeMemory, 31000);
    EXPECT_GT(notified, 0);
}

TEST(LearnTolerancePacking, PacksAndUnpacksAllThree) {
    EXPECT_EQ(PackLearnTolerance(" 5 ", 0, false), "5|0I0");
    struct Case {
        const char* packed;
        const char* tolerance;
        int timeout;
        bool manual;
    };
    const Case cases[] = {{"5|0I0", "5", 0, false}, {"|2I1", "", 2, true}, {"7", "7", 1, false},
                          {"", "", 1, false},       {"3|9I1", "3", 1, true}, {"3|x", "3", 0, false}};
    for (const auto& c : cases) {
        std::string tolerance;
        int timeout = -1;
        bool manual = true;
        UnpackLearnTolerance(c.packed, tolerance, timeout, manual);
        EXPECT_EQ(tolerance, c.tolerance) << c.packed;
        EXPECT_EQ(timeout, c.timeout) << c.packed;
        EXPECT_EQ(manual, c.manual) << c.packed;
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
    EXPECT_EQ(form.MIDIInDevicesList.text(), "Interface 2");
    EXPECT_EQ(form.MIDIOutDevicesList.text(), "Interface 1");
    // A device that is no longer there leaves its list without a selection.
    EXPECT_EQ(form.MIDILearnInDeviceList.listIndex(), -1);
    EXPECT_EQ(form.MIDISimOutDeviceList.text(), "Interface 2");
    EXPECT_EQ(form.FreeMemText, "12345");
    EXPECT_EQ(form.PrinterCombo.text(), "Office");
    EXPECT_EQ(ts->midi.DeviceId, 4);
    EXPECT_TRUE(ts->midi.PC1600Model);
    // An old row holds the tolerance alone: "Medium", manual off.
    EXPECT_EQ(ts->midiLink.LearnTolerance, "8");
    EXPECT_EQ(ts->midi.TimeoutIndex, 1);
    EXPECT_FALSE(ts->midi.ManualMode);
    EXPECT_TRUE(ts->midiLink.MIDIIn.isOpen());
    EXPECT_TRUE(ts->midiLink.MIDIOut.isOpen());
    EXPECT_FALSE(ts->midiLink.MIDILearnIn.isOpen());
    EXPECT_TRUE(ts->midiLink.MIDISimOut.isOpen());
    EXPECT_FALSE(form.Visible);
}

TEST(MIDIFormFirstRun, WithNoOtherDeviceTheVirtualPC1600IsSelectedAndFound) {
    TestProgram ts;
    ts->midiLink.form.PrinterCombo.addItem("Office");
    EXPECT_TRUE(LoadMidiConfiguration(*ts));
    const auto& form = ts->midiLink.form;
    for (const ListState* list : {&form.MIDIInDevicesList, &form.MIDIOutDevicesList, &form.MIDILearnInDeviceList,
                                  &form.MIDISimOutDeviceList})
        EXPECT_EQ(list->text(), kVirtualDeviceName);
    EXPECT_EQ(form.PrinterCombo.text(), "Office");
    EXPECT_TRUE(form.Visible);
    EXPECT_EQ(ts->midi.TimeoutIndex, 1);
    EXPECT_TRUE(ts->midiLink.MIDIIn.isOpen());

    ts.prompter.expectMessage("Received Response", "Your PC1600(x) was found on MIDI In Channel 01!",
                              MessageAnswer::OK);
    EXPECT_TRUE(TestButton(*ts));
    EXPECT_TRUE(ts.prompter.done());
    EXPECT_TRUE(OKButton(*ts));
    EXPECT_EQ(ReadRow(*ts).out, kVirtualDeviceName);
}

TEST(MIDIFormFirstRun, ALSAsMidiThroughDoesNotCountAsADevice) {
    TestProgram ts;
    ts->midiLink.setSystemBackend(std::make_shared<LoopbackBackend>(
        std::vector<std::string>{"Midi Through:Midi Through Port-0 14:0"}));
    EXPECT_TRUE(LoadMidiConfiguration(*ts));
    EXPECT_EQ(ts->midiLink.form.MIDIInDevicesList.text(), kVirtualDeviceName);
    EXPECT_EQ(ts->midiLink.form.MIDISimOutDeviceList.text(), kVirtualDeviceName);
    EXPECT_EQ(ts->midiLink.MIDIOut.openName(), kVirtualDeviceName);
}

TEST(MIDIFormFirstRun, WithOtherDevicesNothingIsSelected) {
    TestProgram ts;
    ts->midiLink.setSystemBackend(std::make_shared<LoopbackBackend>(std::vector<std::string>{"USB MIDI"}));
    EXPECT_TRUE(LoadMidiConfiguration(*ts));
    EXPECT_EQ(ts->midiLink.form.MIDIOutDevicesList.listIndex(), -1);
    EXPECT_EQ(ts->midiLink.form.MIDIOutDevicesList.listCount(), 2);
    EXPECT_FALSE(ts->midiLink.MIDIOut.isOpen());
}

TEST_F(MIDIFormTest, ChannelSearchFindsTheDeviceOnItsIdentifier) {
    selectAll(2, 2, 2, 2);  // the virtual device
    ts->midiLink.virtualDevice().setSettings({.deviceId = 10});
    std::vector<std::string> captions;
    std::vector<bool> enabled;
    ts->midiLink.form.subscribe([&] {
        captions.push_back(ts->midiLink.form.Caption);
        enabled.push_back(ts->midiLink.form.ControlsEnabled);
    });
    const std::int64_t start = ts.clock.now();
    ts.prompter.expectMessage("Received Response", "Your PC1600(x) was found on MIDI In Channel 11!",
                              MessageAnswer::OK);
    EXPECT_TRUE(TestButton(*ts));
    EXPECT_TRUE(ts.prompter.done());
    EXPECT_EQ(ts->midi.DeviceId, 10);
    // Ten silent channels of two 1500 ms ticks each.
    EXPECT_GE(ts.clock.now() - start, 10 * 3000);
    EXPECT_LT(ts.clock.now() - start, 10 * 3000 + 1000);
    ASSERT_GE(captions.size(), 12u);
    EXPECT_EQ(captions[1], "Midi Configuration - TESTING CHANNEL 1");
    EXPECT_EQ(captions[11], "Midi Configuration - TESTING CHANNEL 11");
    EXPECT_EQ(captions.back(), "Midi Configuration");
    EXPECT_FALSE(enabled[1]);
    EXPECT_TRUE(enabled.back());
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
    ASSERT_EQ(loop->sent.size(), 16u);
    for (int i = 0; i < 16; ++i) EXPECT_EQ(loop->sent[static_cast<std::size_t>(i)].second, DeviceRequest(i, 0x13));
}

// A device that refuses, one unplugged after the list was filled, one gone
// altogether: the click opens the device of the line by its name, and says
// why it couldn't, naming it.
TEST_F(MIDIFormTest, AClickOpensTheDeviceOfTheLineOrSaysWhyNot) {
    loop->refuse("Interface 2", "in use by another program");
    LoadMidiConfiguration(*ts);
    auto& form = ts->midiLink.form;
    form.MIDIInDevicesList.setListIndex(1);
    ts.prompter.expectMessage("Cannot Open MIDI Port");
    EXPECT_FALSE(MIDIInDevicesList_Click(*ts));
    ASSERT_EQ(ts.prompter.seen().size(), 1u);
    const std::string& text = ts.prompter.seen()[0].text;
    for (const char* part : {"MIDI In port", "Interface 2", "in use by another program"})
        EXPECT_NE(text.find(part), std::string::npos) << text;
    EXPECT_FALSE(ts->midiLink.MIDIIn.isOpen());

    form.MIDIOutDevicesList.setListIndex(1);  // "Interface 2"
    ts->midiLink.setSystemBackend(std::make_shared<LoopbackBackend>(std::vector<std::string>{"Interface 2"}));
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

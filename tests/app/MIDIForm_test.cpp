#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QtTest>

#include "FormDriver.h"
#include "TestProgram.h"
#include "LoopbackBackend.h"
#include "midilink/MIDIForm.h"
#include "midilink/MIDIFormOperations.h"
#include "midilink/VirtualPC1600.h"
#include "db/PoolDatabase.h"
#include "midilink/MidiConfig.h"
#include "midilink/MidiLink.h"

using namespace tavlo;
using namespace tavlo::testing;

class MIDIFormTest : public QObject {
    Q_OBJECT
private slots:
    void newUserFindsTheVirtualDeviceSelectedAndFound();
    void freeMemoryLimits_data();
    void freeMemoryLimits();
    void missingSelectionsKeepTheWindowUntilChosen();
    void closingByTheFrameWithBadValuesKeepsItOpen();
    void settingsReachTheConfigurationRow();
    void aPortThatCannotOpenIsNamed();
    void theVirtualDevicesSettingsAndMemory();
};

namespace {

void ClickLine(QListWidget* list, int row) {
    QListWidgetItem* item = list->item(row);
    QVERIFY(item);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(item).center());
}

void TypeFreeMemory(MIDIForm& form, const QString& text) {
    auto* edit = Find<QLineEdit>(&form, "FreeMemText");
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, text);
}

std::string StoredText(Program& session, const char* column) {
    Statement s = session.pool.db().prepare("SELECT * FROM MIDIConfigTable");
    return s.step() ? s.getText(column) : std::string("<no row>");
}

}  // namespace

void MIDIFormTest::newUserFindsTheVirtualDeviceSelectedAndFound() {
    TestProgram ts;
    MIDIForm form(*ts);
    QVERIFY(LoadMidiConfiguration(*ts));
    QVERIFY(form.isVisible());
    for (const char* name : {"MIDIInDevicesList", "MIDIOutDevicesList", "MIDILearnInDeviceList", "MIDISimOutDeviceList"}) {
        auto* list = Find<QListWidget>(&form, name);
        QVERIFY2(list->currentItem(), name);
        QCOMPARE(list->currentItem()->text(), QString("Tavlo Virtual PC1600"));
    }
    QVERIFY(Find<QRadioButton>(&form, "ModelOption_0")->isChecked());
    QCOMPARE(Find<QComboBox>(&form, "TimeoutCombo")->currentText(), QString("Medium"));
    QCOMPARE(Find<QLineEdit>(&form, "FreeMemText")->text(), QString("20904"));

    // The channel search finds it; during the search everything is disabled.
    bool disabledDuringSearch = false;
    ts.pump.onYield = [&] {
        if (!Find<QRadioButton>(&form, "ModelOption_1")->isEnabled() &&
            form.windowTitle().startsWith("Midi Configuration - TESTING CHANNEL"))
            disabledDuringSearch = true;
    };
    ts->midiLink.virtualDevice().setSettings({.deviceId = 2});
    ts.prompter.expectMessage("Received Response", "Your PC1600(x) was found on MIDI In Channel 03!",
                              MessageAnswer::OK);
    Click(&form, "TestButton");
    QVERIFY(ts.prompter.done());
    QCOMPARE(ts.prompter.seen().size(), std::size_t(1));
    QVERIFY(disabledDuringSearch);
    QCOMPARE(Find<QComboBox>(&form, "MIDIChannelCombo")->currentText(), QString("3"));
    QCOMPARE(form.windowTitle(), QString("Midi Configuration"));
    QVERIFY(Find<QPushButton>(&form, "OKButton")->isEnabled());
    ts.pump.onYield = nullptr;

    Click(&form, "OKButton");
    QVERIFY(!form.isVisible());
    QCOMPARE(StoredText(*ts, "MIDIOutDevice"), std::string("Tavlo Virtual PC1600"));

}

void MIDIFormTest::freeMemoryLimits_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("999") << "999" << false;
    QTest::newRow("1000") << "1000" << true;
    QTest::newRow("70000") << "70000" << true;
    QTest::newRow("70001") << "70001" << false;
    QTest::newRow("empty") << "" << false;
}

void MIDIFormTest::freeMemoryLimits() {
    QFETCH(QString, text);
    QFETCH(bool, accepted);
    TestProgram ts;
    MIDIForm form(*ts);
    LoadMidiConfiguration(*ts);
    QVERIFY(form.isVisible());
    TypeFreeMemory(form, text);
    if (!accepted)
        ts.prompter.expectMessage("Problem with Free Memory",
                                  "The value you entered for Free Memory seems out of order.  The basic PC1600(x) "
                                  "has 20904 bytes free.  Please check your device.",
                                  MessageAnswer::OK);
    Click(&form, "OKButton");
    QVERIFY(ts.prompter.done());
    QCOMPARE(ts.prompter.seen().size(), std::size_t(accepted ? 0 : 1));
    QCOMPARE(form.isVisible(), !accepted);
    QCOMPARE(StoredText(*ts, "FreeMemory"), accepted ? text.toStdString() : std::string("<no row>"));
}

void MIDIFormTest::missingSelectionsKeepTheWindowUntilChosen() {
    TestProgram ts;
    ts->midiLink.setSystemBackend(std::make_shared<LoopbackBackend>(std::vector<std::string>{"USB MIDI"}));
    // The last run's devices are gone: the lists come without a selection.
    ts->pool.db().exec(
        "INSERT INTO MIDIConfigTable (MIDIInDevice, MIDIOutDevice, MIDIInChannel, MIDILearnInDevice, "
        "MIDISimOutDevice, LearnTolerance, PC1600Model, FreeMemory, Printer) VALUES ('Old', 'Old', 0, 'Old', 'Old', "
        "'5|1I0', 0, 20904, '')");
    MIDIForm form(*ts);
    QVERIFY(!LoadMidiConfiguration(*ts));
    form.showConfiguration();
    QVERIFY(form.isVisible());
    const char* const text =
        "You must specify the MIDI In and Out Ports which will allow this software to communicate with your "
        "PC1600(x).  If you don't want to specify a Learn Device now, just select any of them to get past this "
        "window.";
    auto* ok = Find<QPushButton>(&form, "OKButton");
    const char* lists[] = {"MIDIInDevicesList", "MIDIOutDevicesList", "MIDILearnInDeviceList"};
    for (const char* name : lists) {
        ts.prompter.expectMessage("Cannot Exit", text, MessageAnswer::OK);
        QTest::mouseClick(ok, Qt::LeftButton);
        QVERIFY2(ts.prompter.done(), name);
        QVERIFY(form.isVisible());
        ClickLine(Find<QListWidget>(&form, name), 0);
    }
    // The simulation output may stay unselected.
    QVERIFY(!Find<QListWidget>(&form, "MIDISimOutDeviceList")->currentItem());
    QTest::mouseClick(ok, Qt::LeftButton);
    QVERIFY(!form.isVisible());
    QCOMPARE(ts.prompter.seen().size(), std::size_t(3));
    QCOMPARE(StoredText(*ts, "MIDIInDevice"), std::string("USB MIDI"));
    QCOMPARE(StoredText(*ts, "MIDISimOutDevice"), std::string("__NONE__"));
    QVERIFY(ts->midiLink.MIDIIn.isOpen());
    QVERIFY(ts->midiLink.MIDILearnIn.isOpen());
}

void MIDIFormTest::closingByTheFrameWithBadValuesKeepsItOpen() {
    TestProgram ts;
    MIDIForm form(*ts);
    LoadMidiConfiguration(*ts);
    TypeFreeMemory(form, "12");
    ts.prompter.expectMessage("Problem with Free Memory");
    QVERIFY(!form.close());
    QVERIFY(form.isVisible());
    ts.prompter.expectMessage("Problem with Free Memory");
    QTest::keyClick(&form, Qt::Key_Escape);
    QVERIFY(form.isVisible());
    TypeFreeMemory(form, "20000");
    QVERIFY(form.close());
    QVERIFY(!form.isVisible());
    QVERIFY(ts.prompter.done());
    QCOMPARE(ts.prompter.seen().size(), std::size_t(2));
}

void MIDIFormTest::settingsReachTheConfigurationRow() {
    TestProgram ts;
    MIDIForm form(*ts);
    LoadMidiConfiguration(*ts);
    int modelNotices = 0;
    ts->midi.subscribe([&] { ++modelNotices; });
    Find<QRadioButton>(&form, "ModelOption_1")->click();
    Find<QComboBox>(&form, "MIDIChannelCombo")->setCurrentIndex(11);
    Find<QComboBox>(&form, "TimeoutCombo")->setCurrentIndex(0);
    Find<QCheckBox>(&form, "ManualCheck")->click();
    QVERIFY(ts->midi.PC1600Model);
    QCOMPARE(ts->midi.DeviceId, 11);
    Click(&form, "OKButton");
    QVERIFY(!form.isVisible());
    QCOMPARE(StoredText(*ts, "LearnTolerance"), std::string("|0I1"));
    QCOMPARE(StoredText(*ts, "PC1600Model"), std::string("-1"));
    QCOMPARE(StoredText(*ts, "MIDIInChannel"), std::string("11"));
    // The windows with the model's controls are told at once.
    QVERIFY(modelNotices > 0);
}

void MIDIFormTest::aPortThatCannotOpenIsNamed() {
    TestProgram ts;
    auto loop = std::make_shared<LoopbackBackend>(std::vector<std::string>{"Busy Port", "Free Port"});
    loop->refuse("Busy Port", "the device is in use");
    ts->midiLink.setSystemBackend(loop);
    MIDIForm form(*ts);
    LoadMidiConfiguration(*ts);
    ts.prompter.expectMessage("Cannot Open MIDI Port");
    ClickLine(Find<QListWidget>(&form, "MIDIOutDevicesList"), 0);
    QVERIFY(ts.prompter.done());
    QVERIFY(ts.prompter.seen().back().text.find("Busy Port") != std::string::npos);
    QVERIFY(!ts->midiLink.MIDIOut.isOpen());
    QCOMPARE(ts.prompter.seen().size(), std::size_t(1));
    ClickLine(Find<QListWidget>(&form, "MIDIOutDevicesList"), 1);
    QVERIFY(ts->midiLink.MIDIOut.isOpen());
    QCOMPARE(ts->midiLink.MIDIOut.openName(), std::string("Free Port"));
}

void MIDIFormTest::theVirtualDevicesSettingsAndMemory() {
    TestProgram ts;
    MIDIForm form(*ts);
    LoadMidiConfiguration(*ts);
    Find<QComboBox>(&form, "VirtualChannelCombo")->setCurrentIndex(4);
    Find<QSpinBox>(&form, "VirtualDelaySpin")->setValue(300);
    Find<QCheckBox>(&form, "VirtualPacingCheck")->click();
    const VirtualDeviceSettings& settings = ts->midiLink.virtualDevice().settings();
    QCOMPARE(settings.deviceId, 4);
    QCOMPARE(settings.replyDelayMs, 300);
    QVERIFY(settings.wirePacing);

    // Slow as it is now, the search still finds it on its channel.
    ts.prompter.expectMessage("Received Response", "Your PC1600(x) was found on MIDI In Channel 05!",
                              MessageAnswer::OK);
    Click(&form, "TestButton");
    QVERIFY(ts.prompter.done());

    // Its memory goes to a file and comes back; a file without a dump is refused.
    const std::string saved = ts.dir.file("memory.syx");
    ts.prompter.expectSaveFile("Save the Memory of the Virtual PC1600", saved);
    Click(&form, "VirtualSaveButton");
    const std::string before = ts->midiLink.virtualDevice().memoryAsSyx();
    QFile junk(QString::fromStdString(ts.dir.file("junk.syx")));
    QVERIFY(junk.open(QIODevice::WriteOnly));
    junk.write("not a dump");
    junk.close();
    ts.prompter.expectOpenFile("Load the Memory of the Virtual PC1600", ts.dir.file("junk.syx"));
    ts.prompter.expectMessage("Cannot Load Sysex File", "The file holds no PC1600(x) dump.", MessageAnswer::OK);
    Click(&form, "VirtualLoadButton");
    QVERIFY(ts.prompter.done());
    QCOMPARE(ts->midiLink.virtualDevice().memoryAsSyx(), before);
    ts.prompter.expectOpenFile("Load the Memory of the Virtual PC1600", saved);
    Click(&form, "VirtualLoadButton");
    QVERIFY(ts.prompter.done());
    QCOMPARE(ts.prompter.seen().size(), std::size_t(5));
    QCOMPARE(ts->midiLink.virtualDevice().memoryAsSyx(), before);
}

QTEST_MAIN(MIDIFormTest)
#include "MIDIForm_test.moc"

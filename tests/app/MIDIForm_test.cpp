// The MIDI configuration window's wiring; the rules of the configuration
// (limits, selections, the search, opening ports) are tested in core.
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

class MIDIFormTest : public QObject {
    Q_OBJECT
private slots:
    void newUserFindsTheVirtualDeviceSelectedAndFound() {
        TestProgram ts;
        MIDIForm form(*ts);
        QVERIFY(LoadMidiConfiguration(*ts));
        QVERIFY(form.isVisible());
        for (const char* name : {"MIDIInDevicesList", "MIDIOutDevicesList", "MIDILearnInDeviceList", "MIDISimOutDeviceList"}) {
            auto* list = Find<QListWidget>(&form, name);
            QVERIFY2(list->currentItem(), name);
            QCOMPARE(list->currentItem()->text(), QString("Tavlo Virtual PC1600"));
        }
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
        QVERIFY(disabledDuringSearch);
        QCOMPARE(Find<QComboBox>(&form, "MIDIChannelCombo")->currentText(), QString("3"));
        QVERIFY(Find<QPushButton>(&form, "OKButton")->isEnabled());
        ts.pump.onYield = nullptr;
    }

    // OK, the frame's close and Escape all refuse to leave over a bad value.
    void badValuesKeepTheWindowOpenByEveryWayOut() {
        TestProgram ts;
        MIDIForm form(*ts);
        LoadMidiConfiguration(*ts);
        TypeFreeMemory(form, "999");
        ts.prompter.expectMessage("Problem with Free Memory")
            .expectMessage("Problem with Free Memory")
            .expectMessage("Problem with Free Memory");
        Click(&form, "OKButton");
        QVERIFY(!form.close());
        QTest::keyClick(&form, Qt::Key_Escape);
        QVERIFY(form.isVisible());
        QVERIFY(ts.prompter.done());
        TypeFreeMemory(form, "1000");
        Click(&form, "OKButton");
        QVERIFY(!form.isVisible());
        QCOMPARE(StoredText(*ts, "FreeMemory"), std::string("1000"));
    }

    void settingsReachTheConfigurationRow() {
        TestProgram ts;
        MIDIForm form(*ts);
        LoadMidiConfiguration(*ts);
        int modelNotices = 0;
        ts->midi.subscribe([&] { ++modelNotices; });
        Find<QRadioButton>(&form, "ModelOption_1")->click();
        Find<QComboBox>(&form, "MIDIChannelCombo")->setCurrentIndex(11);
        Find<QComboBox>(&form, "TimeoutCombo")->setCurrentIndex(0);
        Find<QCheckBox>(&form, "ManualCheck")->click();
        Click(&form, "OKButton");
        QCOMPARE(StoredText(*ts, "LearnTolerance"), std::string("|0I1"));
        QCOMPARE(StoredText(*ts, "PC1600Model"), std::string("-1"));
        QCOMPARE(StoredText(*ts, "MIDIInChannel"), std::string("11"));
        // The windows with the model's controls are told at once.
        QVERIFY(modelNotices > 0);
    }

    void aPortThatCannotOpenIsNamed() {
        TestProgram ts;
        auto loop = std::make_shared<LoopbackBackend>(std::vector<std::string>{"Busy Port", "Free Port"});
        loop->refuse("Busy Port", "the device is in use");
        ts->midiLink.setSystemBackend(loop);
        MIDIForm form(*ts);
        LoadMidiConfiguration(*ts);
        ts.prompter.expectMessage("Cannot Open MIDI Port");
        ClickLine(Find<QListWidget>(&form, "MIDIOutDevicesList"), 0);
        QVERIFY(ts.prompter.done());
        QVERIFY(!ts->midiLink.MIDIOut.isOpen());
        ClickLine(Find<QListWidget>(&form, "MIDIOutDevicesList"), 1);
        QCOMPARE(ts->midiLink.MIDIOut.openName(), std::string("Free Port"));
    }

    void theVirtualDevicesSettingsAndMemory() {
        TestProgram ts;
        MIDIForm form(*ts);
        LoadMidiConfiguration(*ts);
        Find<QComboBox>(&form, "VirtualChannelCombo")->setCurrentIndex(4);
        Find<QSpinBox>(&form, "VirtualDelaySpin")->setValue(300);
        Find<QCheckBox>(&form, "VirtualPacingCheck")->click();
        QVERIFY(ts->midiLink.virtualDevice().settings().wirePacing);

        // Slow as it is now, the search still finds it on its channel.
        ts.prompter.expectMessage("Received Response", "Your PC1600(x) was found on MIDI In Channel 05!",
                                  MessageAnswer::OK);
        Click(&form, "TestButton");
        QVERIFY(ts.prompter.done());

        // Its memory goes to a file and comes back; a file that holds no dump is
        // refused with the reason (the device's own test covers what a dump is).
        const std::string saved = ts.dir.file("memory.syx");
        ts.prompter.expectSaveFile("Save the Memory of the Virtual PC1600", saved);
        Click(&form, "VirtualSaveButton");
        const std::string before = ts->midiLink.virtualDevice().memoryAsSyx();
        ts.prompter.expectOpenFile("Load the Memory of the Virtual PC1600", ts.dir.file("missing.syx"))
            .expectMessage("Cannot Load Sysex File")
            .expectOpenFile("Load the Memory of the Virtual PC1600", saved);
        Click(&form, "VirtualLoadButton");
        Click(&form, "VirtualLoadButton");
        QVERIFY(ts.prompter.done());
        QCOMPARE(ts->midiLink.virtualDevice().memoryAsSyx(), before);
    }

};

QTEST_MAIN(MIDIFormTest)
#include "MIDIForm_test.moc"

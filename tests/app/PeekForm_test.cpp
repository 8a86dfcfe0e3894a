#include <QListWidget>
#include <QPushButton>
#include <QtTest>

#include "TestProgram.h"
#include "sysex/AllPresetsDump.h"
#include "midilink/MIDIFormOperations.h"
#include "midilink/PeekForm.h"
#include "midilink/VirtualPC1600.h"
#include "base/MSBModule.h"
#include "midilink/MidiLink.h"
#include "db/PoolDatabase.h"
#include "midilink/MidiConfig.h"
#include "ui/StatusForm.h"

using namespace tavlo;
using namespace tavlo::testing;

namespace {

// The device's memory with these names in the first slots.
void StoreNames(VirtualPC1600& device, const std::vector<std::string>& names) {
    const std::string cleared = device.allPresetsDump();
    auto parsed = ParseAllPresetsDump(cleared);
    QVERIFY(parsed);
    for (std::size_t k = 0; k < names.size(); ++k) {
        std::string name = names[k];
        name.resize(16, ' ');
        parsed->entries[k].name = MSBModule::TextToNibbles(name);
    }
    device.receive(BuildAllPresetsDump(0, 0, parsed->entries));
}

QListWidget* List(PeekForm& form) { return form.findChild<QListWidget*>("PeekList"); }

}  // namespace

class PeekFormTest : public QObject {
    Q_OBJECT
private slots:
    // The window shows what the peek read from the device (the list's lines
    // are tested with the peek itself), and Peek Again asks anew.
    void listsTheNamesInTheDeviceAndPeeksAgain() {
        TestProgram ts;
        LoadMidiConfiguration(*ts);  // a first run: the virtual device
        StoreNames(ts->midiLink.virtualDevice(), {"Strings", "Lead~Pad"});
        PeekForm form(*ts);
        form.peek();
        QVERIFY(form.isVisible());
        QCOMPARE(List(form)->item(1)->text(), QString("01:  Lead>Pad        "));
        StoreNames(ts->midiLink.virtualDevice(), {"A", "B", "C"});
        QTest::mouseClick(form.findChild<QPushButton*>("PeekAgainButton"), Qt::LeftButton);
        QCOMPARE(List(form)->count(), 51);
        QCOMPARE(List(form)->item(2)->text(), QString("02:  C               "));
        QVERIFY(ts.prompter.seen().empty());
    }

    void theListFillsTheWindow() {
        TestProgram ts;
        LoadMidiConfiguration(*ts);
        PeekForm form(*ts);
        form.peek();
        // Sized for its widest line at first.
        QVERIFY(List(form)->width() >= List(form)->sizeHintForColumn(0));
        const int before = List(form)->height();
        form.resize(form.width() + 200, form.height() + 300);
        QApplication::processEvents();
        QVERIFY(List(form)->height() >= before + 250);
        QVERIFY(List(form)->width() >= form.width() - 40);
    }

    // The status window's Cancel hides it at once and ends the wait, with no
    // message and an empty list.
    void cancelClosesTheStatusWindowAtOnceAndEndsTheWait() {
        TestProgram ts;  // its prompter, clock, pump and folder
        StatusForm status;
        Program session(ts.prompter, status, ts.pump, ts.clock);
        QVERIFY(session.pool.open(ts.dir.file("Own.mdb")).ok());
        LoadMidiConfiguration(session);
        session.midi.ManualMode = true;  // only the dump or Cancel ends the wait
        auto* cancel = status.findChild<QPushButton*>("CancelButton");
        bool goneAtOnce = false;
        const std::int64_t start = ts.clock.now();
        ts.pump.onYield = [&] {
            if (ts.clock.now() - start != 3000) return;
            QVERIFY(status.isVisible() && cancel->isVisible());
            QTest::mouseClick(cancel, Qt::LeftButton);
            goneAtOnce = !status.isVisible();
        };
        PeekForm form(session);
        form.peek();
        QVERIFY(goneAtOnce);
        QVERIFY(!status.isVisible());
        QCOMPARE(List(form)->count(), 0);
        QVERIFY(ts.prompter.seen().empty());
        QVERIFY(ts.clock.now() - start < 3100);
    }
};

QTEST_MAIN(PeekFormTest)
#include "PeekForm_test.moc"

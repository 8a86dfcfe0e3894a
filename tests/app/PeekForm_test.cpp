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

class PeekFormTest : public QObject {
    Q_OBJECT
private slots:
    void listsTheNamesInTheDevice();
    void peekAgainAsksAnew();
    void noAnswerGivesTheAllPresetsMessageAndAnEmptyList();
    void theListFillsTheWindow();
    void cancelClosesTheStatusWindowAtOnceAndEndsTheWait();
};

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

void PeekFormTest::listsTheNamesInTheDevice() {
    TestProgram ts;
    LoadMidiConfiguration(*ts);  // a first run: the virtual device
    StoreNames(ts->midiLink.virtualDevice(), {"Strings", "Lead~Pad"});
    PeekForm form(*ts);
    form.peek();
    QVERIFY(form.isVisible());
    QListWidget* list = List(form);
    QCOMPARE(list->count(), 51);
    QCOMPARE(list->item(0)->text(), QString("00:  Strings         "));
    QCOMPARE(list->item(1)->text(), QString("01:  Lead>Pad        "));
    QCOMPARE(list->item(2)->text(), QString("02:  --Initialized-- "));
    QCOMPARE(ts.status.caption, std::string("Peeking at PC1600(x) Presets"));
    QVERIFY(ts.prompter.seen().empty());
}

void PeekFormTest::peekAgainAsksAnew() {
    TestProgram ts;
    LoadMidiConfiguration(*ts);
    PeekForm form(*ts);
    form.peek();
    QCOMPARE(List(form)->item(5)->text(), QString("05:  --Initialized-- "));
    StoreNames(ts->midiLink.virtualDevice(), {"A", "B", "C", "D", "E", "Fifth"});
    QTest::mouseClick(form.findChild<QPushButton*>("PeekAgainButton"), Qt::LeftButton);
    QCOMPARE(List(form)->count(), 51);
    QCOMPARE(List(form)->item(5)->text(), QString("05:  Fifth           "));
}

void PeekFormTest::noAnswerGivesTheAllPresetsMessageAndAnEmptyList() {
    TestProgram ts;
    LoadMidiConfiguration(*ts);
    ts->midiLink.MIDIOut.close();  // nobody hears the request
    ts.prompter.expectMessage(
        "Cannot Communicate with PC1600(x)",
        "There is no response from the PC1600(x) while waiting for ALL PRESETS.  Please check your MIDI Setup.",
        MessageAnswer::OK);
    PeekForm form(*ts);
    form.peek();
    QVERIFY(ts.prompter.done());
    QCOMPARE(ts.prompter.seen().size(), std::size_t(1));
    QCOMPARE(List(form)->count(), 0);
    QVERIFY(!ts.status.visible);
}

void PeekFormTest::theListFillsTheWindow() {
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

QTEST_MAIN(PeekFormTest)
void PeekFormTest::cancelClosesTheStatusWindowAtOnceAndEndsTheWait() {
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

#include "PeekForm_test.moc"

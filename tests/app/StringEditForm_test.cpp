#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSlider>
#include <QTimer>
#include <QtTest>
#include <functional>

#include "FormDriver.h"
#include "TestProgram.h"
#include "editor/PC1600XForm.h"
#include "midistrings/StringEditForm.h"
#include "midistrings/StringLearn.h"
#include "sysex/StringNotation.h"
#include "shell/Program.h"
#include "ui/Prompter.h"
#include "editor/EditorState.h"

using namespace tavlo;
using namespace tavlo::testing;

class StringEditFormTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void buildAButtonStringAndUpdate();
    void cancelLeavesTheControlUntouched();
    void pasteIsRefusedInTypedBytes();
    void theEditorsDoorsOpenIt();
    void recordSysexFromTheLearnPort();

private:
    void whenOpen(std::function<void(QDialog*)> steps) { WhenModalOpens(this, std::move(steps)); }
    template <typename T>
    static T* w(QWidget* dialog, const char* name) { return Find<T>(dialog, name); }

    std::unique_ptr<TestProgram> t;
    std::unique_ptr<StringEditForm> form;
};

void StringEditFormTest::init() {
    t = std::make_unique<TestProgram>();
    form = std::make_unique<StringEditForm>(**t);
}

void StringEditFormTest::cleanup() {
    form.reset();
    t.reset();
}

void StringEditFormTest::buildAButtonStringAndUpdate() {
    (*t)->editor.preset.Buttons[2].Name = "Go";
    bool ran = false;
    whenOpen([&](QDialog* d) {
        QCOMPARE(d->windowTitle(), QString("Editing String1 for Button #3  (Go)"));
        QCOMPARE(w<QComboBox>(d, "ChannelCombo")->currentText(), QString("Global Ch"));
        Choose(d, "MessageCombo", 0);
        Choose(d, "ChannelCombo", 0);
        auto* v1 = w<QSlider>(d, "Value1Slider");
        v1->setFocus();
        v1->setValue(60);
        QCOMPARE(w<QLineEdit>(d, "Value1Text")->text(), QString("C4  (60 = 3Ch)"));
        QTest::keyClick(v1, Qt::Key_Plus);
        QCOMPARE(v1->value(), 61);
        w<QSlider>(d, "Value2Slider")->setValue(127);
        QCOMPARE(w<QLabel>(d, "RenderLabel")->text().trimmed(), QString("90 3D 7F"));
        Click(d, "AppendButton");
        QCOMPARE(w<QListWidget>(d, "StringList")->count(), 1);
        QCOMPARE(w<QListWidget>(d, "StringList")->item(0)->text(), QString("90 3D 7F  (noteon)"));

        Choose(d, "MessageCombo", kSysexKind);
        QVERIFY(w<QComboBox>(d, "MakeCombo")->isVisible());
        QVERIFY(w<QPushButton>(d, "SpecialButton_1")->isVisible());   // rv: a button string
        QVERIFY(!w<QPushButton>(d, "SpecialButton_2")->isVisible());  // pr: faders only
        auto* text = w<QLineEdit>(d, "StringText");
        text->setFocus();
        // The last rendered message stays in the box to be edited; replace it.
        QCOMPARE(text->text().trimmed(), QString("90 3D 7F"));
        text->selectAll();
        QTest::keyClicks(text, "F0 41 F7");
        text->setCursorPosition(5);
        Click(d, "SpecialButton_0");
        QCOMPARE(text->text(), QString("F0 41 dv F7"));
        Click(d, "AppendButton");
        QCOMPARE(w<QListWidget>(d, "StringList")->count(), 2);
        QCOMPARE(text->text(), QString());

        // Move the sysex up to be sent first.
        Click(d, "MoveUpButton");
        QCOMPARE(w<QListWidget>(d, "StringList")->item(0)->text(), QString("F0 41 dv F7  (sysex)"));
        ran = true;
        Click(d, "UpdateStringButton");
    });
    QVERIFY(form->edit(StringDoor::Button1, 2));
    QVERIFY(ran);
    const WorkingPreset& p = (*t)->editor.preset;
    QCOMPARE(p.ButtonStrings1[2].Count, 2);
    QCOMPARE(p.Buttons[2].String1, std::string("F0 41 dv F7 90 3D 7F"));
    QVERIFY(t->prompter.done());
}

void StringEditFormTest::cancelLeavesTheControlUntouched() {
    const WorkingPreset before = (*t)->editor.preset;
    for (const bool escape : {false, true}) {  // the Cancel button, or Escape
        whenOpen([&](QDialog* d) {
            Choose(d, "MessageCombo", 4);
            Click(d, "AppendButton");
            if (escape) QTest::keyClick(d, Qt::Key_Escape);
            else Click(d, "CancelButton");
        });
        QVERIFY(!form->edit(StringDoor::Setup, 0));
        QVERIFY((*t)->editor.preset == before);
    }
}

void StringEditFormTest::pasteIsRefusedInTypedBytes() {
    whenOpen([&](QDialog* d) {
        Choose(d, "MessageCombo", kFreeByteKind);
        QCOMPARE(w<QLabel>(d, "StringLabel")->text(),
                 QString("Enter Bytes as Hex or Decimal numbers, separated by spaces"));
        auto* text = w<QLineEdit>(d, "StringText");
        text->setFocus();
        QApplication::clipboard()->setText("F0 F0 F0");
        text->selectAll();
        QTest::keyClicks(text, "7F");
        QTest::keyClick(text, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(text->text(), QString("7F"));
        Click(d, "AppendButton");
        QCOMPARE(w<QListWidget>(d, "StringList")->item(0)->text(), QString("7F  (freebyte)"));
        Click(d, "UpdateStringButton");
    });
    QVERIFY(form->edit(StringDoor::Setup, 0));
    QCOMPARE((*t)->editor.preset.SetupString, std::string("7F"));
}

void StringEditFormTest::theEditorsDoorsOpenIt() {
    PC1600XForm editor(**t);
    editor.show();
    Click(&editor, "PCSlider_5");
    Choose(&editor, "FunctionCombo", 3);
    Choose(&editor, "ParamFormatCombo", 1);
    whenOpen([&](QDialog* d) {
        QCOMPARE(d->windowTitle(), QString("Editing MIDI String for Fader #6  (Fader #6)"));
        QVERIFY(w<QLabel>(d, "PRNumberNotificationLabel")->text().contains("requires 2 pr bytes in a row"));
        Choose(d, "MessageCombo", kSysexKind);
        auto* text = w<QLineEdit>(d, "StringText");
        text->selectAll();
        QTest::keyClicks(text, "F0 00 F7");
        text->setCursorPosition(5);
        Click(d, "SpecialButton_2");
        QCOMPARE(text->text(), QString("F0 00 pr pr F7"));
        Click(d, "AppendButton");
        Click(d, "UpdateStringButton");
    });
    Click(&editor, "EditStringButton");
    QCOMPARE((*t)->editor.preset.Faders[5].MIDIString, std::string("F0 00 pr pr F7"));
    QCOMPARE(editor.findChild<QLineEdit*>("EditStringText")->text(), QString("F0 00 pr pr F7"));
}

void StringEditFormTest::recordSysexFromTheLearnPort() {
    struct Port : LearnMessages {
        std::vector<std::string> queue;
        void clear() override { queue.clear(); }
        std::string take() override {
            if (queue.empty()) return {};
            std::string m = queue.front();
            queue.erase(queue.begin());
            return m;
        }
    } port;
    QVERIFY(!form->findChild<QPushButton*>("LearnSysexButton")->isEnabled());
    form->setLearnSource(&port);
    t->prompter.expectMessage("About to Record Sysex", MessageAnswer::OK);
    whenOpen([&](QDialog* d) {
        QTimer::singleShot(0, d, [&port, d] {
            auto* done = w<QPushButton>(d, "DoneLearningButton");
            QVERIFY(done->isVisible());
            QCOMPARE(done->text(), QString("CLICK WHEN FINISHED LEARNING (total bytes available: 80)"));
            QVERIFY(!w<QPushButton>(d, "AppendButton")->isEnabled());
            port.queue.push_back(std::string("\xF0\x41\x10\xF7", 4));
        });
        Click(d, "LearnSysexButton");
        QCOMPARE(w<QListWidget>(d, "StringList")->count(), 1);
        QCOMPARE(w<QListWidget>(d, "StringList")->item(0)->text(), QString("F0 41 10 F7  (sysex)"));
        QVERIFY(!w<QPushButton>(d, "DoneLearningButton")->isVisible());
        Click(d, "UpdateStringButton");
    });
    // The session's pump is the test's fake one: the window's clicks come
    // through Qt's own event loop in between.
    t->pump.onYield = [] { QCoreApplication::processEvents(); };
    QTimer::singleShot(50, this, [this] {
        // End the pass once the message is in.
        QTimer* ender = new QTimer(this);
        connect(ender, &QTimer::timeout, this, [this, ender] {
            if (form->state().DoneLearningButton.find("total bytes: 4") != std::string::npos) {
                Click(form.get(), "DoneLearningButton");
                ender->stop();
                ender->deleteLater();
            }
        });
        ender->start(5);
    });
    QVERIFY(form->edit(StringDoor::Button1, 0));
    QCOMPARE((*t)->editor.preset.Buttons[0].String1, std::string("F0 41 10 F7"));
    QVERIFY(t->prompter.done());
}

QTEST_MAIN(StringEditFormTest)
#include "StringEditForm_test.moc"

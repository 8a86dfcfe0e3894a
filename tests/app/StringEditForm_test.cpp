// The string editor window's wiring; building, checking and limiting the
// strings are tested in core, and the editor's doors in the round trip.
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QTimer>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSlider>

#include "FormDriver.h"
#include "TestProgram.h"
#include "editor/EditorState.h"
#include "midistrings/StringEditForm.h"
#include "midistrings/StringLearn.h"
#include "sysex/StringNotation.h"

using namespace tavlo;
using namespace tavlo::testing;

class StringEditFormTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        t = std::make_unique<TestProgram>();
        form = std::make_unique<StringEditForm>(**t);
    }

    void cleanup() {
        form.reset();
        t.reset();
    }

    void buildAButtonStringAndUpdate() {
        (*t)->editor.preset.Buttons[2].Name = "Go";
        bool ran = false;
        whenOpen([&](QDialog* d) {
            QCOMPARE(d->windowTitle(), QString("Editing String1 for Button #3  (Go)"));
            Choose(d, "MessageCombo", 0);
            Choose(d, "ChannelCombo", 0);
            auto* v1 = w<QSlider>(d, "Value1Slider");
            v1->setFocus();
            v1->setValue(60);
            QTest::keyClick(v1, Qt::Key_Plus);
            QCOMPARE(w<QLineEdit>(d, "Value1Text")->text(), QString("C#4  (61 = 3Dh)"));
            w<QSlider>(d, "Value2Slider")->setValue(127);
            QCOMPARE(w<QLabel>(d, "RenderLabel")->text().trimmed(), QString("90 3D 7F"));
            Click(d, "AppendButton");

            Choose(d, "MessageCombo", kSysexKind);
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

            // Move the sysex up to be sent first.
            Click(d, "MoveUpButton");
            QCOMPARE(w<QListWidget>(d, "StringList")->item(0)->text(), QString("F0 41 dv F7  (sysex)"));
            ran = true;
            Click(d, "UpdateStringButton");
        });
        QVERIFY(form->edit(StringDoor::Button1, 2));
        QVERIFY(ran);
        QCOMPARE((*t)->editor.preset.Buttons[2].String1, std::string("F0 41 dv F7 90 3D 7F"));
        QVERIFY(t->prompter.done());
    }

    void cancelLeavesTheControlUntouched() {
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

    void pasteIsRefusedInTypedBytes() {
        whenOpen([&](QDialog* d) {
            Choose(d, "MessageCombo", kFreeByteKind);
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

    void recordSysexFromTheLearnPort() {
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
                QVERIFY(w<QPushButton>(d, "DoneLearningButton")->isVisible());
                QVERIFY(!w<QPushButton>(d, "AppendButton")->isEnabled());
                port.queue.push_back(std::string("\xF0\x41\x10\xF7", 4));
            });
            Click(d, "LearnSysexButton");
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

    void theControlsFollowTheMessageKind() {
        whenOpen([this](QDialog* d) {
            // Typed bytes only for the typed kinds.
            for (int kind : {0, 3, 4, 10}) {
                Choose(d, "MessageCombo", kind);
                QVERIFY2(!w<QLineEdit>(d, "StringText")->isVisible(), qPrintable(QString::number(kind)));
            }
            // Controllers 0 to 120, the last one reachable.
            Choose(d, "MessageCombo", 3);
            auto* list = w<QComboBox>(d, "CCNameListCombo");
            QCOMPARE(list->count(), 121);
            QCOMPARE(list->itemData(120).toInt(), 120);
            Choose(d, "CCNameListCombo", 120);
            QCOMPARE(form->state().Value1Slider, 120);
            // Return belongs to the typed bytes: it pastes no prefix.
            Choose(d, "MessageCombo", kSysexKind);
            form->state().SysexPrefixText = "F0 41";
            form->refresh();
            Type(d, "StringText", "10");
            QCOMPARE(w<QLineEdit>(d, "StringText")->text(), QString("10"));
            Click(d, "SysexPrefixButton");
            QCOMPARE(w<QLineEdit>(d, "StringText")->text(), QString("F0 41 10 F7"));
            Click(d, "CancelButton");
        });
        form->edit(StringDoor::Button1, 0);
    }

    void closingTheWindowEndsRecordSysex() {
        struct Port : LearnMessages {
            void clear() override {}
            std::string take() override { return {}; }
        } port;
        form->setLearnSource(&port);
        t->pump.onYield = [] { QCoreApplication::processEvents(); };
        t->prompter.expectMessage("About to Record Sysex", MessageAnswer::OK);
        bool overran = false;
        // A pass that ignores the close would never end: end it from outside.
        QTimer::singleShot(3000, this, [&] {
            overran = form->state().Learning;
            form->state().Learning = false;
            if (form->isVisible()) form->reject();
        });
        whenOpen([](QDialog* d) {
            QTimer::singleShot(0, d, [d] {
                QVERIFY(w<QPushButton>(d, "DoneLearningButton")->isEnabled());
                for (const char* name : {"MessageCombo", "ChannelCombo", "StringList", "Value1Slider", "StringText",
                                         "CancelButton", "AppendButton"})
                    QVERIFY2(!w<QWidget>(d, name)->isEnabled(), name);
                d->close();
            });
            Click(d, "LearnSysexButton");
        });
        QVERIFY(!form->edit(StringDoor::Button1, 0));
        QVERIFY(!overran);
        QVERIFY(!form->state().Learning);
        QVERIFY(t->prompter.done());
        // The window opens again and answers.
        whenOpen([](QDialog* d) {
            QVERIFY(w<QWidget>(d, "MessageCombo")->isEnabled());
            Click(d, "CancelButton");
        });
        form->edit(StringDoor::Button1, 0);
    }

private:
    void whenOpen(std::function<void(QDialog*)> steps) { WhenModalOpens(this, std::move(steps)); }
    template <typename T>
    static T* w(QWidget* dialog, const char* name) { return Find<T>(dialog, name); }

    std::unique_ptr<TestProgram> t;
    std::unique_ptr<StringEditForm> form;
};

QTEST_MAIN(StringEditFormTest)
#include "StringEditForm_test.moc"

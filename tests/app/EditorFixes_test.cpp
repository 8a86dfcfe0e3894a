#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFontMetrics>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiSubWindow>
#include <QMimeData>
#include <QPushButton>
#include <QSlider>
#include <QTimer>
#include <QtTest>

#include "FormDriver.h"
#include "TempDir.h"
#include "TestProgram.h"
#include "db/Database.h"
#include "db/PoolDatabase.h"
#include "editor/EditorState.h"
#include "editor/PC1600XForm.h"
#include "midistrings/StringEditForm.h"
#include "midistrings/StringLearn.h"
#include "shell/Program.h"
#include "shell/TavloController.h"
#include "shell/TavloProgram.h"
#include "sysex/StringNotation.h"
#include "ui/Prompter.h"

using namespace tavlo;
using namespace tavlo::testing;

// Fixes in the string editor and the preset editor, each as a user meets it.
class EditorFixesTest : public QObject, FormDriver {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void closingTheStringEditorEndsRecordSysex();
    void returnInTheTypedBytesPastesNoPrefix();
    void theTypedBytesShowOnlyForTypedKinds();
    void controllerListsHoldZeroTo120ByNumber();
    void upMovesAPanelSliderHandleUp();
    void aLabelSetsItsDefaultOnlyOnADoubleClick();
    void aForeignDropPastesNothing();
    void panelCaptionsAreShownWhole();
    void aNewPresetSaysWhereItComesFrom();

private:
    // Runs `steps` in the string editor opened on button 1's first string.
    void inStringEditor(std::function<void(QDialog*)> steps) {
        WhenModalOpens(this, [steps](QDialog* d) {
            steps(d);
            if (d->isVisible()) Click(d, "CancelButton");
        });
        strings->edit(StringDoor::Button1, 0);
    }

    std::unique_ptr<TestProgram> t;
    std::unique_ptr<PC1600XForm> form;
    std::unique_ptr<StringEditForm> strings;
};

void EditorFixesTest::init() {
    t = std::make_unique<TestProgram>();
    form = std::make_unique<PC1600XForm>(**t);
    strings = std::make_unique<StringEditForm>(**t);
    root = form.get();
    form->show();
    QVERIFY(QTest::qWaitForWindowExposed(form.get()));
}

void EditorFixesTest::cleanup() {
    strings.reset();
    form.reset();
    t.reset();
}

void EditorFixesTest::closingTheStringEditorEndsRecordSysex() {
    struct Port : LearnMessages {
        void clear() override {}
        std::string take() override { return {}; }
    } port;
    strings->setLearnSource(&port);
    t->pump.onYield = [] { QCoreApplication::processEvents(); };
    t->prompter.expectMessage("About to Record Sysex", MessageAnswer::OK);
    bool overran = false;
    // A pass that ignores the close would never end: end it from outside.
    QTimer::singleShot(3000, this, [&] {
        overran = strings->state().Learning;
        strings->state().Learning = false;
        if (strings->isVisible()) strings->reject();
    });
    WhenModalOpens(this, [](QDialog* d) {
        QTimer::singleShot(0, d, [d] {
            QVERIFY(Find<QPushButton>(d, "DoneLearningButton")->isEnabled());
            for (const char* name : {"MessageCombo", "ChannelCombo", "StringList", "Value1Slider", "StringText",
                                     "CancelButton", "AppendButton"})
                QVERIFY2(!Find<QWidget>(d, name)->isEnabled(), name);
            d->close();
        });
        Click(d, "LearnSysexButton");
    });
    QVERIFY(!strings->edit(StringDoor::Button1, 0));
    QVERIFY(!overran);
    QVERIFY(!strings->state().Learning);
    QVERIFY(t->prompter.done());
    // The window opens again and answers.
    inStringEditor([](QDialog* d) { QVERIFY(Find<QWidget>(d, "MessageCombo")->isEnabled()); });
}

void EditorFixesTest::returnInTheTypedBytesPastesNoPrefix() {
    inStringEditor([this](QDialog* d) {
        Choose(d, "MessageCombo", kSysexKind);
        strings->state().SysexPrefixText = "F0 41";
        strings->refresh();
        QVERIFY(Find<QPushButton>(d, "SysexPrefixButton")->isEnabled());
        Type(d, "StringText", "10");
        QTest::keyClick(Find<QLineEdit>(d, "StringText"), Qt::Key_Return);
        QCOMPARE(Find<QLineEdit>(d, "StringText")->text(), QString("10"));
        Click(d, "SysexPrefixButton");
        QCOMPARE(Find<QLineEdit>(d, "StringText")->text(), QString("F0 41 10 F7"));
    });
}

void EditorFixesTest::theTypedBytesShowOnlyForTypedKinds() {
    inStringEditor([](QDialog* d) {
        for (int kind : {0, 3, 4, 10}) {
            Choose(d, "MessageCombo", kind);
            QVERIFY2(!Find<QLineEdit>(d, "StringText")->isVisible(), qPrintable(QString::number(kind)));
        }
        Choose(d, "MessageCombo", kSysexKind);
        QVERIFY(Find<QLineEdit>(d, "StringText")->isVisible());
    });
}

void EditorFixesTest::controllerListsHoldZeroTo120ByNumber() {
    inStringEditor([this](QDialog* d) {
        Choose(d, "MessageCombo", 3);
        auto* list = Find<QComboBox>(d, "CCNameListCombo");
        QCOMPARE(list->count(), 121);
        QVERIFY(list->itemText(7).startsWith("7 - "));
        const int last = list->count() - 1;
        QCOMPARE(list->itemData(last).toInt(), 120);
        Choose(d, "CCNameListCombo", last);
        QCOMPARE(strings->state().Value1Slider, 120);
    });
    QCOMPARE(w<QComboBox>("CCNameListCombo")->count(), 121);
}

void EditorFixesTest::upMovesAPanelSliderHandleUp() {
    auto* slider = w<QSlider>("PCSlider_0");
    for (const int polarity : {-1, 0}) {
        (*t)->editor.preset.Faders[0].Polarity = static_cast<std::int16_t>(polarity);
        (*t)->editor.preset.Faders[0].Value = 64;
        (*t)->editor.notifyChanged();
        slider->setFocus();
        const int before = slider->sliderPosition();
        // The panel draws a slider's minimum at the top: up is toward it.
        QVERIFY(slider->invertedAppearance());
        QTest::keyClick(slider, Qt::Key_Up);
        QCOMPARE(slider->sliderPosition(), before - 1);
        QTest::keyClick(slider, Qt::Key_PageUp);
        QVERIFY(slider->sliderPosition() < before - 1);
    }
}

void EditorFixesTest::aLabelSetsItsDefaultOnlyOnADoubleClick() {
    click("PCSlider_0");
    choose("FunctionCombo", 1);
    auto rows = [this] {
        return (*t)->pool.db().queryInt("SELECT COUNT(*) FROM DefaultsTable WHERE Field = 'FaderChannel'");
    };
    (*t)->pool.db().exec("DELETE FROM DefaultsTable WHERE Field = 'FaderChannel'");
    QTest::mouseClick(w<QLabel>("ChannelLabel"), Qt::LeftButton);
    QCOMPARE(rows(), 0);
    // The name boxes take 12 characters.
    QCOMPARE(w<QLineEdit>("NameText")->maxLength(), 12);
    QCOMPARE(w<QLineEdit>("BNameText")->maxLength(), 12);
}

void EditorFixesTest::aForeignDropPastesNothing() {
    click("PCSlider_2");
    choose("FunctionCombo", 1);
    type("NameText", "Src");
    click("CopyButton");
    // A press on a slider leaves "FADER" as the drag kind until a drop.
    (*t)->editor.DragType = "FADER";
    QMimeData mime;
    mime.setText("dropped from a browser");
    t->prompter.expectMessage("Cannot Drop", "Cannot Drop a TEXT onto a FADER", MessageAnswer::OK);
    form->dropOn(false, 8, &mime);
    QCOMPARE((*t)->editor.preset.Faders[8].Name, std::string());
    QVERIFY(t->prompter.done());
}

void EditorFixesTest::panelCaptionsAreShownWhole() {
    click("PCSlider_0");
    choose("FunctionCombo", 1);
    type("NameText", "BalanceArm12");
    click("PCButton_0");
    choose("BFunctionCombo", 1);
    type("BNameText", "Master Volum");
    const auto whole = [](const QString& text) { return QString(text).remove(' ').remove('\n'); };
    for (QWidget* control : {w<QWidget>("FaderLabel_0"), w<QWidget>("PCButton_0")}) {
        const auto* label = qobject_cast<QLabel*>(control);
        const QString text = label ? label->text() : qobject_cast<QPushButton*>(control)->text();
        const QString caption = control->toolTip();
        QCOMPARE(whole(text), whole(caption));
        const QFontMetrics metrics(control->font());
        for (const QString& line : text.split('\n'))
            QVERIFY2(metrics.horizontalAdvance(line) <= control->width() - 2, qPrintable(line));
        QVERIFY(text.split('\n').size() * metrics.lineSpacing() <= control->height());
    }
}

void EditorFixesTest::aNewPresetSaysWhereItComesFrom() {
    TempDir dir;
    ScriptedPrompter prompter;
    TavloProgram program(prompter);
    QVERIFY(program.start(dir.file("Tavlo.mdb")));
    program.controller()->findChild<QAction*>("NewPresetMenu")->trigger();
    QCOMPARE(program.controller()->editorForm()->windowTitle(),
             QString("Editing Preset from Pool - No Memory Image"));
}

QTEST_MAIN(EditorFixesTest)
#include "EditorFixes_test.moc"

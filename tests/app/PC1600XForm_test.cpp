// The editor window's wiring: each control reaches its flow in the editor
// and shows what the flow left. The rules themselves are tested in core.
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QFontMetrics>
#include <QLineEdit>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QMdiSubWindow>
#include <QMimeData>
#include <QPushButton>
#include <QSlider>

#include "FormDriver.h"
#include "TempDir.h"
#include "TestProgram.h"
#include "db/PoolDatabase.h"
#include "editor/EditorDefaults.h"
#include "editor/EditorState.h"
#include "editor/PC1600XForm.h"
#include "editor/Scenes.h"
#include "midilink/MidiConfig.h"
#include "shell/TavloController.h"
#include "shell/TavloProgram.h"

using namespace tavlo;
using namespace tavlo::testing;

class PC1600XFormTest : public QObject, FormDriver {
    Q_OBJECT
private slots:
    void init() {
        t = std::make_unique<TestProgram>();
        form = std::make_unique<PC1600XForm>(**t);
        root = form.get();
        form->show();
        QVERIFY(QTest::qWaitForWindowExposed(form.get()));
    }

    void cleanup() {
        form.reset();
        t.reset();
    }

    void fitsTheScreenAndTabsFollowThePanel() {
        QVERIFY(form->width() <= 1366 - 20);
        QVERIFY(form->height() <= 768 - 120);
        // From the last slider the tab key goes on to the first button.
        w<QSlider>("PCSlider_17")->setFocus();
        QCOMPARE(form->focusWidget()->objectName(), QString("PCSlider_17"));
        QTest::keyClick(form->focusWidget(), Qt::Key_Tab);
        QCOMPARE(form->focusWidget()->objectName(), QString("PCButton_0"));
        w<QSlider>("PCSlider_3")->setFocus();
        QTest::keyClick(form->focusWidget(), Qt::Key_Tab);
        QCOMPARE(form->focusWidget()->objectName(), QString("PCSlider_4"));
    }

    void choosingAFunctionShowsItsControlsAndSetsTheRange() {
        click("PCSlider_3");
        QCOMPARE(w<QGroupBox>("FaderFrame")->title(), QString("Control Settings for FADER 4"));
        QVERIFY(!w<QLineEdit>("NameText")->isVisible());

        choose("FunctionCombo", 1);
        QCOMPARE(w<QLabel>("FaderLabel_3")->text().remove(' ').remove('\n'), QString("Fader#4(cc)"));
        QVERIFY(w<QSlider>("ChannelSlider")->isVisible());
        QVERIFY(!w<QComboBox>("ParamFormatCombo")->isVisible());
        type("NameText", "Cutoff");
        QCOMPARE(w<QLabel>("FaderLabel_3")->toolTip(), QString("Cutoff  (cc)"));
        type("ChannelText", "global");
        QCOMPARE(w<QLineEdit>("ChannelText")->text(), QString("ChO"));
        type("MaxValText", "100");
        type("MinValText", "100");
        QCOMPARE(w<QLineEdit>("MinValText")->text(), QString("99"));
        QCOMPARE(w<QSlider>("PCSlider_3")->minimum(), 99);

        // A pair's slider and list move together; digits typed into the list pick the controller.
        auto* cc = w<QSlider>("CCNumSlider");
        cc->setFocus();
        QTest::keyClick(cc, Qt::Key_End);
        QTest::keyClick(cc, Qt::Key_PageDown);
        QCOMPARE(editor().preset.Faders[3].CCNum, 115);
        QCOMPARE(w<QComboBox>("CCNameListCombo")->currentIndex(), 115);
        auto* list = w<QComboBox>("CCNameListCombo");
        list->setFocus();
        QTest::keyClicks(list, "74");
        QCOMPARE(editor().preset.Faders[3].CCNum, 74);

        choose("FunctionCombo", 3);
        QVERIFY(w<QComboBox>("ParamFormatCombo")->isVisible());
        choose("FunctionCombo", 2);
        QVERIFY(!w<QCheckBox>("Check1_3")->isEnabled());
        click("Check1_5");
        QCOMPARE(editor().preset.Faders[3].MasterOf[5], 'X');
        choose("FunctionCombo", 4);
        QVERIFY(w<QComboBox>("MakeCombo")->isVisible());

        choose("FunctionCombo", 0);
        QCOMPARE(editor().preset.Faders[3].Name, std::string());
        QCOMPARE(w<QLabel>("FaderLabel_3")->toolTip(), QString());
    }

    void buttonFunctionsAndTheirParameterTexts() {
        click("PCButton_6");
        QVERIFY(!w<QGroupBox>("FaderFrame")->isVisible());
        QCOMPARE(w<QGroupBox>("ButtonFrame")->title(), QString("Settings for Button #7"));
        choose("BFunctionCombo", 4);
        type("BNameText", "Kick");
        QCOMPARE(w<QPushButton>("PCButton_6")->text(), QString("Kick\n(note)"));
        type("BNoteText", "d#3");
        QCOMPARE(w<QLineEdit>("BNoteText")->text(), QString("D#3 051"));
        type("VelocityText", "200");
        QCOMPARE(w<QLineEdit>("VelocityText")->text(), QString("127"));

        // The refusal on the PC1600 turns the list back to Off.
        (*t)->midi.PC1600Model = true;
        t->prompter.expectMessage("Cannot Set Button");
        choose("BFunctionCombo", 8);
        QCOMPARE(w<QComboBox>("BFunctionCombo")->currentIndex(), 0);
        QVERIFY(t->prompter.done());
    }

    void labelDoubleClickSetsTheDefaultWithAFlash() {
        click("PCSlider_0");
        choose("FunctionCombo", 1);
        type("ChannelText", "10");
        auto* label = w<QLabel>("ChannelLabel");
        (*t)->pool.db().exec("DELETE FROM DefaultsTable WHERE Field = 'FaderChannel'");
        QTest::mouseClick(label, Qt::LeftButton);
        QVERIFY(!ReadDefaultNumber((*t)->pool.db(), "FaderChannel"));
        QTest::mouseDClick(label, Qt::LeftButton);
        QCOMPARE(ReadDefaultNumber((*t)->pool.db(), "FaderChannel").value_or(-1), 9);
        QVERIFY(label->styleSheet().contains("#d00000"));
        QTRY_VERIFY_WITH_TIMEOUT(!label->styleSheet().contains("#d00000"), 1000);

        // A new fader takes the default when the function is chosen.
        click("PCSlider_1");
        choose("FunctionCombo", 1);
        QCOMPARE(editor().preset.Faders[1].Channel, 9);
    }

    void copyPasteSpreadAndOtherScene() {
        click("PCSlider_4");
        choose("FunctionCombo", 1);
        type("ChannelText", "3");
        click("CopyButton");
        QVERIFY(w<QPushButton>("PasteButton")->isVisible());
        QCOMPARE(w<QPushButton>("PasteButton")->text(), QString("Paste Fader 5"));
        click("PCSlider_10");
        click("PasteButton");
        QCOMPARE(editor().preset.Faders[10].Function, 1);
        QCOMPARE(editor().preset.Faders[10].Channel, 2);

        // Only Tavlo's own drags paste; a press on a slider leaves "FADER" as
        // the drag kind until a drop.
        editor().DragType = "FADER";
        QMimeData mime;
        mime.setText("dropped from a browser");
        t->prompter.expectMessage("Cannot Drop", "Cannot Drop a TEXT onto a FADER", MessageAnswer::OK);
        form->dropOn(false, 8, &mime);
        QCOMPARE(editor().preset.Faders[8].Function, 0);

        // The spread and the other-scene buttons ask their dialogs.
        click("PCSlider_4");
        t->prompter.expectChoice("SpreadForm", [](const ChoiceRequest&) { return ChoiceAnswer{}; });
        click("SpreadButton");
        click("PCButton_2");
        choose("BFunctionCombo", 9);
        t->prompter.expectMessage("Cannot Select a Scene", "There are no Scenes in the Preset Pool.", MessageAnswer::OK);
        click("BOtherSceneButton");
        QVERIFY(t->prompter.done());
    }

    void aHeldPressDragsAndAClickDoesNot() {
        editor().preset.Faders[2].Function = 1;
        editor().preset.Faders[2].Name = "Src";
        // The label drags its fader as the slider's handle does; a press on the
        // slider's groove moves it, and a slider that moved isn't dragged.
        auto* source = w<QLabel>("FaderLabel_2");
        QTest::mousePress(source, Qt::LeftButton);
        QTest::qWait(200);
        QTest::mouseRelease(source, Qt::LeftButton);
        QTest::qWait(600);
        QVERIFY(!w<QPushButton>("PasteButton")->isVisible());

        QTest::mousePress(source, Qt::LeftButton);
        QTest::qWait(800);
        QTest::mouseRelease(source, Qt::LeftButton);
        QCOMPARE(w<QPushButton>("PasteButton")->text(), QString("Paste Fader 3"));
        QCOMPARE(t->program->editor.DragType, std::string("FADER"));

        // Dropped on fader 9.
        QMimeData mime;
        mime.setData("application/x-tavlo-control", "FADER");
        form->dropOn(false, 8, &mime);
        QCOMPARE(editor().preset.Faders[8].Name, std::string("Src"));
    }

    void setupFrame() {
        click("SetupStringButton");
        type("SChannelText", "3");
        type("SVolumeText", "200");
        QCOMPARE(w<QLineEdit>("SVolumeText")->text(), QString("127"));
        type("SBankText", "5");
        t->prompter.expectMessage("About to Make Channel Setups Same", MessageAnswer::Yes);
        click("MakeSameButton");
        QCOMPARE(editor().preset.SetupChannels[15].Bank, 6);
        QTest::mouseDClick(w<QLabel>("SetupChannelMapLabel"), Qt::LeftButton);
        QCOMPARE((*t)->pool.db().queryInt("SELECT COUNT(*) FROM DefaultsTable WHERE Field LIKE 'SetupChannel%'"), 16);
        QVERIFY(t->prompter.done());
    }

    void theOriginalPC1600LosesSetupSceneAndBankMSB() {
        click("SetupStringButton");
        for (const bool pc1600 : {true, false}) {
            // The configuration window's OK tells everyone that the model changed.
            t->program->midi.PC1600Model = pc1600;
            t->program->midi.notifyChanged();
            for (const char* name : {"SelectPresetSceneCombo", "SOtherSceneButton", "SSceneLabel"})
                QVERIFY2(w<QWidget>(name)->isVisible() == !pc1600, name);
            QVERIFY(w<QWidget>("MSBCheck")->isEnabled() == !pc1600);
        }
    }

    void panelCaptionsShowWholeAndUpMovesAHandleUp() {
        click("PCSlider_0");
        choose("FunctionCombo", 1);
        QCOMPARE(w<QLineEdit>("NameText")->maxLength(), 12);
        QCOMPARE(w<QLineEdit>("BNameText")->maxLength(), 12);
        type("NameText", "BalanceArm12");
        click("PCButton_0");
        choose("BFunctionCombo", 1);
        type("BNameText", "Master Volum");
        const auto whole = [](const QString& text) { return QString(text).remove(' ').remove('\n'); };
        for (QWidget* control : {w<QWidget>("FaderLabel_0"), w<QWidget>("PCButton_0")}) {
            const auto* label = qobject_cast<QLabel*>(control);
            const QString text = label ? label->text() : qobject_cast<QPushButton*>(control)->text();
            QCOMPARE(whole(text), whole(control->toolTip()));
            const QFontMetrics metrics(control->font());
            for (const QString& line : text.split('\n'))
                QVERIFY2(metrics.horizontalAdvance(line) <= control->width() - 2, qPrintable(line));
            QVERIFY(text.split('\n').size() * metrics.lineSpacing() <= control->height());
        }

        // The panel draws a slider's minimum at the top: up is toward it,
        // whichever way the fader's polarity runs.
        auto* slider = w<QSlider>("PCSlider_0");
        for (const int polarity : {-1, 0}) {
            editor().preset.Faders[0].Polarity = static_cast<std::int16_t>(polarity);
            editor().preset.Faders[0].Value = 64;
            editor().notifyChanged();
            slider->setFocus();
            const int before = slider->sliderPosition();
            QVERIFY(slider->invertedAppearance());
            QTest::keyClick(slider, Qt::Key_Up);
            QCOMPARE(slider->sliderPosition(), before - 1);
            QTest::keyClick(slider, Qt::Key_PageUp);
            QVERIFY(slider->sliderPosition() < before - 1);
        }
    }

    void closingAsksAndOnlyHides() {
        click("PCButton_1");
        choose("BFunctionCombo", 1);
        t->prompter.expectMessage("Store Preset in Pool?", MessageAnswer::Cancel);
        form->close();
        QVERIFY(form->isVisible());
        t->prompter.expectMessage("Store Preset in Pool?", MessageAnswer::No);
        form->close();
        QVERIFY(!form->isVisible());
        QVERIFY(t->prompter.done());
    }

    void theMainWindowOpensTheEditorForANewPreset() {
        TempDir dir;
        ScriptedPrompter prompter;
        TavloProgram program(prompter);
        QVERIFY(program.start(dir.file("Tavlo.mdb")));
        TavloController* main = program.controller();
        main->show();
        auto* menu = main->findChild<QAction*>("NewPresetMenu");
        program.program().editor.preset.Name = "stale";
        menu->trigger();
        PC1600XForm* editorForm = main->editorForm();
        QCOMPARE(program.program().editor.preset.Name, std::string());
        QCOMPARE(editorForm->windowTitle(), QString("Editing Preset from Pool - No Memory Image"));
        // The string editor's controllers: 0 to 120, each line with its number.
        auto* controllers = editorForm->findChild<QComboBox*>("CCNameListCombo");
        QCOMPARE(controllers->count(), 121);
        QVERIFY(controllers->itemText(7).startsWith("7 - "));
        auto* frame = qobject_cast<QMdiSubWindow*>(editorForm->parentWidget());
        QVERIFY(frame);
        // Fits the main window's area on a 1366x768 screen.
        QVERIFY(frame->sizeHint().width() <= 1366);
        frame->close();
        QVERIFY(!frame->isVisible());
        menu->trigger();
        QVERIFY(frame->isVisible());
        QVERIFY(prompter.done());
    }

    // The editor's preset as text, and back into the pool under its name.
    void savesAndGetsAPresetTextFile() {
        editor().preset.Name = "Texted";
        editor().preset.Faders[3].Name = "Level";
        const std::string path = t->dir.file("texted.tpr");
        t->prompter.expectSaveFile("Save Preset to Sysex or Tavlo Format File", path);
        w<QPushButton>("SavePresetSysexButton")->click();
        t->prompter.expectOpenFile("Get Preset from File (Tavlo Format or Sysex File)", path);
        t->prompter.expectMessage("About to Load Tavlo Format Preset", MessageAnswer::No);
        w<QPushButton>("LoadPresetSysexButton")->click();
        QVERIFY(t->prompter.done());
        QVERIFY(editor().preset.ID > 0);
        QCOMPARE(QString::fromStdString(editor().preset.Faders[3].Name), QString("Level"));
    }

private:
    EditorState& editor() { return (*t)->editor; }

    std::unique_ptr<TestProgram> t;
    std::unique_ptr<PC1600XForm> form;
};

QTEST_MAIN(PC1600XFormTest)
#include "PC1600XForm_test.moc"

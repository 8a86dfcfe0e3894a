#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTimer>
#include <QtTest>

#include "FormDriver.h"
#include "TestProgram.h"
#include "editor/EditorDefaults.h"
#include "editor/PC1600XForm.h"
#include "editor/Scenes.h"
#include "db/Database.h"
#include "shell/Program.h"
#include "ui/Prompter.h"
#include "db/PoolDatabase.h"
#include "editor/EditorState.h"
#include "midilink/MidiConfig.h"
#include "shell/TavloController.h"
#include "shell/TavloProgram.h"
#include "TempDir.h"
#include <QAction>
#include <QMdiSubWindow>

using namespace tavlo;
using namespace tavlo::testing;

class PC1600XFormTest : public QObject, FormDriver {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void fitsTheScreenAndTabsFollowThePanel();
    void choosingAFunctionShowsItsControlsAndSetsTheRange();
    void buttonFunctionsAndTheirParameterTexts();
    void labelClickSetsTheDefaultWithAFlash();
    void makeAndSelectAScene();
    void copyPasteAndSpread();
    void anotherPresetsSceneFromAllScenesForm();
    void aHeldPressDragsAndAClickDoesNot();
    void setupFrame();
    void theOriginalPC1600LosesSetupSceneAndBankMSB();
    void closingAsksAndOnlyHides();
    void theMainWindowOpensTheEditorForANewPreset();

private:
    EditorState& editor() { return (*t)->editor; }

    std::unique_ptr<TestProgram> t;
    std::unique_ptr<PC1600XForm> form;
};

void PC1600XFormTest::init() {
    t = std::make_unique<TestProgram>();
    form = std::make_unique<PC1600XForm>(**t);
    root = form.get();
    form->show();
    QVERIFY(QTest::qWaitForWindowExposed(form.get()));
}

void PC1600XFormTest::cleanup() {
    form.reset();
    t.reset();
}

void PC1600XFormTest::fitsTheScreenAndTabsFollowThePanel() {
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
    QCOMPARE(w<QPushButton>("MakeSceneButton")->toolTip(), QString("Make a New Scene from these Fader positions"));
    QCOMPARE(w<QPushButton>("SetupStringButton")->text(), QString("Preset Setup Information"));
    QCOMPARE(w<QCheckBox>("MSBCheck")->text(), QString("Send MSB (unchecked sends LSB)"));
    // Later work: in place, disabled.
    for (const char* name : {"MapFaderButton", "SimulateButton", "PrintButton"}) QVERIFY2(!w<QWidget>(name)->isEnabled(), name);
}

void PC1600XFormTest::choosingAFunctionShowsItsControlsAndSetsTheRange() {
    click("PCSlider_3");
    QCOMPARE(w<QGroupBox>("FaderFrame")->title(), QString("Control Settings for FADER 4"));
    QVERIFY(w<QSlider>("PCSlider_3")->styleSheet().contains("border"));
    QVERIFY(!w<QLineEdit>("NameText")->isVisible());

    choose("FunctionCombo", 1);
    QCOMPARE(editor().preset.Faders[3].Function, 1);
    QCOMPARE(w<QLabel>("FaderLabel_3")->toolTip(), QString("Fader #4 (cc)"));
    QCOMPARE(w<QLabel>("FaderLabel_3")->text().remove(' ').remove('\n'), QString("Fader#4(cc)"));
    QVERIFY(w<QSlider>("ChannelSlider")->isVisible());
    QVERIFY(w<QComboBox>("ModeCombo")->isVisible());
    QVERIFY(!w<QComboBox>("ParamFormatCombo")->isVisible());

    type("NameText", "Cutoff");
    QCOMPARE(editor().preset.Faders[3].Name, std::string("Cutoff"));
    QCOMPARE(w<QLabel>("FaderLabel_3")->toolTip(), QString("Cutoff  (cc)"));
    type("ChannelText", "global");
    QCOMPARE(w<QLineEdit>("ChannelText")->text(), QString("ChO"));
    QCOMPARE(editor().preset.Faders[3].Channel, 16);
    type("MaxValText", "100");
    type("MinValText", "100");
    QCOMPARE(editor().preset.Faders[3].Max, 100);
    QCOMPARE(editor().preset.Faders[3].Min, 99);
    QCOMPARE(w<QLineEdit>("MinValText")->text(), QString("99"));
    QCOMPARE(w<QSlider>("PCSlider_3")->minimum(), 99);
    QCOMPARE(w<QSlider>("PCSlider_3")->maximum(), 100);

    // The keys of a pair's slider.
    auto* cc = w<QSlider>("CCNumSlider");
    cc->setFocus();
    QTest::keyClick(cc, Qt::Key_End);
    QCOMPARE(editor().preset.Faders[3].CCNum, 127);
    QTest::keyClick(cc, Qt::Key_PageDown);
    QCOMPARE(editor().preset.Faders[3].CCNum, 115);
    QCOMPARE(w<QComboBox>("CCNameListCombo")->currentIndex(), 115);
    // Digits typed into the controller list pick the controller.
    auto* list = w<QComboBox>("CCNameListCombo");
    list->setFocus();
    QTest::keyClicks(list, "74");
    QCOMPARE(editor().preset.Faders[3].CCNum, 74);

    choose("FunctionCombo", 3);
    QVERIFY(w<QComboBox>("ParamFormatCombo")->isVisible());
    QVERIFY(w<QLineEdit>("EditStringText")->isVisible());
    choose("ParamFormatCombo", 11);
    QCOMPARE(w<QSlider>("MinValSlider")->minimum(), -100);
    QCOMPARE(w<QSlider>("MinValSlider")->maximum(), 99);

    choose("FunctionCombo", 2);
    QVERIFY(w<QCheckBox>("Check1_0")->isVisible());
    QVERIFY(!w<QCheckBox>("Check1_3")->isEnabled());
    click("Check1_5");
    QCOMPARE(editor().preset.Faders[3].MasterOf[5], 'X');

    choose("FunctionCombo", 4);
    QVERIFY(w<QComboBox>("MakeCombo")->isVisible());
    QVERIFY(!w<QLineEdit>("NameText")->isVisible());
    QCOMPARE(editor().preset.Faders[3].Function, 2);

    choose("FunctionCombo", 0);
    QCOMPARE(editor().preset.Faders[3].Name, std::string());
    QCOMPARE(w<QLabel>("FaderLabel_3")->toolTip(), QString());
}

void PC1600XFormTest::buttonFunctionsAndTheirParameterTexts() {
    click("PCButton_6");
    QVERIFY(w<QGroupBox>("ButtonFrame")->isVisible());
    QVERIFY(!w<QGroupBox>("FaderFrame")->isVisible());
    QCOMPARE(w<QGroupBox>("ButtonFrame")->title(), QString("Settings for Button #7"));
    QVERIFY(w<QPushButton>("PCButton_6")->styleSheet().contains("#FFFFFF"));
    choose("BFunctionCombo", 4);
    type("BNameText", "Kick");
    QCOMPARE(w<QPushButton>("PCButton_6")->text(), QString("Kick\n(note)"));
    type("BNoteText", "d#3");
    QCOMPARE(editor().preset.Buttons[6].Note, 51);
    QCOMPARE(w<QLineEdit>("BNoteText")->text(), QString("D#3 051"));
    type("VelocityText", "Rem");
    QCOMPARE(editor().preset.Buttons[6].Velocity, 129);
    type("VelocityText", "200");
    QCOMPARE(w<QLineEdit>("VelocityText")->text(), QString("127"));
    type("BChannelText", "global");
    QCOMPARE(w<QLineEdit>("BChannelText")->text(), QString("ChOut"));

    (*t)->midi.PC1600Model = true;
    t->prompter.expectMessage("Cannot Set Button", "The PC1600 version (non-X) cannot set buttons to SEND FADER or SEND SCENE",
                              MessageAnswer::OK);
    choose("BFunctionCombo", 8);
    QCOMPARE(w<QComboBox>("BFunctionCombo")->currentIndex(), 0);
    QCOMPARE(editor().preset.Buttons[6].Function, 0);
    QVERIFY(t->prompter.done());
}

void PC1600XFormTest::labelClickSetsTheDefaultWithAFlash() {
    click("PCSlider_0");
    choose("FunctionCombo", 1);
    type("ChannelText", "10");
    auto* label = w<QLabel>("ChannelLabel");
    QTest::mouseDClick(label, Qt::LeftButton);
    QCOMPARE(ReadDefaultNumber((*t)->pool.db(), "FaderChannel").value_or(-1), 9);
    QVERIFY(label->styleSheet().contains("color"));
    auto* timer = form->findChild<QTimer*>("LabelClickTimer");
    QVERIFY(timer && timer->isActive());
    QTRY_VERIFY_WITH_TIMEOUT(!label->styleSheet().contains("#d00000"), 1000);

    // A new fader takes the default when the function is chosen.
    click("PCSlider_1");
    choose("FunctionCombo", 1);
    QCOMPARE(editor().preset.Faders[1].Channel, 9);
}

void PC1600XFormTest::makeAndSelectAScene() {
    Database& db = (*t)->pool.db();
    db.prepare("INSERT INTO PresetRec (Name, CreatedDate, UpdatedDate, SetupChannelMap) VALUES ('Show', 'x', 'x', X'')")
        .run();
    editor().preset.ID = static_cast<std::int32_t>(db.lastInsertId());
    editor().preset.Name = "Show";
    editor().PristinePreset = editor().preset;
    RefillSceneLists(editor());
    editor().notifyChanged();

    auto* slider = w<QSlider>("PCSlider_2");
    slider->setFocus();
    QTest::keyClick(slider, Qt::Key_End);  // 127
    editor().PristinePreset = editor().preset;
    t->prompter.expectInput("Make a New Scene", std::string("Loud"));
    click("MakeSceneButton");
    QVERIFY(t->prompter.done());
    QCOMPARE(db.queryInt("SELECT Fader3 FROM SceneRec WHERE Name = 'Loud'"), 254);
    QCOMPARE(w<QComboBox>("SelectSceneCombo")->currentText(), QString("Loud"));

    QTest::keyClick(slider, Qt::Key_Home);
    QCOMPARE(editor().preset.Faders[2].Value, 0);
    choose("SelectSceneCombo", 0);
    QCOMPARE(editor().preset.Faders[2].Value, 127);
    QCOMPARE(slider->value(), 127);

    // A Send Scene button picks it from its list.
    click("PCButton_0");
    choose("BFunctionCombo", 9);
    QVERIFY(w<QComboBox>("BSceneCombo")->isVisible());
    choose("BSceneCombo", w<QComboBox>("BSceneCombo")->findText("Loud"));
    QCOMPARE(editor().preset.Buttons[0].Scene, std::string("Loud"));
    QCOMPARE(editor().preset.Buttons[0].ScenePreset, editor().preset.ID);
}

void PC1600XFormTest::copyPasteAndSpread() {
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

    click("PCSlider_4");
    bool sawForm = false;
    WhenModalOpens(this, [&](QDialog* dialog) {
        sawForm = dialog->objectName() == "SpreadForm";
        QCOMPARE(dialog->windowTitle(), QString("Spread Fader Functions"));
        QCOMPARE(dialog->findChild<QRadioButton*>("SpreadOption_0")->text(), QString("Spread across Channels"));
        QCOMPARE(dialog->findChild<QRadioButton*>("SpreadOption_1")->text(), QString("Spread across CCs"));
        auto* from = dialog->findChild<QListWidget*>("FromList");
        QCOMPARE(from->currentItem()->text(), QString("Fader #5 (Fader #5)"));
        from->setCurrentRow(0);
        dialog->findChild<QListWidget*>("ToList")->setCurrentRow(7);
        Click(dialog, "SpreadButton");
    });
    click("SpreadButton");
    QVERIFY(sawForm);
    QCOMPARE(editor().preset.Faders[0].Channel, 1);
    QCOMPARE(editor().preset.Faders[7].Channel, 5);
    QCOMPARE(editor().preset.Faders[4].Channel, 2);
    QCOMPARE(w<QLabel>("FaderLabel_7")->toolTip(), QString("Fader #5  (cc)"));

    // Cancel spreads nothing.
    editor().preset.Faders[12].Function = 0;
    WhenModalOpens(this, [](QDialog* dialog) { Click(dialog, "CancelButton"); });
    click("SpreadButton");
    QCOMPARE(editor().preset.Faders[12].Function, 0);
}

void PC1600XFormTest::anotherPresetsSceneFromAllScenesForm() {
    Database& db = (*t)->pool.db();
    db.exec("INSERT INTO PresetRec (Name, CreatedDate, UpdatedDate, SetupChannelMap) VALUES ('Other', 'x', 'x', X'')");
    const std::int64_t other = db.lastInsertId();
    db.prepare("INSERT INTO SceneRec (PresetREF, Name) VALUES (:P, 'Quiet')").bind(":P", other).run();
    editor().preset.Name = "Mine";

    click("PCButton_2");
    choose("BFunctionCombo", 9);
    // OK without a choice is refused; then the scene is chosen.
    t->prompter.expectMessage("Cannot Update Preset",
                              "No Scene has been selected.  Please choose one or click the CANCEL button.",
                              MessageAnswer::OK);
    WhenModalOpens(this, [](QDialog* dialog) {
        QCOMPARE(dialog->objectName(), QString("AllScenesForm"));
        auto* list = dialog->findChild<QListWidget*>("SceneList");
        QCOMPARE(list->count(), 1);
        QCOMPARE(list->item(0)->text(), QString("'Quiet'  - from Preset 'Other'"));
        Click(dialog, "OKButton");
        QVERIFY(dialog->isVisible());
        list->setCurrentRow(0);
        Click(dialog, "OKButton");
    });
    click("BOtherSceneButton");
    QCOMPARE(editor().preset.Buttons[2].Scene, std::string("Quiet"));
    QCOMPARE(editor().preset.Buttons[2].ScenePreset, static_cast<std::int32_t>(other));
    QCOMPARE(w<QComboBox>("BSceneCombo")->currentText(), QString("Quiet  - from Other"));

    // Cancel picks nothing and changes nothing.
    click("SetupStringButton");
    WhenModalOpens(this, [](QDialog* dialog) { Click(dialog, "CancelButton"); });
    click("SOtherSceneButton");
    QCOMPARE(editor().preset.SetupScene, std::string("<none>"));
    QVERIFY(t->prompter.done());
}

void PC1600XFormTest::aHeldPressDragsAndAClickDoesNot() {
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
    QCOMPARE(editor().CurrentFader, 8);

    // A fader dropped on a button is refused.
    t->prompter.expectMessage("Cannot Drop", "Cannot Drop a FADER onto a BUTTON", MessageAnswer::OK);
    form->dropOn(true, 3, &mime);
    QVERIFY(t->prompter.done());
}

void PC1600XFormTest::setupFrame() {
    click("SetupStringButton");
    QVERIFY(w<QGroupBox>("SetupFrame")->isVisible());
    QVERIFY(!w<QGroupBox>("FaderFrame")->isVisible());
    QCOMPARE(w<QLineEdit>("SVolumeText")->text(), QString("Off"));
    type("SChannelText", "3");
    type("SVolumeText", "200");
    QCOMPARE(w<QLineEdit>("SVolumeText")->text(), QString("127"));
    QCOMPARE(editor().preset.SetupChannels[2].Volume, 128);
    type("SBankText", "5");
    click("MSBCheck");
    QCOMPARE(editor().preset.SetupChannels[2].BankIsMSB, 1);
    type("SVolumeText", "off");
    QCOMPARE(editor().preset.SetupChannels[2].Volume, 0);
    t->prompter.expectMessage("About to Make Channel Setups Same",
                              "Are you sure you want to make all the Setup Channel information the same as Channel 3?",
                              MessageAnswer::Yes);
    click("MakeSameButton");
    QCOMPARE(editor().preset.SetupChannels[15].Bank, 6);
    QTest::mouseDClick(w<QLabel>("SetupChannelMapLabel"), Qt::LeftButton);
    QCOMPARE((*t)->pool.db().queryInt("SELECT COUNT(*) FROM DefaultsTable WHERE Field LIKE 'SetupChannel%'"), 16);
    QVERIFY(t->prompter.done());
}

void PC1600XFormTest::theOriginalPC1600LosesSetupSceneAndBankMSB() {
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

void PC1600XFormTest::closingAsksAndOnlyHides() {
    type("PresetNameText", "My Preset");
    QCOMPARE(editor().preset.Name, std::string("My Preset"));
    click("PCButton_1");
    choose("BFunctionCombo", 1);
    t->prompter.expectMessage("Store Preset in Pool?", MessageAnswer::Cancel);
    form->close();
    QVERIFY(form->isVisible());
    t->prompter.expectMessage("Store Preset in Pool?", MessageAnswer::No);
    form->close();
    QVERIFY(!form->isVisible());
    QVERIFY(t->prompter.done());
    QCOMPARE(editor().preset.Name, std::string("My Preset"));
}

void PC1600XFormTest::theMainWindowOpensTheEditorForANewPreset() {
    TempDir dir;
    ScriptedPrompter prompter;
    TavloProgram program(prompter);
    QVERIFY(program.start(dir.file("Tavlo.mdb")));
    TavloController* main = program.controller();
    main->show();
    auto* menu = main->findChild<QAction*>("NewPresetMenu");
    QVERIFY(menu->isEnabled());
    program.program().editor.preset.Name = "stale";
    menu->trigger();
    PC1600XForm* editorForm = main->editorForm();
    QVERIFY(editorForm->isVisible());
    QCOMPARE(program.program().editor.preset.Name, std::string());
    auto* frame = qobject_cast<QMdiSubWindow*>(editorForm->parentWidget());
    QVERIFY(frame);
    // Fits the main window's area on a 1366x768 screen.
    QVERIFY(frame->sizeHint().width() <= 1366);
    frame->close();
    QVERIFY(!frame->isVisible());
    QCOMPARE(main->editorForm(), editorForm);
    menu->trigger();
    QVERIFY(frame->isVisible());
    QVERIFY(prompter.done());
}

QTEST_MAIN(PC1600XFormTest)
#include "PC1600XForm_test.moc"

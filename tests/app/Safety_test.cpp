// Windows that must not lose work: the clash dialogue only its buttons end,
// the main window's close asks about the editor's unsaved preset, and the
// Spread dialog changes nothing unless its Spread button is pressed.
#include <QListWidget>
#include <QRadioButton>
#include <QtTest>

#include "FormDriver.h"
#include "TestProgram.h"
#include "TempDir.h"
#include "db/PoolDatabase.h"
#include "editor/EditorState.h"
#include "editor/PC1600XForm.h"
#include "pool/MemImageOrPoolChoiceForm.h"
#include "preset/PristinePreset.h"
#include "shell/Program.h"
#include "shell/TavloController.h"
#include "shell/TavloProgram.h"
#include "ui/QtPrompter.h"

using namespace tavlo;
using namespace tavlo::testing;

class SafetyTest : public QObject {
    Q_OBJECT
private slots:
    void theClashDialogueRefusesEscAndItsCloseBox();
    void closingTheMainWindowAsksAboutTheEditorsPreset();
    void spreadChangesNothingUnlessSpreadIsPressed();
};

void SafetyTest::theClashDialogueRefusesEscAndItsCloseBox() {
    QWidget parent;
    QtPrompter prompter;
    prompter.setParent(&parent);
    bool stayed = false;
    WhenModalOpens(this, [&](QDialog* dialog) {
        QTest::keyClick(dialog, Qt::Key_Escape);
        dialog->close();
        stayed = dialog->isVisible();
        if (stayed) Click(dialog, "KeepPoolButton");
    });
    const ChoiceAnswer answer = prompter.choose(MemImageOrPoolChoiceRequest("Which one?", ""));
    QVERIFY(stayed);
    QCOMPARE(answer.button, static_cast<int>(ClashButton::KeepPool));
}

void SafetyTest::closingTheMainWindowAsksAboutTheEditorsPreset() {
    TempDir dir;
    ScriptedPrompter prompter;
    TavloProgram program(prompter);
    QVERIFY(program.start(dir.file("Tavlo.mdb")));
    program.controller()->show();
    EditorState& editor = program.program().editor;
    editor.preset.Name = "Unsaved";
    UpdateINITData(editor);
    editor.preset.Notes = "edited";
    editor.Visible = true;
    const char* question = "Do you want to store this Preset to the Pool before closing the window?";
    prompter.expectMessage("Store Preset to Pool", question, MessageAnswer::Cancel);
    QVERIFY(!program.controller()->close());
    QVERIFY(program.program().pool.isOpen());
    prompter.expectMessage("Store Preset to Pool", question, MessageAnswer::Yes);
    QVERIFY(program.controller()->close());
    QVERIFY(prompter.done());
    PoolDatabase reopened;
    QVERIFY(reopened.open(dir.file("Tavlo.mdb")).ok());
    QCOMPARE(reopened.db().queryInt("SELECT COUNT(*) FROM PresetRec WHERE Name = 'Unsaved'"), 1);
}

void SafetyTest::spreadChangesNothingUnlessSpreadIsPressed() {
    TestProgram t;
    PC1600XForm form(*t);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    FaderDef& source = t->editor.preset.Faders[4];
    source.Function = 1;
    source.Channel = 3;
    source.CCNum = 10;
    Click(&form, "PCSlider_4");

    for (bool escape : {true, false}) {
        WhenModalOpens(this, [escape](QDialog* dialog) {
            if (escape) QTest::keyClick(dialog, Qt::Key_Escape);
            else dialog->close();
        });
        Click(&form, "SpreadButton");
        QCOMPARE(t->editor.preset.Faders[12].Function, 0);
    }

    WhenModalOpens(this, [](QDialog* dialog) {
        dialog->findChild<QRadioButton*>("SpreadOption_1")->setChecked(true);
        dialog->findChild<QListWidget*>("ToList")->setCurrentRow(7);
        Click(dialog, "SpreadButton");
    });
    Click(&form, "SpreadButton");
    QCOMPARE(t->editor.preset.Faders[6].CCNum, 12);
    QCOMPARE(t->editor.preset.Faders[6].Channel, 3);
}

QTEST_MAIN(SafetyTest)
#include "Safety_test.moc"

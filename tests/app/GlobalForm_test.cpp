// The global settings' windows: their controls reach the flows of core,
// whose rules are tested there.
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSlider>

#include "FormDriver.h"
#include "TestProgram.h"
#include "globals/GlobalForm.h"
#include "globals/GlobalPool.h"
#include "globals/GlobalPoolForm.h"
#include "globals/GlobalsState.h"

using namespace tavlo;
using namespace tavlo::testing;

class GlobalFormTest : public QObject, FormDriver {
    Q_OBJECT
private slots:
    void editAMapEntryStoreAndEditItAgain() {
        TestProgram t;
        GlobalForm form(*t);
        GlobalPoolForm pool(*t);
        root = &form;
        form.showWindow();

        // Program 5 of map 2 selects scene 3.
        choose("EditMapCombo", 1);
        w<QListWidget>("ProgChangeList")->setCurrentRow(5);
        auto* targets = w<QListWidget>("MapList");
        QListWidgetItem* scene3 = targets->findItems("Scene 03", Qt::MatchExactly).at(0);
        emit targets->itemDoubleClicked(scene3);
        QCOMPARE(w<QListWidget>("ProgChangeList")->item(5)->text(), QString("005  ->  Scene03"));

        type("GlobalNameText", "Stage");
        type("DevNumText", "10");
        QCOMPARE(w<QLineEdit>("DevNumText")->text(), QString("10 (0Ah)"));
        type("PerByteText", "70");
        QCOMPARE(w<QSlider>("PerByteSlider")->value(), 7);
        w<QCheckBox>("Check1_4")->click();
        click("DatabaseButton");
        const GlobalSettings stored = t->globals.settings;
        QCOMPARE(stored.MidiMaps[1][5], 53);

        // Another set in the window, then the stored one edited again.
        click("MapInitButton");
        QCOMPARE(w<QListWidget>("ProgChangeList")->item(5)->text(), QString("005  ->  Preset05"));
        pool.reload();
        auto* list = pool.findChild<QListWidget*>("GlobalPoolList");
        const auto stage = list->findItems("Stage  (IN=", Qt::MatchStartsWith);
        QCOMPARE(stage.size(), 1);
        list->setCurrentItem(stage.at(0));
        t.prompter.expectMessage("Store Globals to Pool", MessageAnswer::No);
        Click(&pool, "EditButton");
        QVERIFY(t.prompter.done());
        QVERIFY(t->globals.settings == stored);
        QVERIFY(w<QCheckBox>("Check1_4")->isChecked());
        QCOMPARE(w<QLineEdit>("GlobalNameText")->text(), QString("Stage"));
    }
};

QTEST_MAIN(GlobalFormTest)
#include "GlobalForm_test.moc"

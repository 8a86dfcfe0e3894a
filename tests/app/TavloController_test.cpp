#include <QAction>
#include <QApplication>
#include <QMdiArea>
#include <QMenu>
#include <QMenuBar>
#include <QtTest>

#include "ScriptedPrompter.h"
#include "TempDir.h"
#include "db/PoolDatabase.h"
#include "pool/PresetLoad.h"
#include "shell/Program.h"
#include "db/PoolDatabase.h"
#include "shell/TavloController.h"
#include "shell/TavloProgram.h"

using namespace tavlo;
using namespace tavlo::testing;

class TavloControllerTest : public QObject {
    Q_OBJECT
private slots:
    void damagedPoolShowsCriticalErrorAndNoWindow();
    void newPoolOpensMainWindowWithItsMenus();
    void clearDefaultsAsksFirst();
    void closingWritesWindowStates();
    void aVanishedPresetRowEndsTheProgram();
};

static bool anyVisibleWindow() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->isVisible()) return true;
    return false;
}

void TavloControllerTest::damagedPoolShowsCriticalErrorAndNoWindow() {
    TempDir dir;
    const std::string path = dir.file("Tavlo.mdb");
    {
        PoolDatabase pool;
        QVERIFY(pool.open(path).ok());
        pool.db().exec("DELETE FROM PresetRec WHERE Name = '--Initialized--'");
    }
    ScriptedPrompter prompter;
    prompter.expectMessage("CRITICAL ERROR",
                           "The Tavlo Database is Corrupt (Error #101).  Please contact support@tavlo.app for support.",
                           MessageAnswer::OK);
    TavloProgram program(prompter);
    QVERIFY(!program.start(path));
    QVERIFY(prompter.done());
    QVERIFY(program.controller() == nullptr);
    QVERIFY(!anyVisibleWindow());
}

void TavloControllerTest::newPoolOpensMainWindowWithItsMenus() {
    TempDir dir;
    ScriptedPrompter prompter;
    TavloProgram program(prompter);
    QVERIFY(program.start(dir.file("Tavlo.mdb")));
    TavloController* main = program.controller();
    QVERIFY(main);
    QVERIFY(main->findChild<QMdiArea*>("MDIArea"));

    const QStringList expectedMenus = {"FileMenu", "Global2Menu", "ViewMenu", "PresetMenu", "WindowMenu", "HelpMenu"};
    QStringList menus;
    for (QAction* action : main->menuBar()->actions()) menus << action->menu()->objectName();
    QCOMPARE(menus, expectedMenus);

    const QList<QPair<QString, QString>> captions = {
        {"MidiDevManageMenu", "&MIDI Device Management"},
        {"SysexFileMenu", "&Sysex File Contents"},
        {"CleanMenu", "&Clean the Database"},
        {"GlobalMenu", "&Show Global Settings Pool"},
        {"NewGlobalMenu", "New Global &Settings"},
        {"ViewGlobalMenu", "&Show &Memory Image Pool"},
        {"NewMemImageMenu", "&New Initialized Memory Image"},
        {"EditPresetMenu", "&Show Preset Pool"},
        {"NewPresetMenu", "&New Initialized Preset from Pool"},
        {"PeekMenu", "&Take a Peek at the Presets on the PC1600x"},
        {"ClearDefaultsMenu", "&Clear Preset Parameter Defaults"},
        {"TileWindowMenu", "&Tile Windows"},
        {"ArrangeIconsMenu", "&Arrange Minimized Icons"},
    };
    for (const auto& [name, caption] : captions) {
        auto* action = main->findChild<QAction*>(name);
        QVERIFY2(action, qPrintable(name));
        QCOMPARE(action->text(), caption);
    }
    QVERIFY(main->findChild<QAction*>("QuitMenu")->isEnabled());
}

void TavloControllerTest::clearDefaultsAsksFirst() {
    TempDir dir;
    ScriptedPrompter prompter;
    TavloProgram program(prompter);
    QVERIFY(program.start(dir.file("Tavlo.mdb")));
    Database& db = program.program().pool.db();
    db.exec("INSERT INTO DefaultsTable (Field, Value) VALUES ('Note', '61')");
    db.exec("INSERT INTO MessageStringRec (MapType, MapREF, \"Index\") VALUES ('D', 0, 0)");
    db.exec("INSERT INTO MessageStringRec (MapType, MapREF, \"Index\") VALUES ('F', 1, 0)");
    auto* action = program.controller()->findChild<QAction*>("ClearDefaultsMenu");

    const std::string question =
        "This will clear any Defaults you've set for Preset Parameter fields.  Are you sure you want to continue?";
    prompter.expectMessage("About to Clear Defaults", question, MessageAnswer::No);
    action->trigger();
    QCOMPARE(db.queryInt("SELECT count(*) FROM DefaultsTable"), 1);

    prompter.expectMessage("About to Clear Defaults", question, MessageAnswer::Yes);
    action->trigger();
    QCOMPARE(db.queryInt("SELECT count(*) FROM DefaultsTable"), 0);
    QCOMPARE(db.queryInt("SELECT count(*) FROM MessageStringRec"), 1);  // only the 'D' rows go
    QVERIFY(prompter.done());
}

void TavloControllerTest::closingWritesWindowStates() {
    TempDir dir;
    const std::string path = dir.file("Tavlo.mdb");
    {
        ScriptedPrompter prompter;
        TavloProgram program(prompter);
        QVERIFY(program.start(path));
        program.controller()->resize(900, 600);
        program.controller()->show();
        QVERIFY(program.controller()->close());
        QVERIFY(!program.program().pool.isOpen());
    }
    PoolDatabase pool;
    QVERIFY(pool.open(path).ok());
    QCOMPARE(pool.db().queryInt("SELECT count(*) FROM WindowStates"), 10);
    QCOMPARE(pool.db().queryInt("SELECT Left FROM WindowStates WHERE Window = 'MAIN2'"), 900);
    QCOMPARE(pool.db().queryInt("SELECT Top FROM WindowStates WHERE Window = 'MAIN2'"), 600);
}

void TavloControllerTest::aVanishedPresetRowEndsTheProgram() {
    TempDir dir;
    ScriptedPrompter prompter;
    TavloProgram program(prompter);
    QVERIFY(program.start(dir.file("Tavlo.mdb")));
    program.controller()->show();
    prompter.expectMessage("Database Error", "There has been a Database Error", MessageAnswer::OK);
    QVERIFY(!LoadPC1600xFormFromPool(program.program(), 424242));
    QTRY_VERIFY(!program.controller()->isVisible());
    QVERIFY(!program.program().pool.isOpen());
    QVERIFY(prompter.done());
}

QTEST_MAIN(TavloControllerTest)
#include "TavloController_test.moc"

// The main window and the program around it: start-up, menus, closing, the
// pool shared with the command line, file dialogs and the exception guard.
#include <QAction>
#include <QApplication>
#include <QFileSystemModel>
#include <QProcess>
#include <QStandardPaths>
#include <QtTest>

#include <sqlite3.h>
#include <sys/inotify.h>
#include <unistd.h>

#include "ScriptedPrompter.h"
#include "TempDir.h"
#include "db/PoolDatabase.h"
#include "globals/GlobalsState.h"
#include "pool/PresetLoad.h"
#include "shell/Program.h"
#include "editor/EditorState.h"
#include "editor/InitPreset.h"
#include "pool/PresetStore.h"
#include "preset/PristinePreset.h"
#include "pool/PresetSysexFile.h"
#include "shell/TavloController.h"
#include "shell/TavloProgram.h"
#include "ui/GuardedApplication.h"
#include "ui/QtPrompter.h"

using namespace tavlo;
using namespace tavlo::testing;

static std::int64_t storeFromEditor(Program& s, const std::string& name) {
    InitializePreset(s);
    s.editor.preset.Name = name;
    s.editor.preset.Faders[0].Function = 1;
    StoreInPoolButton(s);
    return s.editor.preset.ID;
}

static bool anyVisibleWindow() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->isVisible()) return true;
    return false;
}

class TavloControllerTest : public QObject {
    Q_OBJECT
private slots:
    void damagedPoolShowsCriticalErrorAndNoWindow() {
        TempDir dir;
        const std::string path = dir.file("Tavlo.mdb");
        {
            PoolDatabase pool;
            QVERIFY(pool.open(path).ok());
            pool.db().exec("DELETE FROM PresetRec WHERE Name = '--Initialized--'");
        }
        ScriptedPrompter prompter;
        prompter.expectMessage("CRITICAL ERROR");  // its text is checked with the start-up
        TavloProgram program(prompter);
        QVERIFY(!program.start(path));
        QVERIFY(prompter.done());
        QVERIFY(program.controller() == nullptr);
        QVERIFY(!anyVisibleWindow());
    }

    void clearDefaultsAsksFirst() {
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

    void closingWritesWindowStatesAndTheFirstRunItsSettings() {
        TempDir dir;
        const std::string path = dir.file("Tavlo.mdb");
        {
            ScriptedPrompter prompter;
            TavloProgram program(prompter);
            QVERIFY(program.start(path));
            program.controller()->resize(900, 600);
            program.controller()->show();
            QVERIFY(program.controller()->close());
        }
        {
            PoolDatabase pool;
            QVERIFY(pool.open(path).ok());
            QCOMPARE(pool.db().queryInt("SELECT Left FROM WindowStates WHERE Window = 'MAIN2'"), 900);
            QCOMPARE(pool.db().queryInt("SELECT Top FROM WindowStates WHERE Window = 'MAIN2'"), 600);
            // The first start got the virtual device's settings as the default.
            Statement globals = pool.db().prepare("SELECT Name FROM GlobalRec WHERE \"Default\" <> 0");
            QVERIFY(globals.step());
            QCOMPARE(globals.getText("Name"), std::string("Initial Default Globals"));
            QVERIFY(!globals.step());
        }

        // The next start shows the settings window again, on the same set.
        ScriptedPrompter prompter;
        TavloProgram program(prompter);
        QVERIFY(program.start(path));
        QVERIFY(program.program().globals.Visible);
        QCOMPARE(program.program().globals.settings.Name, std::string("Initial Default Globals"));
        QVERIFY(program.controller()->close());
    }

    void aVanishedPresetRowEndsTheProgram() {
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

    // The program and tavlo-cli on one pool: the command line is turned away
    // while the program owns the pool, a file dialog over the pool's folder
    // opens none of its files, and every preset stored by either survives.
    void aPoolSharedWithTheCommandLineLosesNothing() {
        const QString cli = qEnvironmentVariable("TAVLO_BUILD_DIR") + "/tools/tavlo-cli";
        if (!QFileInfo(cli).isExecutable()) QSKIP("tavlo-cli not built");
        TempDir dir;
        const QString folder = QString::fromStdString(dir.path().string());
        const std::string path = dir.file("pool.db");  // a name file type guessers read into
        const std::string syx = dir.file("cli.syx");
        QString err;
        auto runCli = [&](QStringList args) {
            QProcess process;
            process.start(cli, args << "--pool" << QString::fromStdString(path));
            process.waitForFinished(60000);
            err = QString::fromUtf8(process.readAllStandardError());
            return process.exitCode();
        };
        const QStringList import = {"pool", "import", QString::fromStdString(syx), "--on-clash", "rename-new:Cli One"};
        {
            ScriptedPrompter prompter;
            TavloProgram program(prompter);
            QVERIFY(program.start(path));
            program.controller()->show();
            Program& s = program.program();
            QVERIFY(WritePresetSysexFile(s, storeFromEditor(s, "Gui One"), syx));

            QCOMPARE(runCli(import), 2);
            QVERIFY2(err.contains(QString("This pool is open in another Tavlo (pid %1).").arg(getpid())), qPrintable(err));

            const int watch = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
            QVERIFY(watch >= 0);
            inotify_add_watch(watch, folder.toLocal8Bit().constData(), IN_OPEN);
            {
                QtPrompter qt;
                const auto dialog = qt.fileDialog({"Open", "All Files (*.*)|*.*", "", folder.toStdString()},
                                                  QFileDialog::AcceptOpen);
                dialog->show();
                auto* model = dialog->findChild<QFileSystemModel*>();
                QVERIFY(model);
                QTRY_VERIFY(model->rowCount(model->index(folder)) >= 3);
                QTest::qWait(300);  // the model's helper thread looks at each file
                dialog->close();
            }
            QStringList opened;
            alignas(inotify_event) char buffer[4096];
            for (ssize_t n; (n = read(watch, buffer, sizeof buffer)) > 0;)
                for (char* p = buffer; p < buffer + n; p += sizeof(inotify_event) + reinterpret_cast<inotify_event*>(p)->len)
                    if (const auto* e = reinterpret_cast<inotify_event*>(p); e->len && QString(e->name).startsWith("pool.db"))
                        opened << e->name;
            close(watch);
            QVERIFY2(opened.isEmpty(), qPrintable(opened.join(", ")));

            storeFromEditor(s, "Gui Two");
            QVERIFY(program.controller()->close());
            QVERIFY(prompter.done());
        }
        QCOMPARE(runCli(import), 0);
        QCOMPARE(runCli({"pool", "check"}), 0);
        QProcess list;
        list.start(cli, {"pool", "list", "--pool", QString::fromStdString(path)});
        QVERIFY(list.waitForFinished(60000));
        QCOMPARE(QString::fromUtf8(list.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts),
                 QStringList({"--Initialized--", "Cli One", "Gui One", "Gui Two"}));
    }

    void fileDialogsStartInDocumentsThenTheLastFolder() {
        QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
        if (!QFileInfo(documents).isDir()) documents = QDir::homePath();
        QtPrompter qt;
        const FileRequest request{"Save Preset", "Sysex Files (*.syx)|*.syx", ".syx", "Lead.syx"};
        QCOMPARE(qt.fileDialog(request, QFileDialog::AcceptSave)->directory().absolutePath(), QDir(documents).absolutePath());

        TempDir dir;
        const QString chosen = QString::fromStdString(dir.file("Bass.syx"));
        QTimer::singleShot(0, [&] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            dialog->selectFile(chosen);
            static_cast<QDialog*>(dialog)->accept();  // as the dialog's own button does
        });
        QCOMPARE(qt.saveFile(request), std::optional<std::string>(chosen.toStdString()));
        QCOMPARE(qt.fileDialog(request, QFileDialog::AcceptSave)->directory().absolutePath(),
                 QString::fromStdString(dir.path().string()));
    }

    void closingTheMainWindowAsksAboutTheEditorsPreset() {
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

    void anExceptionInAnEventHandlerIsToldAndTheProgramGoesOn() {
        auto* app = static_cast<GuardedApplication*>(qApp);
        QStringList told;
        app->setPoolPath("/p/Tavlo.mdb");
        app->setReporter([&](const std::string& title, const std::string& text) {
            told << QString::fromStdString(title + ": " + text);
        });
        QTimer::singleShot(0, [] { throw DatabaseError("database or disk is full", SQLITE_FULL); });
        QTimer::singleShot(0, [] { throw PoolBusy(); });
        QTRY_COMPARE(told.size(), 2);
        QCOMPARE(told[0], "Disk Full: The disk that holds the pool /p/Tavlo.mdb is full.  What you did last was not stored.");
        QCOMPARE(told[1], "Pool Busy: The pool /p/Tavlo.mdb is busy: another program is writing to it.  Nothing was "
                          "changed; try again in a moment.");
        app->setReporter({});
    }

};

int main(int argc, char** argv) {
    GuardedApplication app(argc, argv);
    TavloControllerTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "TavloController_test.moc"

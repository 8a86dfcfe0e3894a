// The pool window's wiring: its buttons and list reach the pool's flows,
// whose rules are tested in core.
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>

#include "FormDriver.h"
#include "TestProgram.h"
#include "db/PoolDatabase.h"
#include "editor/EditorState.h"
#include "editor/InitPreset.h"
#include "pool/PoolForm.h"
#include "pool/PresetStore.h"

using namespace tavlo;
using namespace tavlo::testing;

class PoolFormTest : public QObject, FormDriver {
    Q_OBJECT
private slots:
    void init() {
        t = std::make_unique<TestProgram>();
        (*t)->editor.ProgramInit = false;
        form = std::make_unique<PoolForm>(**t);
        root = form.get();
        form->reload();
        form->show();
    }

    void cleanup() {
        form.reset();
        t.reset();
    }

    void theListAndItsDetailsFollowTheControls() {
        const std::int64_t id = store("Detailed", 2);
        (*t)->pool.db().exec("INSERT INTO MakeModelAssocRec (PresetREF, Make, Model) VALUES (" + std::to_string(id) +
                             ", 'Korg', 'M1')");
        form->reload();
        w<QRadioButton>("OrderOption_0")->click();
        QCOMPARE(lines().size(), 4);  // under "> UNASSOCIATED " and "> Korg M1"
        w<QRadioButton>("OrderOption_1")->click();
        QCOMPARE(lines(), (QStringList{"--Initialized--", "Detailed"}));
        auto* list = w<QListWidget>("PoolList");
        list->setCurrentRow(1);
        QCOMPARE(w<QLabel>("MemLabel")->text(), QString("Memory Used: 8"));
        QCOMPARE(w<QListWidget>("SceneList")->count(), 2);
        list->setCurrentRow(0);
        QCOMPARE(w<QLabel>("MemLabel")->text(), QString("Fixed System Preset"));
        QVERIFY(!w<QListWidget>("MIsUsingList")->isVisible());
        w<QPushButton>("ShowMIsUseButton")->click();
        QCOMPARE(w<QListWidget>("MIsUsingList")->count(), 50);
    }

    void renameDuplicateAndDeleteThroughTheButtons() {
        store("Source", 1);
        form->reload();
        auto* list = w<QListWidget>("PoolList");
        list->setCurrentRow(lines().indexOf("Source"));

        t->prompter.expectInput("Rename Preset", std::string("Renamed"));
        w<QPushButton>("RenameButton")->click();
        QCOMPARE(list->currentItem()->text(), QString("Renamed"));

        t->prompter.expectInput("Duplicate Preset", std::string("Renamed 2"));
        w<QPushButton>("DuplicateButton")->click();
        QCOMPARE(lines(), (QStringList{"--Initialized--", "Renamed", "Renamed 2"}));

        list->setCurrentRow(lines().indexOf("Renamed"));
        t->prompter.expectMessage("About to Delete Preset", MessageAnswer::Yes);
        w<QPushButton>("DeleteButton")->click();
        QCOMPARE(lines(), (QStringList{"--Initialized--", "Renamed 2"}));
        QVERIFY(t->prompter.done());
    }

    // Both kinds of file, by the chosen name's ending.
    void saveAndLoadAFile() {
        for (const char* file : {"disk.syx", "disk.TPR"}) {
            const QString name = QString("On ") + file;
            store(name.toStdString(), 1);
            form->reload();
            w<QListWidget>("PoolList")->setCurrentRow(lines().indexOf(name));
            const std::string path = t->dir.file(file);
            t->prompter.expectSaveFile("Save Preset to Sysex or Tavlo Format File", path);
            w<QPushButton>("SavePresetSysexButton")->click();
            QVERIFY(QFileInfo::exists(QString::fromStdString(path)));

            w<QListWidget>("PoolList")->setCurrentRow(lines().indexOf(name));
            t->prompter.expectMessage("About to Delete Preset", MessageAnswer::Yes);
            w<QPushButton>("DeleteButton")->click();
            QVERIFY(!lines().contains(name));

            t->prompter.expectOpenFile("Get Preset from File (Tavlo Format or Sysex File)", path);
            w<QPushButton>("LoadPresetSysexButton")->click();
            QVERIFY(lines().contains(name));
            QVERIFY(t->prompter.done());
        }
        // Only the text carries the scene.
        QCOMPARE((*t)->pool.db().queryInt("SELECT COUNT(*) FROM SceneRec"), std::int64_t{1});
    }

private:
    std::int64_t store(const std::string& name, int scenes);
    QStringList lines() const;

    std::unique_ptr<TestProgram> t;
    std::unique_ptr<PoolForm> form;
};

std::int64_t PoolFormTest::store(const std::string& name, int scenes) {
    Program& s = **t;
    InitializePreset(s);
    s.editor.preset.Name = name;
    s.editor.preset.SceneCount = static_cast<std::int16_t>(scenes);
    for (int i = 0; i < scenes; ++i) s.editor.preset.Scenes[i].Name = "Scene " + std::to_string(i + 1);
    s.editor.preset.Faders[0].Function = 1;
    s.editor.preset.Faders[0].Name = "Vol";
    StoreInPoolButton(s);
    return s.editor.preset.ID;
}

QStringList PoolFormTest::lines() const {
    QStringList out;
    auto* list = w<QListWidget>("PoolList");
    for (int i = 0; i < list->count(); ++i) out << list->item(i)->text();
    return out;
}

QTEST_MAIN(PoolFormTest)
#include "PoolForm_test.moc"

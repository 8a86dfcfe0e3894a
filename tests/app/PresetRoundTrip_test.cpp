// A preset built from scratch in the editor, as a user would, stored, cleared
// and loaded back from the pool: everything set comes back.
#include <QPlainTextEdit>
#include <QSlider>

#include "FormDriver.h"
#include "TestProgram.h"
#include "db/PoolDatabase.h"
#include "editor/EditorState.h"
#include "editor/InitPreset.h"
#include "editor/PC1600XForm.h"
#include "pool/PresetLoad.h"
#include "sysex/StringNotation.h"

using namespace tavlo;
using namespace tavlo::testing;

class PresetRoundTripTest : public QObject, FormDriver {
    Q_OBJECT
private slots:
    void buildStoreAndReload() {
        t = std::make_unique<TestProgram>();
        form = std::make_unique<PC1600XForm>(**t);
        root = form.get();
        InitializePreset(**t);
        form->showWindow();
        EditorState& editor = (*t)->editor;

        type("PresetNameText", "Stage A");
        w<QPlainTextEdit>("PresetNotesText")->setPlainText("Two synths, one mixer");
        choose("DataWheelCombo", 19);

        // Fader 1: a controller with its range reversed.
        click("PCSlider_0");
        choose("FunctionCombo", 1);
        type("NameText", "Cutoff");
        type("ChannelText", "5");
        type("MaxValText", "10");
        type("MinValText", "100");
        choose("ModeCombo", 2);
        w<QSlider>("CCNumSlider")->setValue(74);
        // Fader 6: a MIDI string in a two-byte format.
        click("PCSlider_5");
        choose("FunctionCombo", 3);
        choose("ParamFormatCombo", 2);
        type("MinValText", "-200");
        editString("EditStringButton", [](QDialog* d) { appendTyped(d, kSysexKind, "F0 43 10 pr pr F7"); });
        // CV 1: master of faders 1 and 2.
        click("PCSlider_16");
        choose("FunctionCombo", 2);
        click("Check1_0");
        click("Check1_1");

        // Buttons: program change, note, a string, a toggle of two strings.
        click("PCButton_0");
        choose("BFunctionCombo", 3);
        type("BNameText", "Piano");
        type("BProgChangeText", "12");
        type("BChannelText", "global");
        click("PCButton_1");
        choose("BFunctionCombo", 4);
        type("BNoteText", "c3");
        type("VelocityText", "Rem");
        click("PCButton_2");
        choose("BFunctionCombo", 5);
        editString("String1Button", [](QDialog* d) {
            appendMessage(d, 3, 0, 7, 100);
            appendTyped(d, kSysexKind, "F0 41 10 42 12 40 00 7F 00 cs F7");
        });
        click("PCButton_3");
        choose("BFunctionCombo", 7);
        editString("String1Button", [](QDialog* d) { appendMessage(d, 11, 16, 0, 0); });
        editString("String2Button", [](QDialog* d) { appendMessage(d, 12, 16, 0, 0); });

        // Setup: channel 3 with a bank sent as MSB and a volume; a setup string.
        click("SetupStringButton");
        type("SChannelText", "3");
        type("SBankText", "4");
        click("MSBCheck");
        type("SVolumeText", "100");
        editString("SStringButton", [](QDialog* d) { appendMessage(d, 4, 2, 9, 0); });

        // Store: a new name asks nothing.
        click("StoreInPoolButton");
        QVERIFY(t->prompter.done());
        Database& db = (*t)->pool.db();
        const std::int64_t id = db.queryInt("SELECT ID FROM PresetRec WHERE Name = 'Stage A'");
        QVERIFY(id > 0);
        QCOMPARE(editor.preset.ID, static_cast<std::int32_t>(id));

        // A scene of the sliders, sent by button 5 and set up with the preset.
        w<QSlider>("PCSlider_3")->setValue(90);
        t->prompter.expectInput("Make a New Scene", std::string("Verse"));
        click("MakeSceneButton");
        click("PCButton_4");
        choose("BFunctionCombo", 9);
        choose("BSceneCombo", w<QComboBox>("BSceneCombo")->findText("Verse"));
        click("SetupStringButton");
        choose("SelectPresetSceneCombo", w<QComboBox>("SelectPresetSceneCombo")->findText("Verse"));
        t->prompter.expectMessage("About to Store", "Overwrite existing Preset 'Stage A' in the Pool?", MessageAnswer::Yes);
        click("StoreInPoolButton");
        QVERIFY(t->prompter.done());

        form->UpdateDefs();
        const WorkingPreset built = editor.preset;
        InitializePreset(**t);
        QVERIFY(editor.preset.Faders[0].Function == 0);
        QVERIFY(LoadPC1600xFormFromPool(**t, id));
        const WorkingPreset& loaded = editor.preset;

        QCOMPARE(loaded.Name, std::string("Stage A"));
        QCOMPARE(loaded.Notes, built.Notes);
        QCOMPARE(loaded.DataWheelLink, 19);
        for (int i = 0; i < kFaderCount; ++i) {
            QVERIFY2(loaded.Faders[i] == built.Faders[i], qPrintable(QString("fader %1").arg(i)));
            QVERIFY2(loaded.FaderStrings[i].Count == built.FaderStrings[i].Count, qPrintable(QString("fader %1").arg(i)));
        }
        for (int i = 0; i < kButtonCount; ++i) {
            QVERIFY2(loaded.Buttons[i] == built.Buttons[i], qPrintable(QString("button %1").arg(i)));
            QVERIFY2(loaded.ButtonStrings1[i] == built.ButtonStrings1[i], qPrintable(QString("button %1").arg(i)));
            QVERIFY2(loaded.ButtonStrings2[i] == built.ButtonStrings2[i], qPrintable(QString("button %1").arg(i)));
        }
        QVERIFY(loaded.FaderStrings[5] == built.FaderStrings[5]);
        QVERIFY(loaded.SetupChannels == built.SetupChannels);
        QVERIFY(loaded.SetupStrings == built.SetupStrings);
        QCOMPARE(loaded.SetupString, built.SetupString);
        QCOMPARE(loaded.SetupScene, std::string("Verse"));
        QCOMPARE(loaded.SetupScenePreset, static_cast<std::int32_t>(id));
        QCOMPARE(loaded.SceneCount, 1);
        QVERIFY(loaded.Scenes[0] == built.Scenes[0]);

        // Spot checks of what the user typed.
        QCOMPARE(loaded.Faders[0].Min, 100);
        QCOMPARE(loaded.Faders[0].Max, 10);
        QCOMPARE(loaded.Faders[0].Polarity, 0);
        QCOMPARE(loaded.Faders[0].CCNum, 74);
        QCOMPARE(loaded.Faders[5].MIDIString, std::string("F0 43 10 pr pr F7"));
        QCOMPARE(loaded.Faders[16].MasterOf.substr(0, 3), std::string("XX "));
        QCOMPARE(loaded.Buttons[0].Channel, 16);
        QCOMPARE(loaded.Buttons[1].Velocity, 129);
        QCOMPARE(loaded.Buttons[2].String1, std::string("B0 07 64 F0 41 10 42 12 40 00 7F 00 41 F7"));
        QCOMPARE(loaded.Buttons[4].Scene, std::string("Verse"));
        QCOMPARE(loaded.SetupChannels[2].BankIsMSB, 1);
        QCOMPARE(loaded.SetupChannels[2].Volume, 101);
        QCOMPARE(loaded.Scenes[0].Values[3], 180);

        // And the window shows it.
        QCOMPARE(w<QLineEdit>("PresetNameText")->text(), QString("Stage A"));
        click("PCButton_0");
        QCOMPARE(w<QLineEdit>("BNameText")->text(), QString("Piano"));
        QCOMPARE(w<QLineEdit>("BProgChangeText")->text(), QString("012"));
        click("PCSlider_5");
        QCOMPARE(w<QLineEdit>("EditStringText")->text(), QString("F0 43 10 pr pr F7"));
        QVERIFY(t->prompter.done());
    }

private:
    // Builds a string in the string editor opened by `door`.
    void editString(const char* door, std::function<void(QDialog*)> steps) {
        WhenModalOpens(this, [steps](QDialog* d) {
            steps(d);
            Click(d, "UpdateStringButton");
        });
        click(door);
    }
    static void appendMessage(QDialog* d, int kind, int channel, int v1, int v2) {
        Choose(d, "MessageCombo", kind);
        Choose(d, "ChannelCombo", channel);
        Find<QSlider>(d, "Value1Slider")->setValue(v1);
        Find<QSlider>(d, "Value2Slider")->setValue(v2);
        Click(d, "AppendButton");
    }
    static void appendTyped(QDialog* d, int kind, const QString& bytes) {
        Choose(d, "MessageCombo", kind);
        auto* text = Find<QLineEdit>(d, "StringText");
        text->setFocus();
        text->selectAll();
        QTest::keyClicks(text, bytes);
        Click(d, "AppendButton");
    }

    std::unique_ptr<TestProgram> t;
    std::unique_ptr<PC1600XForm> form;
};

QTEST_MAIN(PresetRoundTripTest)
#include "PresetRoundTrip_test.moc"

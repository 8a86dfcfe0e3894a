// The one dialog that every small question of Tavlo becomes: what the user
// sets in it comes back in the answer, and a dialogue that only its buttons
// may end can't be closed another way.
#include <QButtonGroup>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

#include "FormDriver.h"
#include "pool/MemImageOrPoolChoiceForm.h"
#include "ui/QtPrompter.h"

using namespace tavlo;
using namespace tavlo::testing;

class QtPrompterTest : public QObject {
    Q_OBJECT
private slots:
    void theClashDialogueIsModalAndOnlyItsButtonsEndIt() {
        QWidget parent;
        QtPrompter prompter;
        prompter.setParent(&parent);
        bool stayed = false;
        WhenModalOpens(this, [&](QDialog* dialog) {
            QCOMPARE(dialog->objectName(), QString("MemImageOrPoolChoiceForm"));
            QTest::keyClick(dialog, Qt::Key_Escape);
            dialog->close();
            stayed = dialog->isVisible();
            Find<QLineEdit>(dialog, "NewNameText")->setText("Other Name");
            Click(dialog, "RenameSysexButton");
        });
        const ChoiceAnswer answer = prompter.choose(MemImageOrPoolChoiceRequest("Which one?", ""));
        QVERIFY(stayed);
        QCOMPARE(answer.button, static_cast<int>(ClashButton::RenameSysex));
        QCOMPARE(answer.fields.at(0), std::string("Other Name"));
    }

    void optionsListsAndTheirFollowers() {
        ChoiceRequest request;
        request.dialogName = "Picker";
        request.options = {"None", "Named", "Listed"};
        request.option = 0;
        request.fields = {{"NewNameText", "Name:", "", 1}};
        request.lists = {{"FromList", "From:", {"a", "b", "c"}, 1, -1, 2}, {"ToList", "To:", {"x", "y"}, -1, 0}};
        request.buttons = {{"OKButton", "&OK"}, {"CancelButton", "C&ancel"}};
        QtPrompter prompter;

        // The parts follow the option; a double click presses its button.
        WhenModalOpens(this, [](QDialog* dialog) {
            auto* name = Find<QLineEdit>(dialog, "NewNameText");
            auto* from = Find<QListWidget>(dialog, "FromList");
            QVERIFY(!name->isEnabled() && !from->isEnabled());
            Find<QRadioButton>(dialog, "Option_2")->click();
            QVERIFY(!name->isEnabled() && from->isEnabled());
            from->setCurrentRow(2);
            auto* to = Find<QListWidget>(dialog, "ToList");
            to->setCurrentRow(1);
            emit to->itemDoubleClicked(to->item(1));
        });
        ChoiceAnswer answer = prompter.choose(request);
        QCOMPARE(answer.button, 0);
        QCOMPARE(answer.option, 2);
        QCOMPARE(answer.lists, (std::vector<int>{2, 1}));

        // Esc: no button, and a list without a chosen line reads -1.
        request.lists[0].index = -1;
        WhenModalOpens(this, [](QDialog* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
        answer = prompter.choose(request);
        QCOMPARE(answer.button, -1);
        QCOMPARE(answer.lists, (std::vector<int>{-1, -1}));
    }
};

QTEST_MAIN(QtPrompterTest)
#include "QtPrompter_test.moc"

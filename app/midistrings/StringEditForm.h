#pragma once
#include <QDialog>
#include <memory>

#include "midistrings/StringEditState.h"

namespace Ui {
class StringEditForm;
}

namespace tavlo {

class LabelDefaults;
class LearnMessages;
class Program;

// The modal string editor: composes one string of a fader, a button or the
// setup from up to 50 messages. A thin view over StringEditState.
class StringEditForm : public QDialog {
    Q_OBJECT
public:
    explicit StringEditForm(Program& session, QWidget* parent = nullptr);
    ~StringEditForm() override;

    // Opens modally on a control's string; true when the string came back
    // with Update, false after Cancel.
    bool edit(StringDoor door, int index);
    StringEditState& state() { return state_; }
    // The learn port's messages; Record Sysex is off until there is one.
    void setLearnSource(LearnMessages* port);
    void refresh();

public slots:
    // Escape, the frame's close and CancelButton: the string stays as it was.
    void reject() override;

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void connectControls();
    void connectLabelDefaults();
    void learnSysex();

    Program& session_;
    StringEditState& state_;  // the program's: it outlives the window
    std::unique_ptr<Ui::StringEditForm> ui_;
    LabelDefaults* labelDefaults_ = nullptr;
    LearnMessages* learnPort_ = nullptr;
    bool refreshing_ = false;
    Observable::Token token_ = 0;
    Observable::Token midiToken_ = 0;
};

}  // namespace tavlo

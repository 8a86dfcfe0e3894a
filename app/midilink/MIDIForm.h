#pragma once
#include <QDialog>
#include <memory>

#include "ui/Observable.h"

namespace Ui {
class MIDIForm;
}
class QListWidget;

namespace tavlo {

class ListState;
class Program;
struct LinkContext;

// The MIDI configuration window: a view of MidiLink::form and MidiConfig.
// Every click goes to the core operations of MIDIForm.
class MIDIForm : public QDialog {
    Q_OBJECT
public:
    explicit MIDIForm(Program& session, QWidget* parent = nullptr);
    ~MIDIForm() override;

    // Shows the window from the menu, modal to the program.
    void showConfiguration();

protected:
    // Closing by the frame runs OKButton: bad values keep the window open.
    void closeEvent(QCloseEvent* event) override;
    void reject() override;

private:
    void refresh();
    void fillList(QListWidget* widget, const ListState& list);
    void listClicked(QListWidget* widget, ListState& list, bool (*click)(const LinkContext&));
    void ok();

    Program& session_;
    std::unique_ptr<Ui::MIDIForm> ui_;
    Observable::Token formToken_ = 0;
    Observable::Token midiToken_ = 0;
    bool refreshing_ = false;
};

}  // namespace tavlo

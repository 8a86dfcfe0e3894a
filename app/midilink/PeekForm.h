#pragma once
#include <QDialog>
#include <memory>

namespace Ui {
class PeekForm;
}

namespace tavlo {

class Program;

// The names of the presets in the device (PeekMenu), from MidiLink::PeekList.
// The list fills the window as it is resized, through its layout.
class PeekForm : public QDialog {
    Q_OBJECT
public:
    explicit PeekForm(Program& session, QWidget* parent = nullptr);
    ~PeekForm() override;

    // PeekMenu: the sizing line, the names from the device, and show.
    void peek();
    // PeekAgainButton.
    void loadPeekList();

private:
    void refresh();

    Program& session_;
    std::unique_ptr<Ui::PeekForm> ui_;
};

}  // namespace tavlo

#pragma once
#include <QDialog>
#include <memory>

#include "editor/EditorState.h"

namespace Ui {
class SpreadForm;
}

namespace tavlo {

// Asks over which controls, and how, a fader or button is spread.
class SpreadForm : public QDialog {
    Q_OBJECT
public:
    struct Result {
        int from = 0;
        int to = 0;
        int option = 0;
    };

    SpreadForm(const EditorState& editor, bool button, int source, QWidget* parent = nullptr);
    ~SpreadForm() override;
    // Only meaningful when exec() returned Accepted. Cancel and closing also
    // leave From on its last line and To on line 0, which reads as "nothing
    // to do".
    Result result() const;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void cancel();
    std::unique_ptr<Ui::SpreadForm> ui_;
};

}  // namespace tavlo

#pragma once
#include <QDialog>

#include "ui/StatusView.h"

class QLabel;
class QPushButton;

namespace tavlo {

// The status window of transfers and long operations. The user can't close
// it; Cancel, where shown, closes it at once and raises the flag that the
// operation polls.
class StatusForm : public QDialog, public StatusView {
    Q_OBJECT
public:
    explicit StatusForm(QWidget* parent = nullptr);

    void show(const std::string& caption, const std::string& line, bool cancelVisible) override;
    void setLine(const std::string& line) override;
    void hide() override;
    bool cancelled() const override { return cancelled_; }
    void resetCancelled() override { cancelled_ = false; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override {}

private:
    QLabel* statusLabel_;
    QPushButton* cancelButton_;
    bool cancelled_ = false;
};

}  // namespace tavlo

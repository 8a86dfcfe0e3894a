#include "ui/StatusForm.h"

#include <QCloseEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/QtText.h"

namespace tavlo {

StatusForm::StatusForm(QWidget* parent) : QDialog(parent) {
    setObjectName("StatusForm");
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
    auto* layout = new QVBoxLayout(this);
    statusLabel_ = new QLabel;
    statusLabel_->setObjectName("StatusLabel");
    statusLabel_->setWordWrap(true);
    statusLabel_->setMinimumWidth(360);
    layout->addWidget(statusLabel_);
    cancelButton_ = new QPushButton(tr("Cancel"));
    cancelButton_->setObjectName("CancelButton");
    layout->addWidget(cancelButton_, 0, Qt::AlignRight);
    // The window goes at once; the waiting operation sees the flag at its
    // next look and ends.
    connect(cancelButton_, &QPushButton::clicked, this, [this] {
        cancelled_ = true;
        QDialog::hide();
    });
}

void StatusForm::show(const std::string& caption, const std::string& line, bool cancelVisible) {
    setWindowTitle(toQt(caption));
    statusLabel_->setText(toQt(line));
    cancelButton_->setVisible(cancelVisible);
    cancelled_ = false;
    QDialog::show();
    raise();
}

void StatusForm::setLine(const std::string& line) { statusLabel_->setText(toQt(line)); }

void StatusForm::hide() { QDialog::hide(); }

void StatusForm::closeEvent(QCloseEvent* event) { event->ignore(); }

}  // namespace tavlo

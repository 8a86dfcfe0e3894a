#include "editor/SpreadForm.h"

#include <QCloseEvent>

#include "editor/CopyPasteSpread.h"
#include "ui/QtText.h"
#include "ui_SpreadForm.h"

namespace tavlo {

SpreadForm::SpreadForm(const EditorState& editor, bool button, int source, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::SpreadForm>()) {
    ui_->setupUi(this);
    setWindowTitle(button ? "Spread Button Functions" : "Spread Fader Functions");
    const int function = button ? editor.preset.Buttons.at(source).Function : editor.preset.Faders.at(source).Function;
    const auto options = SpreadOptionsFor(button, function);
    if (options) {
        ui_->SpreadOption_0->setText(toQt(options->option0));
        ui_->SpreadOption_1->setVisible(options->option1.has_value());
        if (options->option1) ui_->SpreadOption_1->setText(toQt(*options->option1));
    }
    const int count = button ? kButtonCount : kFaderCount;
    for (int i = 0; i < count; ++i) {
        for (QListWidget* list : {ui_->FromList, ui_->ToList}) {
            auto* item = new QListWidgetItem(toQt(SpreadLine(editor, button, i)), list);
            item->setData(Qt::UserRole, i);
        }
    }
    ui_->FromList->setCurrentRow(source);
    ui_->ToList->setCurrentRow(count - 1);
    connect(ui_->SpreadButton, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui_->CancelButton, &QPushButton::clicked, this, &SpreadForm::cancel);
}

SpreadForm::~SpreadForm() = default;

void SpreadForm::cancel() {
    ui_->FromList->setCurrentRow(ui_->FromList->count() - 1);
    ui_->ToList->setCurrentRow(0);
    reject();
}

void SpreadForm::closeEvent(QCloseEvent* event) {
    ui_->FromList->setCurrentRow(ui_->FromList->count() - 1);
    ui_->ToList->setCurrentRow(0);
    QDialog::closeEvent(event);
}

SpreadForm::Result SpreadForm::result() const {
    Result r;
    if (QListWidgetItem* from = ui_->FromList->currentItem()) r.from = from->data(Qt::UserRole).toInt();
    if (QListWidgetItem* to = ui_->ToList->currentItem()) r.to = to->data(Qt::UserRole).toInt();
    // Read after the dialog has closed: whether the option is offered, not
    // whether it is on screen right now.
    r.option = !ui_->SpreadOption_1->isHidden() && ui_->SpreadOption_1->isChecked() ? 1 : 0;
    return r;
}

}  // namespace tavlo

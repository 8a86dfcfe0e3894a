#include "midilink/PeekForm.h"

#include "midilink/PeekList.h"
#include "shell/Program.h"
#include "midilink/MidiLink.h"
#include "ui/QtText.h"
#include "ui_PeekForm.h"

namespace tavlo {

PeekForm::PeekForm(Program& session, QWidget* parent)
    : QDialog(parent), session_(session), ui_(std::make_unique<Ui::PeekForm>()) {
    ui_->setupUi(this);
    connect(ui_->PeekAgainButton, &QPushButton::clicked, this, &PeekForm::loadPeekList);
}

PeekForm::~PeekForm() = default;

void PeekForm::peek() {
    ListState& list = session_.midiLink.PeekList;
    list.clear();
    list.addItem(kPeekSizingLine);
    refresh();
    ui_->PeekList->setMinimumWidth(ui_->PeekList->sizeHintForColumn(0) + 40);
    adjustSize();
    loadPeekList();
    show();
    raise();
}

void PeekForm::loadPeekList() {
    ui_->PeekAgainButton->setEnabled(false);
    LoadPeekList(session_, session_.midiLink.PeekList);
    ui_->PeekAgainButton->setEnabled(true);
    refresh();
}

void PeekForm::refresh() {
    ui_->PeekList->clear();
    for (const auto& line : session_.midiLink.PeekList.lines()) ui_->PeekList->addItem(toQt(line.text));
}

}  // namespace tavlo

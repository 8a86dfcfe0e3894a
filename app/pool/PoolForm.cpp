#include "pool/PoolForm.h"

#include <QListWidget>

#include "pool/PoolList.h"
#include "pool/PoolOperations.h"
#include "presetfile/PresetFileButtons.h"
#include "shell/Program.h"
#include "pool/PoolFormState.h"
#include "ui/ListLines.h"
#include "ui/QtText.h"
#include "ui_PoolForm.h"

namespace tavlo {
PoolForm::PoolForm(Program& session, QWidget* parent)
    : QWidget(parent), session_(session), ui_(std::make_unique<Ui::PoolForm>()) {
    ui_->setupUi(this);
    subscription_ = session_.poolForm.subscribe([this] { refresh(); });

    connect(ui_->PoolList, &QListWidget::currentRowChanged, this, &PoolForm::lineSelected);
    connect(ui_->PoolList, &QListWidget::itemSelectionChanged, this, &PoolForm::selectionChanged);
    connect(ui_->OrderOption_0, &QAbstractButton::toggled, this, &PoolForm::orderChanged);
    connect(ui_->ShowMIsUseButton, &QAbstractButton::clicked, this, [this] {
        session_.poolForm.MIsUsingShown = true;
        refresh();
    });
    connect(ui_->EditButton, &QAbstractButton::clicked, this, [this] { runOperation(EditButton); });
    connect(ui_->DuplicateButton, &QAbstractButton::clicked, this, [this] { runOperation(DuplicateButton); });
    connect(ui_->RenameButton, &QAbstractButton::clicked, this, [this] { runOperation(RenameButton); });
    connect(ui_->DeleteButton, &QAbstractButton::clicked, this, [this] { runOperation(DeleteButton); });
    connect(ui_->LoadPresetSysexButton, &QAbstractButton::clicked, this, &PoolForm::loadPresetSysex);
    connect(ui_->SavePresetSysexButton, &QAbstractButton::clicked, this, &PoolForm::savePresetSysex);
}

PoolForm::~PoolForm() { session_.poolForm.unsubscribe(subscription_); }

void PoolForm::reload() { ReloadPoolList(session_); }

void PoolForm::refresh() {
    if (filling_) return;
    filling_ = true;
    const PoolFormState& state = session_.poolForm;
    ui_->OrderOption_0->setChecked(state.OrderOption == PoolOrder::ByDevice);
    ui_->OrderOption_1->setChecked(state.OrderOption == PoolOrder::ByName);

    QListWidget* list = ui_->PoolList;
    const auto& lines = state.PoolList.lines();
    ShowLines(list, state.PoolList);
    for (int i = 0; i < list->count(); ++i) list->item(i)->setSelected(lines[i].selected);
    if (list->currentRow() != state.PoolList.listIndex()) {
        list->setCurrentRow(state.PoolList.listIndex(), QItemSelectionModel::NoUpdate);
    }

    ShowLines(ui_->SceneList, state.SceneList);
    ShowLines(ui_->AssociatedDeviceList, state.AssociatedDeviceList);
    ShowLines(ui_->MIsUsingList, state.MIsUsingList);
    ui_->MIsUsingList->setVisible(state.MIsUsingShown);
    ui_->MIsUsingLabel->setVisible(state.MIsUsingShown);
    ui_->NotesText->setPlainText(toQt(state.NotesText));
    ui_->CreatedDateText->setText(toQt(state.CreatedDateText));
    ui_->UpdatedDateText->setText(toQt(state.UpdatedDateText));
    ui_->MemLabel->setText(toQt(state.MemLabel));
    filling_ = false;
}

void PoolForm::lineSelected(int row) {
    if (filling_ || row < 0) return;
    SelectPoolLine(session_, row);
}

void PoolForm::selectionChanged() {
    if (filling_) return;
    ListState& state = session_.poolForm.PoolList;
    QListWidget* list = ui_->PoolList;
    for (int i = 0; i < list->count() && i < state.listCount(); ++i) state.setSelected(i, list->item(i)->isSelected());
}

void PoolForm::orderChanged() {
    if (filling_) return;
    session_.poolForm.OrderOption = ui_->OrderOption_0->isChecked() ? PoolOrder::ByDevice : PoolOrder::ByName;
    ReloadPoolList(session_);
}

void PoolForm::runOperation(void (*operation)(const PoolContext&)) {
    selectionChanged();
    operation(session_);
    refresh();
}

void PoolForm::loadPresetSysex() { runOperation(LoadPresetSysexButton); }

void PoolForm::savePresetSysex() { runOperation(SavePresetSysexButton); }

}  // namespace tavlo

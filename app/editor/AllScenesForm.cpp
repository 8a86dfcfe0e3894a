#include "editor/AllScenesForm.h"

#include "editor/Scenes.h"
#include "shell/Program.h"
#include "ui/Prompter.h"
#include "ui/QtText.h"
#include "ui_AllScenesForm.h"

namespace tavlo {

AllScenesForm::AllScenesForm(Program& session, QWidget* parent)
    : QDialog(parent), session_(session), ui_(std::make_unique<Ui::AllScenesForm>()) {
    ui_->setupUi(this);
    connect(ui_->OKButton, &QPushButton::clicked, this, &AllScenesForm::ok);
    connect(ui_->SceneList, &QListWidget::itemDoubleClicked, this, &AllScenesForm::ok);
    connect(ui_->CancelButton, &QPushButton::clicked, this, [this] {
        chosen_.reset();
        reject();
    });
}

AllScenesForm::~AllScenesForm() = default;

bool AllScenesForm::FillSceneList(const std::string& excludedPreset) {
    ui_->SceneList->clear();
    chosen_.reset();
    ListState lines;
    if (!tavlo::FillSceneList(session_, excludedPreset, lines)) return false;
    for (const auto& line : lines.lines()) {
        auto* item = new QListWidgetItem(toQt(line.text), ui_->SceneList);
        item->setData(Qt::UserRole, QVariant::fromValue<qlonglong>(line.itemData));
    }
    return true;
}

void AllScenesForm::ok() {
    QListWidgetItem* item = ui_->SceneList->currentItem();
    if (!item || !item->isSelected()) {
        session_.prompter.message("Cannot Update Preset",
                                  "No Scene has been selected.  Please choose one or click the CANCEL button.");
        return;
    }
    chosen_ = item->data(Qt::UserRole).toLongLong();
    accept();
}

}  // namespace tavlo

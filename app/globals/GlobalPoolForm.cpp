#include "globals/GlobalPoolForm.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "globals/GlobalPool.h"
#include "globals/GlobalsState.h"
#include "shell/Program.h"
#include "ui/ListLines.h"
#include "ui/QtText.h"

namespace tavlo {

GlobalPoolForm::GlobalPoolForm(Program& session, QWidget* parent) : QWidget(parent), session_(session) {
    setObjectName("GlobalPoolForm");
    setWindowTitle("Global Settings Pool");
    auto* layout = new QHBoxLayout(this);
    list_ = new QListWidget;
    list_->setObjectName("GlobalPoolList");
    layout->addWidget(list_, 1);

    auto* side = new QVBoxLayout;
    auto* details = new QFormLayout;
    created_ = new QLabel;
    created_->setObjectName("CreatedDateText");
    chIn_ = new QLabel;
    chIn_->setObjectName("ChInText");
    chOut_ = new QLabel;
    chOut_->setObjectName("ChOutText");
    details->addRow("Created:", created_);
    details->addRow("MIDI Channel In:", chIn_);
    details->addRow("MIDI Channel Out:", chOut_);
    side->addLayout(details);

    const struct {
        const char* name;
        const char* caption;
        bool (*flow)(const GlobalsContext&);
    } buttons[] = {
        {"EditButton", "&Edit", EditGlobals},
        {"DuplicateButton", "&Duplicate", DuplicateGlobals},
        {"RenameButton", "&Rename", RenameGlobals},
        {"MakeDefaultButton", "Make De&fault", MakeDefaultGlobals},
        {"DeleteButton", "De&lete", DeleteGlobals},
    };
    for (const auto& b : buttons) {
        auto* button = new QPushButton(b.caption);
        button->setObjectName(b.name);
        button->setAutoDefault(false);
        const bool edits = b.flow == EditGlobals;
        connect(button, &QPushButton::clicked, this, [this, flow = b.flow, edits] {
            if (flow(session_) && edits) emit editing();
        });
        side->addWidget(button);
    }
    side->addStretch();
    layout->addLayout(side);

    connect(list_, &QListWidget::currentRowChanged, this, [this](int row) {
        if (refreshing_ || row < 0) return;
        session_.globals.GlobalPoolList.setListIndex(row);
        ShowGlobalDetails(session_);
    });
    connect(list_, &QListWidget::itemDoubleClicked, this, [this] {
        if (EditGlobals(session_)) emit editing();
    });
    token_ = session_.globals.subscribe([this] { refresh(); });
}

GlobalPoolForm::~GlobalPoolForm() { session_.globals.unsubscribe(token_); }

void GlobalPoolForm::reload() {
    LoadGlobalPoolList(session_);
    ShowGlobalDetails(session_);
}

void GlobalPoolForm::refresh() {
    if (refreshing_) return;
    refreshing_ = true;
    const GlobalsState& state = session_.globals;
    ShowLines(list_, state.GlobalPoolList);
    list_->setCurrentRow(state.GlobalPoolList.listIndex());
    created_->setText(toQt(state.CreatedDateText));
    chIn_->setText(toQt(state.ChInText));
    chOut_->setText(toQt(state.ChOutText));
    refreshing_ = false;
}

}  // namespace tavlo

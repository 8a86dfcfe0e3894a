#include "midistrings/StringEditForm.h"

#include <QClipboard>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QTimer>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <cstdio>
#include <utility>
#include <vector>

#include "editor/EditorDefaults.h"
#include "base/MSBModule.h"
#include "midistrings/StringEditor.h"
#include "midistrings/StringLearn.h"
#include "sysex/StringNotation.h"
#include "db/Database.h"
#include "shell/Program.h"
#include "db/PoolDatabase.h"
#include "midilink/MidiConfig.h"
#include "ui/CCDigitTyping.h"
#include "ui/CCNameList.h"
#include "ui/LabelDefaults.h"
#include "ui/ListLines.h"
#include "ui/QtText.h"
#include "ui/SliderTextPair.h"
#include "ui_StringEditForm.h"

namespace tavlo {

StringEditForm::StringEditForm(Program& session, QWidget* parent)
    : QDialog(parent), session_(session), state_(session.stringEdit), ui_(std::make_unique<Ui::StringEditForm>()) {
    ui_->setupUi(this);
    setFixedSize(size());
    setModal(true);
    labelDefaults_ = new LabelDefaults(this);
    for (const auto& kind : kMessageKinds) ui_->MessageCombo->addItem(toQt(std::string(kind.text)));
    for (int c = 1; c <= 16; ++c) ui_->ChannelCombo->addItem(QString::number(c));
    ui_->ChannelCombo->addItem("Global Ch");
    FillCCNameList(ui_->CCNameListCombo, session_.pool.db());
    // The learn port comes with the MIDI link; until then recording is off.
    ui_->LearnSysexButton->setEnabled(false);
    ui_->DoneLearningButton->hide();
    ui_->StringText->setContextMenuPolicy(Qt::NoContextMenu);
    ui_->StringText->installEventFilter(this);
    // No button presses itself on Return: the prefix is pasted only on a click.
    for (QPushButton* button : findChildren<QPushButton*>()) {
        button->setAutoDefault(false);
        button->setDefault(false);
    }
    connectControls();
    token_ = state_.subscribe([this] { refresh(); });
    midiToken_ = session_.midi.subscribe([this] { refresh(); });
}

StringEditForm::~StringEditForm() {
    state_.unsubscribe(token_);
    session_.midi.unsubscribe(midiToken_);
    for (QObject* widget : findChildren<QObject*>()) QObject::disconnect(widget, nullptr, this, nullptr);
}

void StringEditForm::connectControls() {
    Database& db = session_.pool.db();
    connect(ui_->MessageCombo, &QComboBox::activated, this, [this](int kind) { MessageComboClick(state_, session_, kind); });
    connect(ui_->ChannelCombo, &QComboBox::activated, this, [this](int channel) { SetChannel(state_, channel); });
    connect(ui_->Value1Slider, &QSlider::valueChanged, this, [this](int v) {
        if (!refreshing_) SetValue1(state_, v);
    });
    connect(ui_->Value2Slider, &QSlider::valueChanged, this, [this](int v) {
        if (!refreshing_) SetValue2(state_, v);
    });
    for (QSlider* slider : {ui_->Value1Slider, ui_->Value2Slider}) slider->installEventFilter(this);
    connect(ui_->Value1Text, &QLineEdit::editingFinished, this, [this] {
        if (!refreshing_ && ui_->Value1Text->isModified()) SetValue1(state_, ParseValueText(fromQt(ui_->Value1Text->text())));
    });
    connect(ui_->Value2Text, &QLineEdit::editingFinished, this, [this] {
        if (!refreshing_ && ui_->Value2Text->isModified()) SetValue2(state_, ParseValueText(fromQt(ui_->Value2Text->text())));
    });
    connect(ui_->CCNameListCombo, &QComboBox::activated, this, [this](int line) {
        const int cc = CCNumberAt(ui_->CCNameListCombo, line);
        if (cc >= 0) SetValue1(state_, cc);
    });
    new CCDigitTyping(ui_->CCNameListCombo, [this](int cc) { SetValue1(state_, cc); });
    connect(ui_->StringText, &QLineEdit::textEdited, this,
            [this](const QString& text) { SetStringText(state_, fromQt(text)); });
    for (int i = 0; i < 5; ++i) {
        auto* button = findChild<QPushButton*>(QString("SpecialButton_%1").arg(i));
        connect(button, &QPushButton::clicked, this,
                [this, i] { InsertSpecial(state_, session_, i, ui_->StringText->cursorPosition()); });
    }
    connect(ui_->MakeCombo, &QComboBox::activated, this, [this, &db](int line) { ChooseMake(state_, db, line); });
    connect(ui_->ModelCombo, &QComboBox::activated, this, [this, &db](int line) { ChooseModel(state_, db, line); });
    connect(ui_->ShowOwnOnlyCheck, &QCheckBox::clicked, this, [this, &db](bool on) { SetShowOwnOnly(state_, db, on); });
    connect(ui_->SysexPrefixButton, &QPushButton::clicked, this, [this] { PasteSysexPrefix(state_); });
    connect(ui_->AppendButton, &QPushButton::clicked, this, [this] { AppendString(state_, session_); });
    connect(ui_->UpdateButton, &QPushButton::clicked, this, [this] { UpdateString(state_, session_); });
    connect(ui_->DeleteButton, &QPushButton::clicked, this, [this] { DeleteString(state_, session_); });
    connect(ui_->DuplicateButton, &QPushButton::clicked, this, [this] { DuplicateString(state_, session_); });
    connect(ui_->MoveUpButton, &QPushButton::clicked, this, [this] { MoveStringUp(state_, session_); });
    connect(ui_->MoveDownButton, &QPushButton::clicked, this, [this] { MoveStringDown(state_, session_); });
    connect(ui_->StringList, &QListWidget::currentRowChanged, this, [this](int row) {
        if (!refreshing_ && row >= 0) StringListClick(state_, session_, row);
    });
    connect(ui_->LearnSysexButton, &QPushButton::clicked, this, &StringEditForm::learnSysex);
    connect(ui_->DoneLearningButton, &QPushButton::clicked, this, [this] {
        state_.Learning = false;
        state_.notifyChanged();
    });
    connect(ui_->CancelButton, &QPushButton::clicked, this, [this] {
        CancelStringEdit(state_);
        reject();
    });
    connect(ui_->UpdateStringButton, &QPushButton::clicked, this, [this] {
        if (UpdateStringButton(state_, session_)) accept();
    });
    connectLabelDefaults();
}

void StringEditForm::connectLabelDefaults() {
    Database& db = session_.pool.db();
    labelDefaults_->add(ui_->Value1Label, [this, &db] {
        const std::string field = Value1LabelFor(state_.MessageCombo).defaultField;
        if (!field.empty()) WriteDefault(db, field, state_.Value1Slider);
    });
    labelDefaults_->add(ui_->Value2Label, [this, &db] {
        const std::string field = Value2LabelFor(state_.MessageCombo).defaultField;
        if (!field.empty()) WriteDefault(db, field, state_.Value2Slider);
    });
    labelDefaults_->add(ui_->Label2, [this, &db] { WriteDefault(db, "StringChannel", state_.ChannelCombo); });
    labelDefaults_->add(ui_->CCLabel, [this, &db] {
        const int cc = CCNumberAt(ui_->CCNameListCombo, ui_->CCNameListCombo->currentIndex());
        if (cc >= 0) WriteDefault(db, "CCNum", cc);
    });
}

void StringEditForm::learnSysex() {
    if (!learnPort_) return;
    // While the pass runs only the button that ends it answers; the
    // window's close box still ends the pass and the window.
    std::vector<std::pair<QWidget*, bool>> commands;
    for (QWidget* c : findChildren<QWidget*>()) {
        const bool command = qobject_cast<QAbstractButton*>(c) || qobject_cast<QComboBox*>(c) ||
                             qobject_cast<QAbstractSlider*>(c) || qobject_cast<QLineEdit*>(c) ||
                             qobject_cast<QAbstractItemView*>(c);
        if (!command || c == ui_->DoneLearningButton || c->parentWidget() == nullptr) continue;
        if (qobject_cast<QComboBox*>(c->parentWidget())) continue;  // a combo's own parts
        commands.emplace_back(c, c->isEnabled());
        c->setEnabled(false);
    }
    RunLearnPass(state_, session_, *learnPort_);
    for (const auto& [c, enabled] : commands) c->setEnabled(enabled);
    refresh();
}

void StringEditForm::setLearnSource(LearnMessages* port) {
    learnPort_ = port;
    ui_->LearnSysexButton->setEnabled(port != nullptr);
}

bool StringEditForm::edit(StringDoor door, int index) {
    OpenStringEditor(state_, session_, door, index);
    refresh();
    if (exec() != QDialog::Accepted || StringEditCancelled(state_)) return false;
    ApplyStringEdit(state_, session_);
    return true;
}

void StringEditForm::refresh() {
    if (refreshing_) return;
    refreshing_ = true;
    setWindowTitle(toQt(state_.Caption.empty() ? "MIDI String Edit" : state_.Caption));
    const int kind = state_.MessageCombo;
    const StringEditControls show = StringEditControlsFor(kind);
    ui_->MessageCombo->setCurrentIndex(kind);
    ui_->ChannelCombo->setCurrentIndex(state_.ChannelCombo);
    const ValueLabel one = Value1LabelFor(kind);
    const ValueLabel two = Value2LabelFor(kind);
    ui_->Value1Label->setText(toQt(one.caption));
    ui_->Value1Label->setToolTip(toQt(one.tip));
    ui_->Value2Label->setText(toQt(two.caption));
    ui_->Value2Label->setToolTip(toQt(two.tip));
    for (QWidget* w : {static_cast<QWidget*>(ui_->Value1Slider), static_cast<QWidget*>(ui_->Value1Label)})
        w->setVisible(show.Value1);
    ui_->Value1Text->setVisible(show.Value1Text);
    for (QWidget* w : {static_cast<QWidget*>(ui_->Value2Slider), static_cast<QWidget*>(ui_->Value2Label),
                       static_cast<QWidget*>(ui_->Value2Text)})
        w->setVisible(show.Value2);
    ui_->CCNameListCombo->setVisible(show.CCNameList);
    ui_->CCLabel->setVisible(show.CCNameList);
    ui_->Value1Slider->setValue(state_.Value1Slider);
    ui_->Value2Slider->setValue(state_.Value2Slider);
    if (!ui_->Value1Text->hasFocus() || !ui_->Value1Text->isModified()) ui_->Value1Text->setText(toQt(state_.Value1Text));
    if (!ui_->Value2Text->hasFocus() || !ui_->Value2Text->isModified()) ui_->Value2Text->setText(toQt(state_.Value2Text));
    if (kind == 3) ShowCCNumber(ui_->CCNameListCombo, state_.Value1Slider);

    for (QWidget* w : {static_cast<QWidget*>(ui_->MakeCombo), static_cast<QWidget*>(ui_->ModelCombo),
                       static_cast<QWidget*>(ui_->MakeLabel), static_cast<QWidget*>(ui_->ModelLabel),
                       static_cast<QWidget*>(ui_->ShowOwnOnlyCheck), static_cast<QWidget*>(ui_->SysexPrefixButton)})
        w->setVisible(show.DeviceGroup);
    ShowLines(ui_->MakeCombo, state_.MakeCombo);
    ShowLines(ui_->ModelCombo, state_.ModelCombo);
    ui_->ShowOwnOnlyCheck->setChecked(state_.ShowOwnOnlyCheck);
    ui_->SysexPrefixButton->setText(toQt(state_.SysexPrefixButton));
    ui_->StringLabel->setVisible(show.StringText);
    ui_->StringLabel->setText(toQt(StringLabelFor(kind)));
    ui_->StringText->setVisible(show.StringText);
    if (ui_->StringText->text() != toQt(state_.StringText) && state_.StringText != "__CANCEL__") {
        const int caret = ui_->StringText->cursorPosition();
        ui_->StringText->setText(toQt(state_.StringText));
        ui_->StringText->setCursorPosition(std::min(caret, static_cast<int>(ui_->StringText->text().size())));
    }
    for (int i = 0; i < 5; ++i) {
        auto* special = findChild<QPushButton*>(QString("SpecialButton_%1").arg(i));
        special->setVisible(show.SpecialButtons && SpecialButtonShown(state_.Door, i));
        special->setEnabled(!state_.Learning && SpecialButtonEnabled(state_.Door, i, session_.midi.PC1600Model));
    }
    ui_->RenderLabel->setText(toQt(state_.RenderLabel));
    ui_->StringList->clear();
    for (const auto& line : state_.StringList.lines()) ui_->StringList->addItem(toQt(line.text));
    ui_->StringList->setCurrentRow(state_.StringList.listIndex());
    ui_->PRNumberNotificationLabel->setText(toQt(state_.PRNumberNotificationLabel));
    ui_->DoneLearningButton->setVisible(state_.Learning);
    ui_->DoneLearningButton->setText(toQt(state_.DoneLearningButton));
    ui_->SysexPrefixButton->setEnabled(!state_.Learning && !state_.SysexPrefixText.empty());
    ui_->LearnSysexButton->setEnabled(!state_.Learning && learnPort_ != nullptr);
    refreshing_ = false;
}

bool StringEditForm::eventFilter(QObject* watched, QEvent* event) {
    if (watched == ui_->StringText) {
        if (event->type() == QEvent::FocusIn) {
            QTimer::singleShot(0, ui_->StringText, [this] {
                ui_->StringText->setCursorPosition(static_cast<int>(MSBModule::TrimRight(state_.StringText).size()));
            });
        }
        if (event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride) {
            auto* key = static_cast<QKeyEvent*>(event);
            if (key->matches(QKeySequence::Paste)) return true;  // typed bytes only
            // Return belongs to the typed bytes, never to a button of the window.
            if (event->type() == QEvent::KeyPress && (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter))
                return true;
        }
    }
    if ((watched == ui_->Value1Slider || watched == ui_->Value2Slider) && event->type() == QEvent::KeyPress &&
        SliderTextPair::StepByKey(static_cast<QSlider*>(watched), static_cast<QKeyEvent*>(event)))
        return true;
    return QDialog::eventFilter(watched, event);
}

void StringEditForm::reject() {
    CancelStringEdit(state_);
    QDialog::reject();
}

void StringEditForm::closeEvent(QCloseEvent* event) {
    CancelStringEdit(state_);
    QDialog::closeEvent(event);
}

}  // namespace tavlo

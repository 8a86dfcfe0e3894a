#include "midilink/MIDIForm.h"

#include <QCloseEvent>
#include <QListWidget>
#include <QSignalBlocker>

#include "midilink/MIDIFormOperations.h"
#include "midilink/VirtualDeviceFiles.h"
#include "shell/Program.h"
#include "ui/Prompter.h"
#include "midilink/MidiConfig.h"
#include "midilink/MidiLink.h"
#include "ui/ListLines.h"
#include "ui/QtText.h"
#include "ui_MIDIForm.h"

namespace tavlo {

MIDIForm::MIDIForm(Program& session, QWidget* parent)
    : QDialog(parent), session_(session), ui_(std::make_unique<Ui::MIDIForm>()) {
    ui_->setupUi(this);
    for (int channel = 1; channel <= 16; ++channel) {
        ui_->MIDIChannelCombo->addItem(QString::number(channel));
        ui_->VirtualChannelCombo->addItem(QString::number(channel));
    }

    MidiLink& link = session_.midiLink;
    connect(ui_->MIDIInDevicesList, &QListWidget::itemClicked, this,
            [this, &link] { listClicked(ui_->MIDIInDevicesList, link.form.MIDIInDevicesList, MIDIInDevicesList_Click); });
    connect(ui_->MIDIOutDevicesList, &QListWidget::itemClicked, this, [this, &link] {
        listClicked(ui_->MIDIOutDevicesList, link.form.MIDIOutDevicesList, MIDIOutDevicesList_Click);
    });
    connect(ui_->MIDILearnInDeviceList, &QListWidget::itemClicked, this, [this, &link] {
        listClicked(ui_->MIDILearnInDeviceList, link.form.MIDILearnInDeviceList, MIDILearnInDeviceList_Click);
    });
    connect(ui_->MIDISimOutDeviceList, &QListWidget::itemClicked, this, [this, &link] {
        listClicked(ui_->MIDISimOutDeviceList, link.form.MIDISimOutDeviceList, MIDISimOutDeviceList_Click);
    });
    connect(ui_->MIDIChannelCombo, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (refreshing_) return;
        session_.midi.DeviceId = index;
        session_.midi.notifyChanged();
    });
    connect(ui_->ModelOption_1, &QRadioButton::toggled, this, [this](bool on) {
        if (refreshing_) return;
        session_.midi.PC1600Model = on;
    });
    connect(ui_->TimeoutCombo, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (!refreshing_) session_.midi.TimeoutIndex = index;
    });
    connect(ui_->ManualCheck, &QCheckBox::toggled, this, [this](bool on) {
        if (!refreshing_) session_.midi.ManualMode = on;
    });
    connect(ui_->FreeMemText, &QLineEdit::textEdited, this,
            [this](const QString& text) { session_.midiLink.form.FreeMemText = fromQt(text); });
    connect(ui_->PrinterCombo, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (!refreshing_) session_.midiLink.form.PrinterCombo.setListIndex(index);
    });
    connect(ui_->VirtualPacingCheck, &QCheckBox::toggled, this, [this](bool on) {
        if (refreshing_) return;
        VirtualDeviceSettings settings = session_.midiLink.virtualDevice().settings();
        settings.wirePacing = on;
        session_.midiLink.virtualDevice().setSettings(settings);
    });
    connect(ui_->VirtualDelaySpin, &QSpinBox::valueChanged, this, [this](int ms) {
        if (refreshing_) return;
        VirtualDeviceSettings settings = session_.midiLink.virtualDevice().settings();
        settings.replyDelayMs = ms;
        session_.midiLink.virtualDevice().setSettings(settings);
    });
    connect(ui_->VirtualChannelCombo, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (refreshing_ || index < 0) return;
        VirtualDeviceSettings settings = session_.midiLink.virtualDevice().settings();
        settings.deviceId = index;
        session_.midiLink.virtualDevice().setSettings(settings);
    });
    connect(ui_->VirtualModelCheck, &QCheckBox::toggled, this, [this](bool on) {
        if (refreshing_) return;
        VirtualDeviceSettings settings = session_.midiLink.virtualDevice().settings();
        settings.pc1600Model = on;
        session_.midiLink.virtualDevice().setSettings(settings);
    });
    connect(ui_->VirtualLoadButton, &QPushButton::clicked, this,
            [this] { LoadVirtualMemory(session_.midiLink.virtualDevice(), session_.prompter); });
    connect(ui_->VirtualSaveButton, &QPushButton::clicked, this,
            [this] { SaveVirtualMemory(session_.midiLink.virtualDevice(), session_.prompter); });
    connect(ui_->VirtualClearButton, &QPushButton::clicked, this,
            [this] { session_.midiLink.virtualDevice().clearMemory(); });
    connect(ui_->TestButton, &QPushButton::clicked, this, [this] { TestButton(session_); });
    connect(ui_->OKButton, &QPushButton::clicked, this, &MIDIForm::ok);

    formToken_ = link.form.subscribe([this] { refresh(); });
    midiToken_ = session_.midi.subscribe([this] { refresh(); });
    refresh();
}

MIDIForm::~MIDIForm() {
    session_.midiLink.form.unsubscribe(formToken_);
    session_.midi.unsubscribe(midiToken_);
}

void MIDIForm::showConfiguration() {
    session_.midiLink.form.Visible = true;
    session_.midiLink.form.notifyChanged();
}

void MIDIForm::fillList(QListWidget* widget, const ListState& list) {
    ShowLines(widget, list);
    widget->setCurrentRow(list.listIndex());
    if (list.listIndex() < 0) widget->clearSelection();
}

void MIDIForm::refresh() {
    refreshing_ = true;
    const MIDIFormState& form = session_.midiLink.form;
    const MidiConfig& midi = session_.midi;
    setWindowTitle(toQt(form.Caption));
    fillList(ui_->MIDIInDevicesList, form.MIDIInDevicesList);
    fillList(ui_->MIDIOutDevicesList, form.MIDIOutDevicesList);
    fillList(ui_->MIDILearnInDeviceList, form.MIDILearnInDeviceList);
    fillList(ui_->MIDISimOutDeviceList, form.MIDISimOutDeviceList);
    ui_->MIDIChannelCombo->setCurrentIndex(midi.DeviceId);
    (midi.PC1600Model ? ui_->ModelOption_1 : ui_->ModelOption_0)->setChecked(true);
    ui_->TimeoutCombo->setCurrentIndex(midi.TimeoutIndex);
    ui_->ManualCheck->setChecked(midi.ManualMode);
    if (ui_->FreeMemText->text() != toQt(form.FreeMemText)) ui_->FreeMemText->setText(toQt(form.FreeMemText));
    ui_->PrinterCombo->clear();
    for (const auto& line : form.PrinterCombo.lines()) ui_->PrinterCombo->addItem(toQt(line.text));
    ui_->PrinterCombo->setCurrentIndex(form.PrinterCombo.listIndex());
    const VirtualDeviceSettings& device = session_.midiLink.virtualDevice().settings();
    ui_->VirtualChannelCombo->setCurrentIndex(device.deviceId);
    ui_->VirtualModelCheck->setChecked(device.pc1600Model);
    ui_->VirtualPacingCheck->setChecked(device.wirePacing);
    ui_->VirtualDelaySpin->setValue(device.replyDelayMs);
    // The channel search disables everything, both model options included.
    for (QWidget* child : findChildren<QWidget*>()) child->setEnabled(form.ControlsEnabled);
    refreshing_ = false;
    if (form.Visible && !isVisible()) {
        setWindowModality(Qt::ApplicationModal);
        QDialog::show();
        raise();
    } else if (!form.Visible && isVisible()) {
        QDialog::hide();
    }
}

void MIDIForm::listClicked(QListWidget* widget, ListState& list, bool (*click)(const LinkContext&)) {
    if (refreshing_) return;
    list.setListIndex(widget->currentRow());
    click(session_);
}

void MIDIForm::ok() {
    // A text being typed counts as entered.
    session_.midiLink.form.FreeMemText = fromQt(ui_->FreeMemText->text());
    OKButton(session_);
}

void MIDIForm::closeEvent(QCloseEvent* event) {
    ok();
    if (session_.midiLink.form.Visible) event->ignore();
    else event->accept();
}

void MIDIForm::reject() {
    ok();
}

}  // namespace tavlo

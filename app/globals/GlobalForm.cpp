#include "globals/GlobalForm.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSlider>
#include <algorithm>

#include "base/MSBModule.h"
#include "editor/ParameterText.h"
#include "globals/GlobalPool.h"
#include "globals/GlobalSettings.h"
#include "globals/GlobalsFlows.h"
#include "globals/GlobalsState.h"
#include "midilink/MidiConfig.h"
#include "shell/Program.h"
#include "ui/ListLines.h"
#include "ui/QtText.h"
#include "ui/SliderTextPair.h"

namespace tavlo {
namespace {

std::string Number(int value) { return std::to_string(value); }

std::function<int(const std::string&)> InRange(const SliderRange& range) {
    return [range](const std::string& text) { return ParameterText::ParseRangeText(text, range.low, range.high); };
}

QPushButton* Button(const char* name, const char* caption) {
    auto* button = new QPushButton(QString::fromUtf8(caption));
    button->setObjectName(name);
    button->setAutoDefault(false);
    return button;
}

}  // namespace

GlobalForm::GlobalForm(Program& session, QWidget* parent) : QWidget(parent), session_(session) {
    setObjectName("GlobalForm");
    auto* layout = new QGridLayout(this);
    auto* settings = new QGroupBox("Settings");
    auto* grid = new QGridLayout(settings);
    buildSettings(grid);
    layout->addWidget(settings, 0, 0, 2, 1);
    layout->addWidget(buildFilters(), 0, 1);
    layout->addWidget(buildMapFrame(), 1, 1);
    layout->addWidget(buildButtons(), 2, 0, 1, 2);
    token_ = session_.globals.subscribe([this] { refresh(); });
    midiToken_ = session_.midi.subscribe([this] { refresh(); });
    refresh();
}

GlobalForm::~GlobalForm() {
    session_.globals.unsubscribe(token_);
    session_.midi.unsubscribe(midiToken_);
}

void GlobalForm::buildSettings(QGridLayout* grid) {
    name_ = new QLineEdit;
    name_->setObjectName("GlobalNameText");
    name_->setMaxLength(50);
    grid->addWidget(new QLabel("Name:"), 0, 0);
    grid->addWidget(name_, 0, 1, 1, 2);
    connect(name_, &QLineEdit::editingFinished, this, [this] {
        if (refreshing_ || !name_->isModified()) return;
        name_->setModified(false);
        edit([this](GlobalSettings& s) { s.Name = fromQt(name_->text()); });
    });
    default_ = new QCheckBox("&Make this my Default Globals");
    default_->setObjectName("DefaultCheck");
    grid->addWidget(default_, 1, 1, 1, 2);
    connect(default_, &QCheckBox::clicked, this, [this](bool on) { edit([on](GlobalSettings& s) { s.Default = on; }); });

    const auto field = [](int GlobalSettings::*member) -> Field {
        return [member](GlobalSettings& s) -> int& { return s.*member; };
    };
    addPair(grid, 2, "ChIn", "MIDI Channel In:", kChannelSlider, field(&GlobalSettings::ChIn), Number,
            InRange(kChannelSlider));
    addPair(grid, 3, "ChOut", "MIDI Channel Out:", kChannelSlider, field(&GlobalSettings::ChOut), Number,
            InRange(kChannelSlider));
    addPair(grid, 4, "DevNum", "Device Number:", kByteSlider, field(&GlobalSettings::DevNum), DeviceNumberText,
            InRange(kByteSlider));
    addPair(grid, 5, "ViewAngle", "View Angle:", kByteSlider, field(&GlobalSettings::ViewAngle), Number,
            InRange(kByteSlider));
    addPair(grid, 6, "RecChannel", "Record Channel:", kRecChannelSlider, field(&GlobalSettings::RecChannel),
            RecChannelText, [](const std::string& text) {
                if (MSBModule::ToUpper(MSBModule::Trim(text)) == "OFF") return 0;
                return ParameterText::ParseRangeText(text, kRecChannelSlider.low, kRecChannelSlider.high);
            });
    addPair(grid, 7, "RemoteButtonChannel", "Remote Channel:", kChannelSlider, field(&GlobalSettings::RemoteChannel),
            Number, InRange(kChannelSlider));
    addPair(grid, 8, "RemoteButtonStart", "Starting Note:", kByteSlider, field(&GlobalSettings::StartingNote), Number,
            InRange(kByteSlider));
    addPair(grid, 9, "PerMessage", "Delay after Sysex:", kByteSlider, field(&GlobalSettings::PerMessage), Number,
            InRange(kByteSlider));
    addPair(grid, 10, "PerByte", "Delay per Byte:", kByteSlider, field(&GlobalSettings::PerByte), PerByteText,
            [](const std::string& text) { return ParameterText::ParseRangeText(text, 0, 10 * kByteSlider.high) / 10; });
    // The PC1600X's own settings.
    for (int row : {6, 7, 8, 9, 10})
        for (int column = 0; column < 3; ++column) pc1600xOnly_.push_back(grid->itemAtPosition(row, column)->widget());

    pc1600xOnly_.push_back(addCombo(grid, 11, "RemoteButtonCombo", "Remote Buttons:", RemoteButtonLines(),
                                    field(&GlobalSettings::RemoteButton)));
    addCombo(grid, 12, "CurrentMapCombo", "Current Map:", CurrentMapLines(), field(&GlobalSettings::CurrentMap));
    addCombo(grid, 13, "FootSwitch1Combo", "Foot Switch 1:", FootSwitchLines(), field(&GlobalSettings::FootSwitch1));
    addCombo(grid, 14, "FootSwitch2Combo", "Foot Switch 2:", FootSwitchLines(), field(&GlobalSettings::FootSwitch2));
    grid->setRowStretch(15, 1);
}

void GlobalForm::addPair(QGridLayout* grid, int row, const char* name, const char* caption, const SliderRange& range,
                         Field field, std::function<std::string(int)> text,
                         std::function<int(const std::string&)> parse) {
    auto* slider = new QSlider(Qt::Horizontal);
    slider->setObjectName(QString(name) + "Slider");
    auto* box = new QLineEdit;
    box->setObjectName(QString(name) + "Text");
    box->setMaximumWidth(90);
    grid->addWidget(new QLabel(caption), row, 0);
    grid->addWidget(slider, row, 1);
    grid->addWidget(box, row, 2);
    auto* pair = new SliderTextPair(
        slider, box, std::move(text), std::move(parse),
        [this, field](int value) { edit([&](GlobalSettings& s) { field(s) = value; }); }, &refreshing_);
    pairs_.push_back({pair, std::move(field), range.low, range.high});
}

QComboBox* GlobalForm::addCombo(QGridLayout* grid, int row, const char* name, const char* caption,
                                const std::vector<std::string>& lines, Field field) {
    auto* combo = new QComboBox;
    combo->setObjectName(name);
    grid->addWidget(new QLabel(caption), row, 0);
    grid->addWidget(combo, row, 1, 1, 2);
    // A byte the list has no line for stays what it is until a line is chosen.
    connect(combo, &QComboBox::activated, this, [this, field, count = static_cast<int>(lines.size())](int line) {
        if (line < count) edit([&](GlobalSettings& s) { field(s) = line; });
    });
    combos_.push_back({combo, std::move(field), &lines});
    return combo;
}

QWidget* GlobalForm::buildFilters() {
    auto* box = new QGroupBox("Filters");
    auto* grid = new QGridLayout(box);
    // "All MIDI Information" (index 0) heads the list; the others follow it.
    for (int i = 0; i < kFilterCount; ++i) {
        auto* check = new QCheckBox(QString::fromUtf8(kFilterCaptions[static_cast<std::size_t>(i)]));
        check->setObjectName(QString("Check1_%1").arg(i));
        const int at = i == 0 ? 0 : i;
        grid->addWidget(check, i == 0 ? 0 : 1 + (at - 1) / 2, i == 0 ? 0 : (at - 1) % 2, 1, i == 0 ? 2 : 1);
        connect(check, &QCheckBox::clicked, this, [this, i](bool on) {
            edit([&](GlobalSettings& s) { s.Filters[static_cast<std::size_t>(i)] = on; });
        });
        filters_[static_cast<std::size_t>(i)] = check;
    }
    return box;
}

QWidget* GlobalForm::buildMapFrame() {
    auto* box = new QGroupBox("Program Change Maps");
    auto* grid = new QGridLayout(box);
    editMap_ = new QComboBox;
    editMap_->setObjectName("EditMapCombo");
    editMap_->addItems({"Map 1", "Map 2", "Map 3"});
    progChanges_ = new QListWidget;
    progChanges_->setObjectName("ProgChangeList");
    targets_ = new QListWidget;
    targets_->setObjectName("MapList");
    targets_->setToolTip("Double click a target to give it to the selected program change");
    auto* initAll = Button("MapInitButton", "Initialize &All");
    auto* initThis = Button("InitThisMapButton", "&Initialize This Map");
    grid->addWidget(new QLabel("Edit Map:"), 0, 0);
    grid->addWidget(editMap_, 0, 1);
    grid->addWidget(progChanges_, 1, 0, 1, 2);
    grid->addWidget(targets_, 1, 2);
    grid->addWidget(initAll, 2, 0);
    grid->addWidget(initThis, 2, 1);

    GlobalsState& state = session_.globals;
    connect(editMap_, &QComboBox::activated, this, [&state](int map) {
        state.EditMapCombo = map;
        LoadMapFrame(state);
        state.notifyChanged();
    });
    connect(progChanges_, &QListWidget::currentRowChanged, this, [this, &state](int row) {
        if (!refreshing_ && row >= 0) state.ProgChangeList.setListIndex(row);
    });
    connect(targets_, &QListWidget::currentRowChanged, this, [this, &state](int row) {
        if (!refreshing_ && row >= 0) state.MapList.setListIndex(row);
    });
    connect(targets_, &QListWidget::itemDoubleClicked, this, [this, &state](QListWidgetItem* item) {
        state.MapList.setListIndex(targets_->row(item));
        MapListDoubleClick(state);
    });
    connect(initAll, &QPushButton::clicked, this, [&state] { InitAllMaps(state); });
    connect(initThis, &QPushButton::clicked, this, [&state] { InitThisMap(state); });
    return box;
}

QWidget* GlobalForm::buildButtons() {
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    const auto run = [this](bool (*flow)(const GlobalsContext&)) {
        return [this, flow] {
            commitTexts();
            flow(session_);
        };
    };
    const struct {
        const char* name;
        const char* caption;
        std::function<void()> action;
    } buttons[] = {
        {"DatabaseButton", "Store these Globals in the Pool",
         [this] {
             commitTexts();
             StoreGlobals(session_);
         }},
        {"GetButton", "&Get from PC1600(x)", run(GetGlobalsButton)},
        {"SendButton", "&Send to PC1600(x)", run(SendGlobalsButton)},
        {"SaveSysexButon", "Save Globals to Sysex File", run(SaveGlobalsButton)},
        {"LoadSysexButton", "Load Globals from Sysex File", run(LoadGlobalsButton)},
    };
    for (const auto& b : buttons) {
        QPushButton* button = Button(b.name, b.caption);
        connect(button, &QPushButton::clicked, this, b.action);
        layout->addWidget(button);
    }
    layout->addStretch();
    return row;
}

void GlobalForm::edit(const std::function<void(GlobalSettings&)>& change) {
    if (refreshing_) return;
    change(session_.globals.settings);
    session_.globals.notifyChanged();
}

void GlobalForm::commitTexts() {
    for (const Pair& p : pairs_) p.pair->commitText();
    if (name_->isModified()) emit name_->editingFinished();
}

void GlobalForm::refresh() {
    if (refreshing_) return;
    refreshing_ = true;
    GlobalsState& state = session_.globals;
    GlobalSettings& s = state.settings;
    setWindowTitle(toQt(state.Caption));
    if (state.Visible && !frame()->isVisible()) {
        frame()->show();
        if (frame() != this) frame()->raise();
    }
    if (!name_->hasFocus() || !name_->isModified()) name_->setText(toQt(s.Name));
    default_->setChecked(s.Default);
    for (const Pair& p : pairs_) {
        const int value = p.field(s);
        p.pair->show(value, std::min(p.low, value), std::max(p.high, value));
    }
    for (const auto& [combo, field, linesOf] : combos_) {
        const std::vector<std::string>& lines = *linesOf;
        const int value = field(s);
        const bool listed = value >= 0 && value < static_cast<int>(lines.size());
        std::vector<std::string> shown = lines;
        if (!listed) shown.push_back(ComboText(lines, value));
        ShowLines(combo, shown, listed ? value : static_cast<int>(lines.size()));
    }
    for (int i = 0; i < kFilterCount; ++i) filters_[static_cast<std::size_t>(i)]->setChecked(s.Filters[static_cast<std::size_t>(i)]);
    const bool pc1600 = session_.midi.PC1600Model;
    for (QWidget* w : pc1600xOnly_) {
        w->setEnabled(!pc1600);
        w->setToolTip(pc1600 ? "Only the PC1600X has this setting (the MIDI configuration's model is the PC1600)"
                             : QString());
    }

    editMap_->setCurrentIndex(state.EditMapCombo);
    if (state.ProgChangeList.listCount() == 0) LoadMapFrame(state);
    ShowLines(progChanges_, state.ProgChangeList);
    progChanges_->setCurrentRow(state.ProgChangeList.listIndex());
    ShowLines(targets_, state.MapList);
    targets_->setCurrentRow(state.MapList.listIndex());
    refreshing_ = false;
}

QWidget* GlobalForm::frame() {
    QWidget* parent = parentWidget();
    return parent && parent->inherits("QMdiSubWindow") ? parent : this;
}

void GlobalForm::showWindow() {
    session_.globals.Visible = true;
    frame()->show();
    if (frame() != this) frame()->raise();
    refresh();
}

void GlobalForm::newSettings() {
    commitTexts();
    if (!AskStoreGlobalsOnClose(session_)) return;
    GlobalsState& state = session_.globals;
    ShowGlobalSettings(state, NewGlobalSettings());
    state.Caption = "Edit Global Settings from Pool - No Current Memory Image";
    state.notifyChanged();
    showWindow();
}

void GlobalForm::closeEvent(QCloseEvent* event) {
    // The window is only ever hidden: it lives for the whole run.
    event->ignore();
    commitTexts();
    if (!AskStoreGlobalsOnClose(session_)) return;
    session_.globals.Visible = false;
    frame()->hide();
}

}  // namespace tavlo

#include "editor/PC1600XForm.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QCloseEvent>
#include <QDrag>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QApplication>
#include <QFontMetrics>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QRegularExpressionValidator>
#include <QTimer>
#include <cstdio>

#include "editor/CopyPasteSpread.h"
#include "pool/EditorStoreQuestions.h"
#include "editor/EditorDefaults.h"
#include "editor/EditorSelection.h"
#include "editor/FunctionAssignment.h"
#include "editor/InitPreset.h"
#include "editor/ParameterRanges.h"
#include "editor/ParameterText.h"
#include "editor/Scenes.h"
#include "editor/SetupInfo.h"
#include "base/MSBModule.h"
#include "midistrings/StringEditForm.h"
#include "midistrings/StringLearn.h"
#include "db/Database.h"
#include "pool/PresetStore.h"
#include "presetfile/PresetFileButtons.h"
#include "sysex/PresetCodes.h"
#include "shell/Program.h"
#include "ui/Prompter.h"
#include "db/PoolDatabase.h"
#include "editor/EditorState.h"
#include "midilink/MidiConfig.h"
#include "midilink/MidiLink.h"
#include "ui/CCDigitTyping.h"
#include "ui/CCNameList.h"
#include "ui/LabelDefaults.h"
#include "ui/ListLines.h"
#include "ui/QtText.h"
#include "ui/SliderTextPair.h"
#include "ui_PC1600XForm.h"

namespace tavlo {

namespace {

constexpr const char* kDragMime = "application/x-tavlo-control";

template <typename T>
T* child(QWidget* parent, const QString& name) {
    T* widget = parent->findChild<T*>(name);
    Q_ASSERT(widget);
    return widget;
}

std::string number(int value) { return std::to_string(value); }

// A control of the panel shows its name over its tag.
// A caption's lines: the name, then its tag "(cc)" on a line of its own;
// words that don't fit go on the next line, and a word wider than the whole
// line is broken between its characters, so nothing is cut off.
QStringList wrapCaption(const std::string& caption, const QFontMetrics& metrics, int width) {
    QString text = toQt(caption);
    text.replace("  (", "\n(");
    text.replace(" (", "\n(");
    QStringList lines;
    for (const QString& paragraph : text.split('\n')) {
        QString line;
        for (QString word : paragraph.split(' ', Qt::SkipEmptyParts)) {
            const QString joined = line.isEmpty() ? word : line + ' ' + word;
            if (metrics.horizontalAdvance(joined) <= width) {
                line = joined;
                continue;
            }
            if (!line.isEmpty()) lines << line;
            line.clear();
            for (const QChar c : word) {
                if (!line.isEmpty() && metrics.horizontalAdvance(line + c) > width) {
                    lines << line;
                    line.clear();
                }
                line += c;
            }
        }
        if (!line.isEmpty()) lines << line;
    }
    return lines;
}

// Shows a caption on a panel control whole: wrapped to the control's width,
// in a smaller font when the lines would not fit its height.
void showPanelCaption(QWidget* control, const std::string& caption, qreal pointSize, int margin) {
    QFont font = control->font();
    const int width = control->contentsRect().width() - margin;
    const int height = control->contentsRect().height();
    QStringList lines;
    for (qreal size = pointSize;; size -= 0.5) {
        font.setPointSizeF(size);
        const QFontMetrics metrics(font);
        lines = wrapCaption(caption, metrics, width);
        if (lines.size() * metrics.lineSpacing() <= height || size <= 5) break;
    }
    control->setFont(font);
    const QString text = lines.join('\n');
    if (auto* label = qobject_cast<QLabel*>(control)) label->setText(text);
    else if (auto* button = qobject_cast<QAbstractButton*>(control)) button->setText(text);
}

// Only the characters a name sent to the device may hold can be typed.
QValidator* nameValidator(QObject* parent) {
    const QString set = QRegularExpression::escape(toQt(std::string(MSBModule::kNameCharacters)));
    return new QRegularExpressionValidator(QRegularExpression("[" + set + "]*"), parent);
}

}  // namespace

PC1600XForm::PC1600XForm(Program& session, QWidget* parent)
    : QWidget(parent), session_(session), editor_(session.editor), ui_(std::make_unique<Ui::PC1600XForm>()) {
    ui_->setupUi(this);
    // Laid out by hand as a picture of the panel: the size is the design's.
    designSize_ = size();
    setWindowTitle("PC1600x Preset Editor");
    for (int i = 0; i < 18; ++i) {
        sliders_[i] = child<QSlider>(this, QString("PCSlider_%1").arg(i));
        faderLabels_[i] = child<QLabel>(this, QString("FaderLabel_%1").arg(i));
    }
    for (int i = 0; i < 16; ++i) buttons_[i] = child<QPushButton>(this, QString("PCButton_%1").arg(i));
    DragTimer = new QTimer(this);
    DragTimer->setObjectName("DragTimer");
    DragTimer->setInterval(600);
    DragTimer->setSingleShot(true);
    connect(DragTimer, &QTimer::timeout, this, &PC1600XForm::dragTimerFired);
    labelDefaults_ = new LabelDefaults(this);
    editor_.ShowingParams = false;
    for (QLabel* label : faderLabels_) {
        QFont small = label->font();
        small.setPointSize(8);
        label->setFont(small);
    }
    // A fresh editor still needs the "<none>" lines of its scene lists.
    if (editor_.SelectPresetSceneCombo.listCount() == 0) RefillSceneLists(editor_);

    fillFixedLists();
    connectTopBar();
    connectPanel();
    connectFaderFrame();
    connectButtonFrame();
    connectSetupFrame();
    setStoreAction([this] { StoreInPoolButton(session_); });
    setInitAction([this] { InitPresetButton(session_); });
    stringEditForm_ = new StringEditForm(session_, this);
    learnPort_ = std::make_unique<LearnPortMessages>(session_.midiLink.MIDILearnIn);
    stringEditForm_->setLearnSource(learnPort_.get());
    setStringEditor([this](StringDoor door) {
        const int index = door == StringDoor::Fader ? editor_.CurrentFader : editor_.CurrentButton;
        stringEditForm_->edit(door, index);
    });

    token_ = editor_.subscribe([this] { refresh(); });
    // The device model decides which setup controls exist.
    midiToken_ = session_.midi.subscribe([this] { refresh(); });
    refresh();
}

QSize PC1600XForm::sizeHint() const { return designSize_; }

PC1600XForm::~PC1600XForm() {
    editor_.unsubscribe(token_);
    session_.midi.unsubscribe(midiToken_);
    // The child widgets outlive this object's members: their last signals
    // must not reach it.
    for (QObject* widget : findChildren<QObject*>()) QObject::disconnect(widget, nullptr, this, nullptr);
}

void PC1600XForm::setStoreAction(std::function<void()> store) {
    store_ = std::move(store);
    ui_->StoreInPoolButton->setEnabled(static_cast<bool>(store_));
}

void PC1600XForm::setInitAction(std::function<void()> init) {
    init_ = std::move(init);
    ui_->InitPresetButton->setEnabled(static_cast<bool>(init_));
}

void PC1600XForm::setStringEditor(std::function<void(StringDoor)> edit) {
    editString_ = std::move(edit);
    for (QPushButton* b : {ui_->EditStringButton, ui_->String1Button, ui_->String2Button, ui_->SStringButton})
        b->setEnabled(static_cast<bool>(editString_));
}

void PC1600XForm::fillFixedLists() {
    for (int i = 0; i < PresetCodes::kDataWheelEntries; ++i) ui_->DataWheelCombo->addItem(toQt(PresetCodes::DataWheelText(i)));
    for (const auto& f : PresetCodes::kFaderFunctions) ui_->FunctionCombo->addItem(toQt(std::string(f.text)));
    for (const auto& f : PresetCodes::kButtonFunctions) ui_->BFunctionCombo->addItem(toQt(std::string(f.text)));
    for (const auto& f : PresetCodes::kParamFormats) ui_->ParamFormatCombo->addItem(toQt(std::string(f.text)));
    for (const auto& m : PresetCodes::kReplaceModes) ui_->ModeCombo->addItem(toQt(std::string(m)));
    reloadCCNameList();
    ui_->PresetNameText->setValidator(nameValidator(this));
    ui_->NameText->setValidator(nameValidator(this));
    ui_->BNameText->setValidator(nameValidator(this));
}

void PC1600XForm::reloadCCNameList() {
    ui_->CCNameListCombo->clear();
    FillCCNameList(ui_->CCNameListCombo, session_.pool.db());
}

void PC1600XForm::commitName(QLineEdit* text, const std::function<void(const std::string&)>& store) {
    if (refreshing_ || !text->isModified()) return;
    text->setModified(false);
    store(fromQt(text->text()));
}

void PC1600XForm::connectTopBar() {
    connect(ui_->PresetNameText, &QLineEdit::editingFinished, this, [this] {
        commitName(ui_->PresetNameText, [this](const std::string& name) {
            editor_.preset.Name = MSBModule::FilterNameCharacters(name).substr(0, 16);
            editor_.notifyChanged();
        });
    });
    connect(ui_->PresetNotesText, &QPlainTextEdit::textChanged, this, [this] {
        if (!refreshing_) editor_.preset.Notes = fromQt(ui_->PresetNotesText->toPlainText());
    });
    connect(ui_->DataWheelCombo, &QComboBox::activated, this, [this](int index) {
        editor_.preset.DataWheelLink = static_cast<std::int16_t>(index);
        editor_.notifyChanged();
    });
    labelDefaults_->add(ui_->DataWheelLabel1, [this] {
        WriteDefault(session_.pool.db(), "DataWheelLink", ui_->DataWheelCombo->currentIndex());
    });
    connect(ui_->StoreInPoolButton, &QPushButton::clicked, this, [this] {
        UpdateDefs();
        if (store_) store_();
    });
    connect(ui_->InitPresetButton, &QPushButton::clicked, this, [this] {
        if (init_) init_();
    });
    connect(ui_->SetupStringButton, &QPushButton::clicked, this, [this] { ShowSetupFrame(editor_); });
    connect(ui_->LoadPresetSysexButton, &QPushButton::clicked, this, [this] { LoadPresetSysexButton(session_); });
    connect(ui_->SavePresetSysexButton, &QPushButton::clicked, this,
            [this] { EditorSavePresetSysexButton(session_); });
    connect(ui_->AssociateButton, &QPushButton::clicked, this, [this] {
        editor_.BorderedSlider = -1;
        editor_.HighlightedButton = -1;
        editor_.ShownFrame = EditorFrame::Associate;
        editor_.notifyChanged();
    });

    connect(ui_->SelectSceneCombo, &QComboBox::activated, this, [this](int index) { SelectScene(editor_, index); });
    connect(ui_->MakeSceneButton, &QPushButton::clicked, this, [this] {
        UpdateDefs();
        MakeScene(session_);
    });
    connect(ui_->RenameSceneButton, &QPushButton::clicked, this, [this] { RenameScene(session_); });
    connect(ui_->DeleteSceneButton, &QPushButton::clicked, this, [this] {
        UpdateDefs();
        DeleteScene(session_);
    });
    connect(ui_->CopySceneButton, &QPushButton::clicked, this, [this] { CopyScene(editor_); });
    connect(ui_->CopyButton, &QPushButton::clicked, this, [this] {
        UpdateDefs();
        CopyControl(editor_);
    });
    connect(ui_->PasteButton, &QPushButton::clicked, this, [this] { PasteControl(session_, false); });
    connect(ui_->MoveDownButton, &QPushButton::clicked, this, [this] {
        UpdateDefs();
        MoveControlDown(editor_);
    });
    connect(ui_->MoveUpButton, &QPushButton::clicked, this, [this] {
        UpdateDefs();
        MoveControlUp(editor_);
    });
}

void PC1600XForm::connectPanel() {
    for (int i = 0; i < 18; ++i) {
        QSlider* slider = sliders_[i];
        slider->installEventFilter(this);
        slider->setAcceptDrops(true);
        faderLabels_[i]->installEventFilter(this);
        faderLabels_[i]->setAcceptDrops(true);
        connect(slider, &QSlider::valueChanged, this, [this, i](int position) {
            if (refreshing_) return;
            // A slider that moved isn't being dragged.
            sliderMovedSincePress_ = true;
            DragTimer->stop();
            SetPCSliderPosition(editor_, i, position);
        });
    }
    for (int i = 0; i < 16; ++i) {
        buttons_[i]->installEventFilter(this);
        buttons_[i]->setAcceptDrops(true);
        connect(buttons_[i], &QPushButton::clicked, this, [this, i] { ClickButton(editor_, i); });
    }
}

void PC1600XForm::connectFaderFrame() {
    connect(ui_->FunctionCombo, &QComboBox::activated, this, [this](int index) {
        UpdateDefs();
        ChooseFaderFunction(editor_, session_.pool.db(), index);
    });
    connect(ui_->NameText, &QLineEdit::editingFinished, this,
            [this] { commitName(ui_->NameText, [this](const std::string& n) { SetFaderName(editor_, n); }); });
    connect(ui_->ValueText, &QLineEdit::editingFinished, this, [this] {
        if (refreshing_ || !ui_->ValueText->isModified()) return;
        ui_->ValueText->setModified(false);
        SetFaderValueText(editor_, fromQt(ui_->ValueText->text()));
    });
    pairs_["Channel"] = new SliderTextPair(
        ui_->ChannelSlider, ui_->ChannelText, [](int v) { return PresetCodes::FaderChannelText(v); },
        [](const std::string& t) { return ParameterText::ParseChannelText(t); },
        [this](int v) { SetFaderChannel(editor_, v); }, &refreshing_);
    pairs_["MinVal"] = new SliderTextPair(
        ui_->MinValSlider, ui_->MinValText, number,
        [this](const std::string& t) {
            return ParameterText::ParseRangeText(t, editor_.MinMaxSliderMin, editor_.MinMaxSliderMax);
        },
        [this](int v) { SetFaderMin(editor_, v); }, &refreshing_);
    pairs_["MaxVal"] = new SliderTextPair(
        ui_->MaxValSlider, ui_->MaxValText, number,
        [this](const std::string& t) {
            return ParameterText::ParseRangeText(t, editor_.MinMaxSliderMin, editor_.MinMaxSliderMax);
        },
        [this](int v) { SetFaderMax(editor_, v); }, &refreshing_);
    connect(ui_->SwapMinMaxButton, &QPushButton::clicked, this, [this] { SwapMinMax(editor_); });
    connect(ui_->CCNumSlider, &QSlider::valueChanged, this, [this](int v) {
        if (refreshing_) return;
        SetFaderCCNum(editor_, v);
    });
    connect(ui_->CCNameListCombo, &QComboBox::activated, this, [this](int line) {
        const int cc = CCNumberAt(ui_->CCNameListCombo, line);
        if (cc >= 0) ui_->CCNumSlider->setValue(cc);
    });
    new CCDigitTyping(ui_->CCNameListCombo, [this](int cc) { ui_->CCNumSlider->setValue(cc); });
    ui_->CCNumSlider->installEventFilter(this);
    connect(ui_->ModeCombo, &QComboBox::activated, this, [this](int index) { SetReplaceMode(editor_, index); });
    connect(ui_->ParamFormatCombo, &QComboBox::activated, this, [this](int index) { SetParamFormat(editor_, index); });
    for (int k = 0; k < 18; ++k) {
        auto* box = child<QCheckBox>(this, QString("Check1_%1").arg(k));
        connect(box, &QCheckBox::clicked, this, [this, k](bool on) { SetMasterCheck(editor_, k, on); });
    }
    connect(ui_->InitFaderButton, &QPushButton::clicked, this, [this] { InitFader(editor_, editor_.CurrentFader); });
    connect(ui_->SpreadButton, &QPushButton::clicked, this, [this] { spread(false); });
    connect(ui_->EditStringButton, &QPushButton::clicked, this, [this] {
        UpdateDefs();
        if (editString_) editString_(StringDoor::Fader);
    });
    auto setDefault = [this](const char* field, auto value) {
        return [this, field, value] { WriteDefault(session_.pool.db(), field, value()); };
    };
    labelDefaults_->add(ui_->ChannelLabel, setDefault("FaderChannel", [this] { return ui_->ChannelSlider->value(); }));
    labelDefaults_->add(ui_->CCNumLabel, setDefault("CCNum", [this] { return ui_->CCNumSlider->value(); }));
    labelDefaults_->add(ui_->ModeLabel, setDefault("ReplaceMode", [this] { return ui_->ModeCombo->currentIndex(); }));
    labelDefaults_->add(ui_->ParamFormatLabel,
                        setDefault("ParamFormat", [this] { return ui_->ParamFormatCombo->currentIndex(); }));
}

void PC1600XForm::connectButtonFrame() {
    connect(ui_->BFunctionCombo, &QComboBox::activated, this, [this](int index) {
        UpdateDefs();
        ChooseButtonFunction(editor_, session_.pool.db(), session_.prompter, session_.midi.PC1600Model, index);
        refresh();
    });
    connect(ui_->BNameText, &QLineEdit::editingFinished, this,
            [this] { commitName(ui_->BNameText, [this](const std::string& n) { SetButtonName(editor_, n); }); });
    pairs_["BChannel"] = new SliderTextPair(
        ui_->BChannelSlider, ui_->BChannelText, [](int v) { return PresetCodes::ButtonChannelText(v); },
        [](const std::string& t) { return ParameterText::ParseChannelText(t); },
        [this](int v) { SetButtonChannel(editor_, v); }, &refreshing_);
    pairs_["BProgChange"] = new SliderTextPair(
        ui_->BProgChangeSlider, ui_->BProgChangeText, ParameterText::ThreeDigits,
        [](const std::string& t) { return ParameterText::ParseProgChangeText(t); },
        [this](int v) { SetButtonProgChange(editor_, v); }, &refreshing_);
    pairs_["BNote"] = new SliderTextPair(
        ui_->BNoteSlider, ui_->BNoteText, ParameterText::NoteText,
        [](const std::string& t) { return ParameterText::ParseNoteText(t); },
        [this](int v) { SetButtonNote(editor_, v); }, &refreshing_);
    pairs_["Velocity"] = new SliderTextPair(
        ui_->VelocitySlider, ui_->VelocityText, ParameterText::VelocityText,
        [](const std::string& t) { return ParameterText::ParseVelocityText(t); },
        [this](int v) { SetButtonVelocity(editor_, v); }, &refreshing_);
    connect(ui_->SwapStringsButton, &QPushButton::clicked, this, [this] { SwapButtonStrings(editor_); });
    connect(ui_->BSceneCombo, &QComboBox::activated, this, [this](int line) { ChooseButtonScene(editor_, line); });
    connect(ui_->BOtherSceneButton, &QPushButton::clicked, this, [this] { otherScene(true); });
    connect(ui_->InitButtonButton, &QPushButton::clicked, this, [this] { InitButton(editor_, editor_.CurrentButton); });
    connect(ui_->BSpreadButton, &QPushButton::clicked, this, [this] { spread(true); });
    connect(ui_->String1Button, &QPushButton::clicked, this, [this] {
        UpdateDefs();
        if (editString_) editString_(StringDoor::Button1);
    });
    connect(ui_->String2Button, &QPushButton::clicked, this, [this] {
        UpdateDefs();
        if (editString_) editString_(StringDoor::Button2);
    });
    auto setDefault = [this](const char* field, QSlider* slider) {
        return [this, field, slider] { WriteDefault(session_.pool.db(), field, slider->value()); };
    };
    labelDefaults_->add(ui_->BChannelLabel, setDefault("ButtonChannel", ui_->BChannelSlider));
    labelDefaults_->add(ui_->BNoteLabel, setDefault("Note", ui_->BNoteSlider));
    labelDefaults_->add(ui_->VelocityLabel, setDefault("Velocity", ui_->VelocitySlider));
    labelDefaults_->add(ui_->BProgChangeLabel, setDefault("ProgChange", ui_->BProgChangeSlider));
}

void PC1600XForm::connectSetupFrame() {
    pairs_["SChannel"] = new SliderTextPair(
        ui_->SChannelSlider, ui_->SChannelText,
        [](int v) {
            char text[16];
            std::snprintf(text, sizeof text, "%02d", v + 1);
            return std::string(text);
        },
        [](const std::string& t) { return ParameterText::ParseSetupChannelText(t); },
        [this](int v) { ShowSetupChannel(editor_, v); }, &refreshing_);
    const std::pair<const char*, SetupField> setupPairs[] = {
        {"SBank", SetupField::Bank}, {"SProgChange", SetupField::ProgChange}, {"SVolume", SetupField::Volume}};
    for (const auto& [name, field] : setupPairs) {
        const SetupField which = field;
        pairs_[name] = new SliderTextPair(
            child<QSlider>(this, QString(name) + "Slider"), child<QLineEdit>(this, QString(name) + "Text"),
            ParameterText::SetupValueText, [](const std::string& t) { return ParameterText::ParseSetupValueText(t); },
            [this, which](int v) { SetSetupField(editor_, which, v); }, &refreshing_);
    }
    connect(ui_->MSBCheck, &QCheckBox::clicked, this, [this](bool on) { SetBankIsMSB(editor_, on); });
    connect(ui_->MakeSameButton, &QPushButton::clicked, this, [this] {
        UpdateDefs();
        MakeSetupChannelsSame(session_);
    });
    connect(ui_->SAllOffButton, &QPushButton::clicked, this, [this] { SetupChannelsAllOff(session_); });
    connect(ui_->SelectPresetSceneCombo, &QComboBox::activated, this,
            [this](int line) { ChooseSetupScene(editor_, line); });
    connect(ui_->SOtherSceneButton, &QPushButton::clicked, this, [this] { otherScene(false); });
    connect(ui_->SStringButton, &QPushButton::clicked, this, [this] {
        UpdateDefs();
        if (editString_) editString_(StringDoor::Setup);
    });
    labelDefaults_->add(ui_->SetupChannelMapLabel, [this] {
        UpdateDefs();
        WriteSetupChannelDefaults(session_.pool.db(), editor_.preset);
    });
    labelDefaults_->add(ui_->SStringLabel, [this] { WriteSetupStringDefault(session_.pool.db(), editor_.preset); });
}

void PC1600XForm::UpdateDefs() {
    // The order in which pending text edits reach the preset.
    emit ui_->NameText->editingFinished();
    for (const char* pair : {"Channel", "MaxVal", "MinVal"}) pairs_[pair]->commitText();
    emit ui_->ValueText->editingFinished();
    emit ui_->BNameText->editingFinished();
    for (const char* pair : {"BChannel", "BNote", "Velocity", "BProgChange", "SBank", "SChannel", "SVolume",
                             "SProgChange"})
        pairs_[pair]->commitText();
    emit ui_->PresetNameText->editingFinished();
}

void PC1600XForm::refresh() {
    if (refreshing_) return;
    refreshing_ = true;
    const WorkingPreset& p = editor_.preset;
    if (!editor_.Caption.empty()) setWindowTitle(toQt(editor_.Caption));
    // A flow of core (the pool's Edit button) asks for the window.
    if (editor_.Visible && !frame()->isVisible()) {
        frame()->show();
        if (frame() != this) frame()->raise();
    }
    if (editor_.FocusPresetNameText) {
        editor_.FocusPresetNameText = false;
        ui_->PresetNameText->setFocus();
    }
    if (!ui_->PresetNameText->hasFocus() || !ui_->PresetNameText->isModified())
        ui_->PresetNameText->setText(toQt(p.Name));
    if (!ui_->PresetNotesText->hasFocus() && fromQt(ui_->PresetNotesText->toPlainText()) != p.Notes)
        ui_->PresetNotesText->setPlainText(toQt(p.Notes));
    ui_->DataWheelCombo->setCurrentIndex(p.DataWheelLink);

    for (int i = 0; i < 18; ++i) {
        const FaderDef& fader = p.Faders[i];
        const ValueRange range = PCSliderRange(fader);
        sliders_[i]->setRange(range.low, range.high);
        sliders_[i]->setPageStep(std::max(1, (range.high - range.low) / 10));
        sliders_[i]->setValue(PCSliderPosition(fader));
        sliders_[i]->setStyleSheet(editor_.BorderedSlider == i ? "QSlider { border: 2px solid #000080; }" : "");
        showPanelCaption(faderLabels_[i], editor_.FaderLabel[i], QApplication::font(faderLabels_[i]).pointSizeF(), 2);
        faderLabels_[i]->setToolTip(toQt(editor_.FaderLabel[i]));
    }
    for (int i = 0; i < 16; ++i) {
        buttons_[i]->setStyleSheet(editor_.HighlightedButton == i ? "QPushButton { background: #FFFFFF; }"
                                                                  : "QPushButton { background: #E0E0E0; }");
        showPanelCaption(buttons_[i], editor_.PCButton[i], 8, 6);
        buttons_[i]->setToolTip(toQt(editor_.PCButton[i]));
    }
    ShowLines(ui_->SelectSceneCombo, editor_.SelectSceneCombo);
    ui_->PasteButton->setVisible(editor_.PasteButtonVisible);
    ui_->PasteButton->setText(toQt(MSBModule::DoubleAmpersands(editor_.PasteButtonCaption)));
    const bool sceneSelected = editor_.SelectSceneCombo.listIndex() >= 0;
    ui_->RenameSceneButton->setEnabled(sceneSelected);
    ui_->DeleteSceneButton->setEnabled(sceneSelected);
    ui_->CopySceneButton->setEnabled(sceneSelected);

    ui_->FaderFrame->setVisible(editor_.ShownFrame == EditorFrame::Fader);
    ui_->ButtonFrame->setVisible(editor_.ShownFrame == EditorFrame::Button);
    ui_->SetupFrame->setVisible(editor_.ShownFrame == EditorFrame::Setup);
    ui_->AssociateFrame->setVisible(editor_.ShownFrame == EditorFrame::Associate);
    refreshFaderFrame();
    refreshButtonFrame();
    refreshSetupFrame();
    ui_->AssociatedList->clear();
    for (const auto& line : editor_.AssociatedList.lines()) ui_->AssociatedList->addItem(toQt(line.text));
    refreshing_ = false;
}

void PC1600XForm::refreshFaderFrame() {
    const int index = editor_.CurrentFader;
    const FaderDef& f = editor_.preset.Faders.at(index);
    ui_->FaderFrame->setTitle(toQt(FaderFrameCaptionFor(index)));
    ui_->FunctionCombo->setCurrentIndex(editor_.FunctionComboIndex);
    const FaderControls show = FaderControlsFor(editor_.FunctionComboIndex);
    ui_->InitFaderButton->setVisible(show.InitFaderButton);
    for (QWidget* w : {static_cast<QWidget*>(ui_->NameText), static_cast<QWidget*>(ui_->NameLabel),
                       static_cast<QWidget*>(ui_->ValueText), static_cast<QWidget*>(ui_->ValueLabel)})
        w->setVisible(show.NameAndValue);
    for (QWidget* w : {static_cast<QWidget*>(ui_->MinValSlider), static_cast<QWidget*>(ui_->MinValText),
                       static_cast<QWidget*>(ui_->MinValLabel), static_cast<QWidget*>(ui_->MaxValSlider),
                       static_cast<QWidget*>(ui_->MaxValText), static_cast<QWidget*>(ui_->MaxValLabel),
                       static_cast<QWidget*>(ui_->SwapMinMaxButton)})
        w->setVisible(show.MinMax);
    for (QWidget* w : {static_cast<QWidget*>(ui_->ChannelSlider), static_cast<QWidget*>(ui_->ChannelText),
                       static_cast<QWidget*>(ui_->ChannelLabel)})
        w->setVisible(show.Channel);
    for (QWidget* w : {static_cast<QWidget*>(ui_->CCNumSlider), static_cast<QWidget*>(ui_->CCNameListCombo),
                       static_cast<QWidget*>(ui_->CCNumLabel)})
        w->setVisible(show.CCNum);
    ui_->ModeCombo->setVisible(show.Mode);
    ui_->ModeLabel->setVisible(show.Mode);
    ui_->ParamFormatCombo->setVisible(show.ParamFormat);
    ui_->ParamFormatLabel->setVisible(show.ParamFormat);
    for (QWidget* w : {static_cast<QWidget*>(ui_->EditStringText), static_cast<QWidget*>(ui_->EditStringButton),
                       static_cast<QWidget*>(ui_->EditStringLabel)})
        w->setVisible(show.EditString);
    ui_->MasterFaderLabel->setVisible(show.MasterFader);
    for (int k = 0; k < 18; ++k) {
        auto* box = child<QCheckBox>(this, QString("Check1_%1").arg(k));
        box->setVisible(show.MasterFader);
        box->setChecked(editor_.Check1[k]);
        box->setEnabled(k != index);
    }
    ui_->MapFaderButton->setVisible(show.MapFaderButton);
    for (QWidget* w :
         {static_cast<QWidget*>(ui_->MakeCombo), static_cast<QWidget*>(ui_->ModelCombo),
          static_cast<QWidget*>(ui_->ShowOwnOnlyCheck), static_cast<QWidget*>(ui_->DeviceFunctionCombo),
          static_cast<QWidget*>(ui_->GetFunctionButton), static_cast<QWidget*>(ui_->DevMakeLabel),
          static_cast<QWidget*>(ui_->ModelLabel), static_cast<QWidget*>(ui_->FunctionLabel)})
        w->setVisible(show.DeviceGroup);
    ui_->SpreadButton->setVisible(f.Function != 2);

    if (!ui_->NameText->hasFocus() || !ui_->NameText->isModified()) ui_->NameText->setText(toQt(f.Name));
    if (!ui_->ValueText->hasFocus() || !ui_->ValueText->isModified()) ui_->ValueText->setText(QString::number(f.Value));
    pairs_["Channel"]->show(f.Channel, kChannelRange.low, kChannelRange.high);
    pairs_["MinVal"]->show(f.Min, editor_.MinMaxSliderMin, editor_.MinMaxSliderMax);
    pairs_["MaxVal"]->show(f.Max, editor_.MinMaxSliderMin, editor_.MinMaxSliderMax);
    ui_->CCNumSlider->setValue(f.CCNum);
    ShowCCNumber(ui_->CCNameListCombo, f.CCNum);
    ui_->ModeCombo->setCurrentIndex(f.ReplaceMode);
    ui_->ParamFormatCombo->setCurrentIndex(f.ParamFormat);
    ui_->EditStringText->setText(toQt(f.MIDIString));
    ui_->DeviceMapLabel->setText(toQt(f.DeviceMapString));
}

void PC1600XForm::refreshButtonFrame() {
    const int index = editor_.CurrentButton;
    const ButtonDef& b = editor_.preset.Buttons.at(index);
    ui_->ButtonFrame->setTitle(toQt(editor_.ButtonFrameCaption.empty() ? "Settings for Button #" + number(index + 1)
                                                                       : editor_.ButtonFrameCaption));
    ui_->BFunctionCombo->setCurrentIndex(editor_.BFunctionComboIndex);
    const ButtonControls show = ButtonControlsFor(editor_.BFunctionComboIndex);
    ui_->InitButtonButton->setVisible(show.InitButtonButton);
    ui_->BNameText->setVisible(show.Name);
    ui_->BNameLabel->setVisible(show.Name);
    for (const char* name : {"BChannel"}) {
        pairs_[name]->slider()->setVisible(show.Channel);
        pairs_[name]->text()->setVisible(show.Channel);
    }
    ui_->BChannelLabel->setVisible(show.Channel);
    ui_->BProgChangeSlider->setVisible(show.ProgChange);
    ui_->BProgChangeText->setVisible(show.ProgChange);
    ui_->BProgChangeLabel->setVisible(show.ProgChange);
    ui_->BNoteSlider->setVisible(show.Note);
    ui_->BNoteText->setVisible(show.Note);
    ui_->BNoteLabel->setVisible(show.Note);
    ui_->VelocitySlider->setVisible(show.Velocity);
    ui_->VelocityText->setVisible(show.Velocity);
    ui_->VelocityLabel->setVisible(show.Velocity);
    ui_->String1Text->setVisible(show.String1);
    ui_->String1Button->setVisible(show.String1);
    ui_->String1Label->setVisible(show.String1);
    ui_->String2Text->setVisible(show.String2);
    ui_->String2Button->setVisible(show.String2);
    ui_->String2Label->setVisible(show.String2);
    ui_->SwapStringsButton->setVisible(show.String2);
    ui_->BSceneCombo->setVisible(show.Scene);
    ui_->BSceneLabel->setVisible(show.Scene);
    ui_->BOtherSceneButton->setVisible(show.Scene);
    ui_->MapButtonButton->setVisible(show.MapButtonButton);
    for (QWidget* w :
         {static_cast<QWidget*>(ui_->BMakeCombo), static_cast<QWidget*>(ui_->BModelCombo),
          static_cast<QWidget*>(ui_->BShowOwnOnlyCheck), static_cast<QWidget*>(ui_->BDeviceFunctionCombo),
          static_cast<QWidget*>(ui_->BGetFunctionButton), static_cast<QWidget*>(ui_->BMakeLabel),
          static_cast<QWidget*>(ui_->BModelLabel), static_cast<QWidget*>(ui_->BFunctionLabel)})
        w->setVisible(show.DeviceGroup);

    if (!ui_->BNameText->hasFocus() || !ui_->BNameText->isModified()) ui_->BNameText->setText(toQt(b.Name));
    pairs_["BChannel"]->show(b.Channel, kChannelRange.low, kChannelRange.high);
    pairs_["BProgChange"]->show(b.ProgChange, kProgChangeRange.low, kProgChangeRange.high);
    pairs_["BNote"]->show(b.Note, kNoteRange.low, kNoteRange.high);
    pairs_["Velocity"]->show(b.Velocity, kVelocityRange.low, kVelocityRange.high);
    ui_->String1Text->setText(toQt(b.String1));
    ui_->String2Text->setText(toQt(b.String2));
    ShowLines(ui_->BSceneCombo, editor_.BSceneCombo);
    ui_->BDeviceMapLabel->setText(toQt(b.DeviceMapString));
}

void PC1600XForm::refreshSetupFrame() {
    const SetupChannelDef& c = editor_.preset.SetupChannels.at(editor_.SChannel);
    pairs_["SChannel"]->show(editor_.SChannel, 0, 15);
    pairs_["SBank"]->show(c.Bank, 0, 128);
    pairs_["SProgChange"]->show(c.ProgChange, 0, 128);
    pairs_["SVolume"]->show(c.Volume, 0, 128);
    ui_->MSBCheck->setChecked(c.BankIsMSB != 0);
    ui_->SStringText->setText(toQt(editor_.preset.SetupString));
    ShowLines(ui_->SelectPresetSceneCombo, editor_.SelectPresetSceneCombo);
    const bool pc1600 = session_.midi.PC1600Model;
    // The original PC1600 has no setup scene and no Bank MSB.
    for (QWidget* w : {static_cast<QWidget*>(ui_->SelectPresetSceneCombo), static_cast<QWidget*>(ui_->SOtherSceneButton),
                       static_cast<QWidget*>(ui_->SSceneLabel)})
        w->setVisible(!pc1600);
    ui_->MSBCheck->setEnabled(!pc1600);
}

void PC1600XForm::spread(bool button) {
    UpdateDefs();
    SpreadSelectedControl(session_, button);
}

void PC1600XForm::otherScene(bool forButton) { PickOtherScene(session_, forButton); }

void PC1600XForm::dragTimerFired() {
    DragTimer->stop();
    const std::string kind = session_.editor.DragType;
    const int source = session_.editor.DragSource;
    if (kind == "FADER" && !sliderMovedSincePress_) {
        UpdateDefs();
        ClickFader(editor_, source);
        CopyControl(editor_);
        beginDrag();
    } else if (kind == "BUTTON") {
        UpdateDefs();
        ClickButton(editor_, source);
        CopyControl(editor_);
        beginDrag();
    }
}

void PC1600XForm::beginDrag() {
    // Without a pointer (offscreen) there is no drag to run; the copy and
    // the drag kind are all that a drop needs.
    if (QGuiApplication::platformName() == "offscreen") return;
    auto* drag = new QDrag(this);
    auto* mime = new QMimeData;
    mime->setData(kDragMime, QByteArray::fromStdString(session_.editor.DragType));
    drag->setMimeData(mime);
    drag->exec(Qt::CopyAction);
}

void PC1600XForm::dropOn(bool button, int index, const QMimeData* mime) {
    // Only Tavlo's own drags carry a control; anything dropped from another
    // program is refused by kind and never pastes what was copied before.
    if (mime && mime->hasFormat(kDragMime)) session_.editor.DragType = mime->data(kDragMime).toStdString();
    else session_.editor.DragType = "TEXT";
    if (button) DropOnButton(session_, index);
    else DropOnFader(session_, index);
}

bool PC1600XForm::acceptDrop(QEvent* event, bool button, int index) {
    if (event->type() == QEvent::DragEnter) {
        static_cast<QDragEnterEvent*>(event)->acceptProposedAction();
        return true;
    }
    if (event->type() != QEvent::Drop) return false;
    auto* drop = static_cast<QDropEvent*>(event);
    dropOn(button, index, drop->mimeData());
    drop->acceptProposedAction();
    return true;
}

bool PC1600XForm::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (watched == ui_->CCNumSlider && type == QEvent::KeyPress) {
        if (SliderTextPair::StepByKey(ui_->CCNumSlider, static_cast<QKeyEvent*>(event))) return true;
        return QWidget::eventFilter(watched, event);
    }
    for (int i = 0; i < 18; ++i) {
        if (watched != sliders_[i] && watched != faderLabels_[i]) continue;
        const bool isSlider = watched == sliders_[i];
        if (acceptDrop(event, false, i)) return true;
        switch (type) {
            case QEvent::FocusIn: ClickFader(editor_, i); break;
            case QEvent::MouseButtonPress:
                UpdateDefs();
                ClickFader(editor_, i);
                session_.editor.DragType = "FADER";
                session_.editor.DragSource = i;
                sliderMovedSincePress_ = false;
                DragTimer->start();
                break;
            case QEvent::MouseButtonRelease: DragTimer->stop(); break;
            case QEvent::KeyPress:
                if (isSlider) {
                    auto* key = static_cast<QKeyEvent*>(event);
                    if (key->key() == Qt::Key_Space) {
                        ui_->FunctionCombo->setFocus();
                        return true;
                    }
                    if (SliderTextPair::StepByKey(sliders_[i], key)) return true;
                }
                break;
            default: break;
        }
        return QWidget::eventFilter(watched, event);
    }
    for (int i = 0; i < 16; ++i) {
        if (watched != buttons_[i]) continue;
        if (acceptDrop(event, true, i)) return true;
        switch (type) {
            case QEvent::FocusIn: ClickButton(editor_, i); break;
            case QEvent::MouseButtonPress:
                UpdateDefs();
                session_.editor.DragType = "BUTTON";
                session_.editor.DragSource = i;
                DragTimer->start();
                break;
            case QEvent::MouseButtonRelease: DragTimer->stop(); break;
            case QEvent::KeyPress:
                if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space) {
                    ui_->BFunctionCombo->setFocus();
                    return true;
                }
                break;
            default: break;
        }
        return QWidget::eventFilter(watched, event);
    }
    return QWidget::eventFilter(watched, event);
}

QWidget* PC1600XForm::frame() {
    QWidget* parent = parentWidget();
    return parent && parent->inherits("QMdiSubWindow") ? parent : this;
}

void PC1600XForm::showWindow() {
    editor_.Visible = true;
    frame()->show();
    if (frame() != this) frame()->raise();
    refresh();
}

void PC1600XForm::showEvent(QShowEvent* event) {
    editor_.Visible = true;
    QWidget::showEvent(event);
}

void PC1600XForm::closeEvent(QCloseEvent* event) {
    UpdateDefs();
    // The window is only ever hidden: it lives for the whole run.
    event->ignore();
    if (!EditorQueryClose(session_)) return;
    frame()->hide();
}

}  // namespace tavlo

#include "shell/TavloController.h"

#include <QCloseEvent>
#include <QMdiArea>
#include <QTimer>
#include <QMdiSubWindow>
#include <QPrinterInfo>

#include "pool/EditorStoreQuestions.h"
#include "editor/EditorDefaults.h"
#include "editor/PC1600XForm.h"
#include "globals/GlobalForm.h"
#include "globals/GlobalPool.h"
#include "globals/GlobalPoolForm.h"
#include "globals/GlobalsFlows.h"
#include "globals/GlobalsState.h"

#include "midilink/ExchangeDump.h"
#include "midilink/MIDIForm.h"
#include "midilink/MIDIFormOperations.h"
#include "midilink/PeekForm.h"
#include "midilink/RtMidiBackend.h"
#include "db/Database.h"
#include "pool/PoolForm.h"
#include "shell/QuitMenu.h"
#include "shell/Program.h"
#include "ui/Prompter.h"
#include "db/PoolDatabase.h"
#include "editor/EditorState.h"
#include "midilink/MidiLink.h"
#include "pool/PoolFlags.h"
#include "sysex/SysexFileContents.h"
#include "shell/WindowStates.h"
#include "ui/QtText.h"
#include "ui_TavloController.h"

namespace tavlo {

TavloController::TavloController(Program& session, QWidget* parent)
    : QMainWindow(parent), session_(session), ui_(std::make_unique<Ui::TavloController>()) {
    ui_->setupUi(this);
    setCentralWidget(ui_->MDIArea);

    connect(ui_->QuitMenu, &QAction::triggered, this, &QWidget::close);
    connect(ui_->TileWindowMenu, &QAction::triggered, ui_->MDIArea, &QMdiArea::tileSubWindows);
    connect(ui_->ArrangeIconsMenu, &QAction::triggered, ui_->MDIArea, &QMdiArea::cascadeSubWindows);
    connect(ui_->ClearDefaultsMenu, &QAction::triggered, this, &TavloController::clearDefaults);
    connect(ui_->SysexFileMenu, &QAction::triggered, this, [this] { SysexFileMenu(session_.prompter); });

    // Entries whose windows are not part of this build yet stay disabled.
    for (QAction* action : {ui_->MidiDevManageMenu, ui_->CleanMenu, ui_->ViewGlobalMenu, ui_->NewMemImageMenu,
                            ui_->HelpHelpMenu})
        action->setEnabled(false);

    // The pool window lives for the whole run; closing it only hides it.
    poolForm_ = new PoolForm(session_);
    poolWindow_ = ui_->MDIArea->addSubWindow(poolForm_);
    poolWindow_->setAttribute(Qt::WA_DeleteOnClose, false);
    poolWindow_->hide();
    poolForm_->reload();
    connect(ui_->EditPresetMenu, &QAction::triggered, this, &TavloController::showPresetPool);

    // A load that found its preset row gone ends the program, through the
    // ordinary close so that the questions about unsaved work still come.
    fatalToken_ = session_.editor.subscribe([this] {
        if (!session_.poolFlags.FatalDatabaseError) return;
        session_.poolFlags.FatalDatabaseError = false;
        QTimer::singleShot(0, this, [this] { close(); });
    });

    startMidi();
    connect(ui_->MIDIMenu, &QAction::triggered, midiForm_, &MIDIForm::showConfiguration);
    connect(ui_->PeekMenu, &QAction::triggered, peekForm_, &PeekForm::peek);

    // The preset editor lives for the whole run; closing it only hides it.
    editorForm_ = new PC1600XForm(session_);
    QMdiSubWindow* editorFrame = ui_->MDIArea->addSubWindow(editorForm_);
    editorFrame->setAttribute(Qt::WA_DeleteOnClose, false);
    editorFrame->resize(editorFrame->sizeHint());
    editorFrame->hide();
    connect(ui_->NewPresetMenu, &QAction::triggered, this, &TavloController::newPreset);
    startGlobals();
}

QMdiSubWindow* TavloController::addLastingWindow(QWidget* form) {
    // Such a window lives for the whole run; closing it only hides it.
    QMdiSubWindow* frame = ui_->MDIArea->addSubWindow(form);
    frame->setAttribute(Qt::WA_DeleteOnClose, false);
    frame->resize(frame->sizeHint());
    frame->hide();
    return frame;
}

void TavloController::startGlobals() {
    globalForm_ = new GlobalForm(session_);
    addLastingWindow(globalForm_);
    globalPoolForm_ = new GlobalPoolForm(session_);
    addLastingWindow(globalPoolForm_);
    connect(globalPoolForm_, &GlobalPoolForm::editing, globalForm_, &GlobalForm::showWindow);
    connect(ui_->GlobalMenu, &QAction::triggered, this, &TavloController::showGlobalsPool);
    connect(ui_->NewGlobalMenu, &QAction::triggered, globalForm_, &GlobalForm::newSettings);
}

void TavloController::showGlobalsPool() {
    globalPoolForm_->reload();
    QWidget* frame = globalPoolForm_->parentWidget();
    frame->show();
    frame->raise();
}

void TavloController::firstRunGlobals() {
    if (session_.pool.db().queryInt("SELECT COUNT(*) FROM GlobalRec") > 0) return;
    // The settings got (or the new ones stored when the device didn't
    // answer) are shown, so the user sees what the run starts with.
    FirstRunGlobals(session_);
    globalForm_->showWindow();
}

PC1600XForm* TavloController::editorForm() const { return editorForm_; }

void TavloController::newPreset() {
    // Edits in the editor are offered for storing first; Cancel keeps them.
    if (!InitPresetButton(session_)) return;
    session_.editor.Caption = "Editing Preset from Pool - No Memory Image";
    editorForm_->showWindow();
    editorForm_->setFocus();
}

void TavloController::showPresetPool() {
    poolWindow_->show();
    poolForm_->show();
    poolWindow_->raise();
}

void TavloController::startMidi() {
    // The system's MIDI beside the virtual PC1600; a long dump's pacing
    // waits through the pump, so the windows stay alive.
    RtMidiOptions options;
    options.api = DefaultMidiApi();
    options.clientName = "Tavlo";
    options.wait = [this](std::int64_t ms) { Pause(session_, ms); };
    session_.midiLink.setSystemBackend(std::make_shared<RtMidiBackend>(options));
    midiForm_ = new MIDIForm(session_, this);
    peekForm_ = new PeekForm(session_, this);
    ListState& printers = session_.midiLink.form.PrinterCombo;
    printers.clear();
    for (const QString& name : QPrinterInfo::availablePrinterNames()) printers.addItem(fromQt(name));
    // With no configuration yet this shows MIDIForm, modal, before anything else.
    LoadMidiConfiguration(session_);
}

TavloController::~TavloController() { session_.editor.unsubscribe(fatalToken_); }

QMdiArea* TavloController::mdiArea() const { return ui_->MDIArea; }

void TavloController::clearDefaults() { ClearDefaultsMenu(session_.pool.db(), session_.prompter); }

namespace {

int WindowStateOf(const QWidget* window) { return window->isMaximized() ? 2 : window->isMinimized() ? 1 : 0; }

// A window's row: where its frame stands and whether it is shown.
WindowStateRow RowOf(const std::string& name, const QWidget* frame, bool visible) {
    WindowStateRow row;
    row.Window = name;
    row.Left = frame->x();
    row.Top = frame->y();
    row.WindowState = WindowStateOf(frame);
    row.Visible = visible;
    return row;
}

void PlaceFrame(QWidget* frame, const WindowStateRow& row) {
    frame->move(row.Left, row.Top);
    if (row.WindowState == 2) frame->setWindowState(Qt::WindowMaximized);
    else if (row.WindowState == 1) frame->setWindowState(Qt::WindowMinimized);
}

}  // namespace

void TavloController::restoreGeometryFromPool() {
    const auto rows = ReadWindowStates(session_.pool.db());
    if (const auto place = RestoredMainWindow(rows)) {
        if (place->width > 0) resize(place->width, place->height);
        move(place->left, place->top);
        if (place->state == 2) setWindowState(Qt::WindowMaximized);
        else if (place->state == 1) setWindowState(Qt::WindowMinimized);
    }
    // The settings window shows again the set it showed, if the pool still has it.
    if (const WindowStateRow* row = FindWindowState(rows, "GlobalForm")) {
        PlaceFrame(globalForm_->parentWidget(), *row);
        if (row->Visible && LoadGlobalsNamed(session_, row->LoadedName)) globalForm_->showWindow();
    }
    if (const WindowStateRow* row = FindWindowState(rows, "GlobalPoolForm")) {
        PlaceFrame(globalPoolForm_->parentWidget(), *row);
        if (row->Visible) {
            showGlobalsPool();
            SelectGlobalsLine(session_, row->LoadedID);
        }
    }
}

std::vector<WindowStateRow> TavloController::windowRows() const {
    const GlobalsState& globals = session_.globals;
    WindowStateRow settings = RowOf("GlobalForm", globalForm_->parentWidget(), globals.Visible);
    settings.LoadedName = globals.settings.Name;
    QWidget* poolFrame = globalPoolForm_->parentWidget();
    WindowStateRow pool = RowOf("GlobalPoolForm", poolFrame, poolFrame->isVisible());
    const ListState& lines = globals.GlobalPoolList;
    if (lines.listIndex() >= 0) pool.LoadedID = static_cast<long>(lines.itemData(lines.listIndex()));
    return {settings, pool};
}

void TavloController::closeEvent(QCloseEvent* event) {
    session_.editor.Quitting = true;
    const int state = WindowStateOf(this);
    if (!QuitMenu(session_, ExitWindowStates({x(), y(), width(), height(), state}, windowRows()))) {
        session_.editor.Quitting = false;
        event->ignore();
        return;
    }
    event->accept();
}

}  // namespace tavlo

#pragma once
#include <QMainWindow>
#include <memory>
#include <vector>

#include "shell/WindowStates.h"

namespace Ui {
class TavloController;
}
class QMdiArea;
class QMdiSubWindow;

namespace tavlo {

class GlobalForm;
class GlobalPoolForm;
class MIDIForm;
class PC1600XForm;
class PeekForm;
class PoolForm;
class Program;

// The main window: an MDI frame with the menu bar in which every other
// window lives.
class TavloController : public QMainWindow {
    Q_OBJECT
public:
    explicit TavloController(Program& session, QWidget* parent = nullptr);
    ~TavloController() override;

    QMdiArea* mdiArea() const;
    PoolForm* poolForm() const { return poolForm_; }
    // EditPresetMenu: shows the preset pool.
    void showPresetPool();
    // Puts the main window where the last run left it.
    void restoreGeometryFromPool();
    // The preset editor window.
    PC1600XForm* editorForm() const;
    GlobalForm* globalForm() const { return globalForm_; }
    GlobalPoolForm* globalPoolForm() const { return globalPoolForm_; }
    // GlobalMenu: shows the pool of global settings.
    void showGlobalsPool();
    // The first run's global settings, once the windows stand.
    void firstRunGlobals();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    int fatalToken_ = 0;
    void clearDefaults();
    void newPreset();
    void startMidi();

    Program& session_;
    std::unique_ptr<Ui::TavloController> ui_;
    MIDIForm* midiForm_ = nullptr;  // owned as a child window
    PeekForm* peekForm_ = nullptr;
    PoolForm* poolForm_ = nullptr;
    QMdiSubWindow* poolWindow_ = nullptr;
    PC1600XForm* editorForm_ = nullptr;
    GlobalForm* globalForm_ = nullptr;
    GlobalPoolForm* globalPoolForm_ = nullptr;
    QMdiSubWindow* addLastingWindow(QWidget* form);
    // The rows of WindowStates of the windows that have one of their own.
    std::vector<WindowStateRow> windowRows() const;
    void startGlobals();
};

}  // namespace tavlo

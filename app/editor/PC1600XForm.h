#pragma once
#include <QWidget>
#include <array>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "midistrings/StringEditState.h"
#include "ui/Observable.h"

namespace Ui {
class PC1600XForm;
}
class QComboBox;
class QMimeData;
class QLabel;
class QLineEdit;
class QPushButton;
class QSlider;
class QTimer;

namespace tavlo {

class LabelDefaults;
class Program;
class SliderTextPair;
class StringEditForm;
class LearnMessages;
struct EditorState;
class ListState;

// The preset editor: a picture of the device (18 sliders with their labels,
// 16 buttons) and the frame of what is selected. It renders the editor state
// of the session and hands every action to the core operations.
class PC1600XForm : public QWidget {
    Q_OBJECT
public:
    explicit PC1600XForm(Program& session, QWidget* parent = nullptr);
    ~PC1600XForm() override;

    // Commits what is still being typed in a text field; run before the
    // preset is read as a whole.
    void UpdateDefs();
    // The pool's store and initialisation, and the string editor: the
    // buttons that need them stay disabled until they are given.
    void setStoreAction(std::function<void()> store);
    void setInitAction(std::function<void()> init);
    void setStringEditor(std::function<void(StringDoor)> edit);
    StringEditForm* stringEditForm() const { return stringEditForm_; }
    QSize sizeHint() const override;
    // Shows the window (inside its MDI frame, when it has one).
    void showWindow();
    // Redraws everything from the editor state.
    void refresh();
    // What a drop on a button or on a fader (or its label) does.
    void dropOn(bool button, int index, const QMimeData* mime);

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* frame();
    void connectPanel();
    void connectFaderFrame();
    void connectButtonFrame();
    void connectSetupFrame();
    void connectTopBar();
    void fillFixedLists();
    void reloadCCNameList();
    // Drags onto a fader or button: accepted on entry, dropped on release.
    bool acceptDrop(QEvent* event, bool button, int index);
    void refreshFaderFrame();
    void refreshButtonFrame();
    void refreshSetupFrame();
    void dragTimerFired();
    void beginDrag();
    void spread(bool button);
    void otherScene(bool forButton);
    void commitName(QLineEdit* text, const std::function<void(const std::string&)>& store);

    Program& session_;
    EditorState& editor_;
    std::unique_ptr<Ui::PC1600XForm> ui_;
    std::array<QSlider*, 18> sliders_{};
    std::array<QLabel*, 18> faderLabels_{};
    std::array<QPushButton*, 16> buttons_{};
    std::map<std::string, SliderTextPair*> pairs_;
    LabelDefaults* labelDefaults_ = nullptr;
    StringEditForm* stringEditForm_ = nullptr;
    std::unique_ptr<LearnMessages> learnPort_;
    QTimer* DragTimer = nullptr;
    QSize designSize_;
    bool refreshing_ = false;
    bool sliderMovedSincePress_ = false;
    std::function<void()> store_;
    std::function<void()> init_;
    std::function<void(StringDoor)> editString_;
    Observable::Token token_ = 0;
    Observable::Token midiToken_ = 0;
};

}  // namespace tavlo

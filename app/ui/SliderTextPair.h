#pragma once
#include <QObject>
#include <functional>
#include <string>

#include "editor/ParameterText.h"

class QKeyEvent;
class QLineEdit;
class QSlider;

namespace tavlo {

// A slider and its text box that behave alike everywhere: the slider writes
// the text by its text rule and stores the value; the text, when it loses
// the focus, is read by its parse rule and moves the slider. Keys on the
// slider: End, Home, arrows, Page keys by a tenth of the range, "+" and "-".
class SliderTextPair : public QObject {
    Q_OBJECT
public:
    using TextRule = std::function<std::string(int)>;
    using ParseRule = std::function<int(const std::string&)>;
    using Store = std::function<void(int)>;

    // `filling` points at the window's flag that is set while it shows
    // data: the slider then only writes its text and stores nothing.
    SliderTextPair(QSlider* slider, QLineEdit* text, TextRule textRule, ParseRule parseRule, Store store,
                   const bool* filling);

    QSlider* slider() const { return slider_; }
    QLineEdit* text() const { return text_; }
    // Shows a value (the window fills it; nothing is stored).
    void show(int value, int minimum, int maximum);
    // The text's lost-focus logic, also run to commit a pending edit.
    void commitText();

    // The keys of every slider of the program, pair or not: moves `slider`
    // by the key and returns true, or false for a key that isn't a slider's.
    // Up and Page Up move the handle up, however the slider is drawn.
    static bool StepByKey(QSlider* slider, const QKeyEvent* event);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void sliderMoved(int value);

    QSlider* slider_;
    QLineEdit* text_;
    TextRule textRule_;
    ParseRule parseRule_;
    Store store_;
    const bool* filling_;
    bool showing_ = false;
};

}  // namespace tavlo

#include "ui/SliderTextPair.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSlider>
#include <QTimer>

#include "ui/QtText.h"

namespace tavlo {

SliderTextPair::SliderTextPair(QSlider* slider, QLineEdit* text, TextRule textRule, ParseRule parseRule, Store store,
                               const bool* filling)
    : QObject(slider),
      slider_(slider),
      text_(text),
      textRule_(std::move(textRule)),
      parseRule_(std::move(parseRule)),
      store_(std::move(store)),
      filling_(filling) {
    connect(slider_, &QSlider::valueChanged, this, &SliderTextPair::sliderMoved);
    connect(text_, &QLineEdit::editingFinished, this, &SliderTextPair::commitText);
    slider_->installEventFilter(this);
    text_->installEventFilter(this);
}

void SliderTextPair::show(int value, int minimum, int maximum) {
    showing_ = true;
    slider_->setRange(minimum, maximum);
    slider_->setValue(value);
    if (!text_->hasFocus() || !text_->isModified()) text_->setText(toQt(textRule_(slider_->value())));
    showing_ = false;
}

void SliderTextPair::sliderMoved(int value) {
    if (!text_->hasFocus() || showing_) text_->setText(toQt(textRule_(value)));
    if (showing_ || (filling_ && *filling_)) return;
    store_(value);
}

void SliderTextPair::commitText() {
    if (filling_ && *filling_) return;
    if (!text_->isModified()) return;
    text_->setModified(false);
    const int value = parseRule_(fromQt(text_->text()));
    if (value == slider_->value()) {
        // The slider doesn't move, so its text rule rewrites the text here.
        text_->setText(toQt(textRule_(value)));
        store_(value);
    } else {
        slider_->setValue(value);
        text_->setText(toQt(textRule_(slider_->value())));
    }
}

namespace {

bool keyOf(const QKeyEvent* event, ParameterText::SliderKey& key) {
    using ParameterText::SliderKey;
    switch (event->key()) {
        case Qt::Key_Home: key = SliderKey::Home; return true;
        case Qt::Key_End: key = SliderKey::End; return true;
        case Qt::Key_Left: key = SliderKey::Left; return true;
        case Qt::Key_Right: key = SliderKey::Right; return true;
        case Qt::Key_Up: key = SliderKey::Up; return true;
        case Qt::Key_Down: key = SliderKey::Down; return true;
        case Qt::Key_PageUp: key = SliderKey::PageUp; return true;
        case Qt::Key_PageDown: key = SliderKey::PageDown; return true;
        case Qt::Key_Plus: key = SliderKey::Plus; return true;
        case Qt::Key_Minus: key = SliderKey::Minus; return true;
        default: return false;
    }
}

}  // namespace

bool SliderTextPair::StepByKey(QSlider* slider, const QKeyEvent* event) {
    ParameterText::SliderKey key;
    if (!keyOf(event, key)) return false;
    // A vertical slider draws its minimum at the top when its appearance is
    // inverted; on any other slider Up means a higher value.
    const bool minimumOnTop = slider->orientation() == Qt::Vertical && slider->invertedAppearance();
    slider->setValue(
        ParameterText::StepSlider(slider->value(), key, slider->minimum(), slider->maximum(), minimumOnTop));
    return true;
}

bool SliderTextPair::eventFilter(QObject* watched, QEvent* event) {
    if (watched == slider_ && event->type() == QEvent::KeyPress && StepByKey(slider_, static_cast<QKeyEvent*>(event)))
        return true;
    if (watched == text_ && event->type() == QEvent::FocusIn) {
        // Select all once the click that gave the focus has placed its caret.
        QTimer::singleShot(0, text_, [t = text_] { t->selectAll(); });
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace tavlo

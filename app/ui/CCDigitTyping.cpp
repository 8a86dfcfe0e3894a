#include "ui/CCDigitTyping.h"

#include <QComboBox>
#include <QKeyEvent>
#include <algorithm>

namespace tavlo {

CCDigitTyping::CCDigitTyping(QComboBox* combo, std::function<void(int)> pick) : QObject(combo), pick_(std::move(pick)) {
    combo->installEventFilter(this);
}

bool CCDigitTyping::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn) digits_.clear();
    if (event->type() == QEvent::KeyPress) {
        const QString text = static_cast<QKeyEvent*>(event)->text();
        if (text.size() == 1 && text[0] >= '0' && text[0] <= '9') {
            if (digits_.size() >= 3) digits_.clear();
            digits_ += static_cast<char>(text[0].toLatin1());
            pick_(std::clamp(std::stoi(digits_), 0, 120));
            return true;
        }
        digits_.clear();
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace tavlo

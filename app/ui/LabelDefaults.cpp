#include "ui/LabelDefaults.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QMouseEvent>

namespace tavlo {

LabelDefaults::LabelDefaults(QObject* parent) : QObject(parent) {
    LabelClickTimer.setParent(this);
    LabelClickTimer.setObjectName("LabelClickTimer");
    LabelClickTimer.setInterval(300);
    LabelClickTimer.setSingleShot(true);
    connect(&LabelClickTimer, &QTimer::timeout, this, &LabelDefaults::restore);
}

void LabelDefaults::add(QLabel* label, std::function<void()> setDefault) {
    actions_[label] = std::move(setDefault);
    label->installEventFilter(this);
    label->setCursor(Qt::PointingHandCursor);
}

bool LabelDefaults::eventFilter(QObject* watched, QEvent* event) {
    // Only a double click sets a default: a stray click on a label must not
    // overwrite what the user stored as defaults.
    if (event->type() == QEvent::MouseButtonDblClick) {
        auto* label = qobject_cast<QLabel*>(watched);
        const auto it = label ? actions_.find(label) : actions_.end();
        if (it != actions_.end() && label->isEnabled()) {
            if (!flashing_.count(label)) flashing_[label] = label->styleSheet();
            label->setStyleSheet(flashing_[label] + " color: #d00000;");
            label->repaint();
            it->second();
            LabelClickTimer.start();
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

void LabelDefaults::restore() {
    for (auto& [label, style] : flashing_) label->setStyleSheet(style);
    flashing_.clear();
}

}  // namespace tavlo

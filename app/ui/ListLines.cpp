#include "ui/ListLines.h"

#include <QComboBox>
#include <QListWidget>

#include "ui/ListState.h"
#include "ui/QtText.h"

namespace tavlo {
namespace {

std::vector<std::string> TextsOf(const ListState& list) {
    std::vector<std::string> texts;
    for (const auto& line : list.lines()) texts.push_back(line.text);
    return texts;
}

}  // namespace

void ShowLines(QListWidget* widget, const std::vector<std::string>& lines) {
    const int count = static_cast<int>(lines.size());
    while (widget->count() > count) delete widget->takeItem(widget->count() - 1);
    for (int i = 0; i < count; ++i) {
        const QString text = toQt(lines[static_cast<std::size_t>(i)]);
        if (i < widget->count()) {
            if (widget->item(i)->text() != text) widget->item(i)->setText(text);
        } else {
            widget->addItem(text);
        }
    }
}

void ShowLines(QListWidget* widget, const ListState& list) { ShowLines(widget, TextsOf(list)); }

void ShowLines(QComboBox* combo, const std::vector<std::string>& lines, int index) {
    const int count = static_cast<int>(lines.size());
    while (combo->count() > count) combo->removeItem(combo->count() - 1);
    for (int i = 0; i < count; ++i) {
        const QString text = toQt(lines[static_cast<std::size_t>(i)]);
        if (i < combo->count()) {
            if (combo->itemText(i) != text) combo->setItemText(i, text);
        } else {
            combo->addItem(text);
        }
    }
    combo->setCurrentIndex(index);
}

void ShowLines(QComboBox* combo, const ListState& list) { ShowLines(combo, TextsOf(list), list.listIndex()); }

}  // namespace tavlo

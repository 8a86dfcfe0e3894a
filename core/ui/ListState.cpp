#include "ui/ListState.h"

#include <stdexcept>

namespace tavlo {

void ListState::setListIndex(int index) {
    if (index < -1 || index >= listCount()) throw std::out_of_range("list index out of range");
    listIndex_ = index;
}

void ListState::clear() {
    lines_.clear();
    listIndex_ = -1;
}

void ListState::addItem(std::string text, std::int64_t itemData) {
    lines_.push_back({std::move(text), itemData, false});
}

void ListState::insertItem(int index, std::string text, std::int64_t itemData) {
    if (index < 0 || index > listCount()) throw std::out_of_range("list insert out of range");
    lines_.insert(lines_.begin() + index, {std::move(text), itemData, false});
    if (listIndex_ >= index) ++listIndex_;
}

void ListState::removeItem(int index) {
    if (index < 0 || index >= listCount()) throw std::out_of_range("list remove out of range");
    lines_.erase(lines_.begin() + index);
    if (listIndex_ == index) listIndex_ = -1;
    else if (listIndex_ > index) --listIndex_;
}

void ListState::setLine(int index, std::string text, std::int64_t itemData) {
    auto& line = lines_.at(index);
    line.text = std::move(text);
    line.itemData = itemData;
}

std::string ListState::text() const {
    return listIndex_ >= 0 ? lines_[listIndex_].text : std::string();
}

int ListState::findText(const std::string& text) const {
    for (int i = 0; i < listCount(); ++i)
        if (lines_[i].text == text) return i;
    return -1;
}

int ListState::findItemData(std::int64_t data) const {
    for (int i = 0; i < listCount(); ++i)
        if (lines_[i].itemData == data) return i;
    return -1;
}

std::vector<int> ListState::selectedIndexes() const {
    std::vector<int> out;
    for (int i = 0; i < listCount(); ++i)
        if (lines_[i].selected) out.push_back(i);
    return out;
}

}  // namespace tavlo

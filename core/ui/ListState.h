#pragma once
#include <cstdint>
#include <string>
#include <vector>

namespace tavlo {

// The state of a list box or combo box: its lines, the data attached to each
// line, the current line (ListIndex, -1 for none) and, for lists that allow
// it, which lines are selected. Core rules read and write lists through this
// one type; a window only renders it.
class ListState {
public:
    struct Line {
        std::string text;
        std::int64_t itemData = 0;
        bool selected = false;
    };

    int listCount() const { return static_cast<int>(lines_.size()); }
    int listIndex() const { return listIndex_; }
    void setListIndex(int index);

    void clear();
    void addItem(std::string text, std::int64_t itemData = 0);
    void insertItem(int index, std::string text, std::int64_t itemData = 0);
    void removeItem(int index);
    void setLine(int index, std::string text, std::int64_t itemData);

    const std::string& list(int index) const { return lines_.at(index).text; }
    std::int64_t itemData(int index) const { return lines_.at(index).itemData; }
    void setItemData(int index, std::int64_t data) { lines_.at(index).itemData = data; }

    // The text of the current line; empty when nothing is selected.
    std::string text() const;
    // Index of the first line whose text equals `text`, or -1.
    int findText(const std::string& text) const;
    // Index of the first line whose data equals `data`, or -1.
    int findItemData(std::int64_t data) const;

    bool selected(int index) const { return lines_.at(index).selected; }
    void setSelected(int index, bool on) { lines_.at(index).selected = on; }
    std::vector<int> selectedIndexes() const;

    const std::vector<Line>& lines() const { return lines_; }

    bool operator==(const ListState&) const = default;

private:
    std::vector<Line> lines_;
    int listIndex_ = -1;
};

}  // namespace tavlo

#pragma once
#include <string>
#include <vector>

class QComboBox;
class QListWidget;

namespace tavlo {

class ListState;

// Shows core's lines in a list or combo, rewriting only the lines that
// differ: a window refreshes on every change of its state, and a rebuilt
// list would lose its scroll position and cost a repaint of every line.
void ShowLines(QListWidget* widget, const std::vector<std::string>& lines);
void ShowLines(QListWidget* widget, const ListState& list);
// A combo's lines and its chosen line.
void ShowLines(QComboBox* combo, const std::vector<std::string>& lines, int index);
void ShowLines(QComboBox* combo, const ListState& list);

}  // namespace tavlo

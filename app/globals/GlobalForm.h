#pragma once
#include <QWidget>
#include <array>
#include <functional>
#include <string>
#include <vector>

#include "ui/Observable.h"

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLineEdit;
class QListWidget;

namespace tavlo {

class Program;
class SliderTextPair;
struct GlobalSettings;
struct SliderRange;

// The window on one set of the device's global settings. It shows
// GlobalsState and hands every edit and button to the global settings'
// flows of core; it lives for the whole run and closing only hides it.
class GlobalForm : public QWidget {
    Q_OBJECT
public:
    explicit GlobalForm(Program& session, QWidget* parent = nullptr);
    ~GlobalForm() override;

    // NewGlobalMenu: offers to store unsaved settings, then shows new ones.
    void newSettings();
    void showWindow();
    void refresh();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    using Field = std::function<int&(GlobalSettings&)>;
    struct Pair {
        SliderTextPair* pair;
        Field field;
        int low;
        int high;
    };
    void buildSettings(QGridLayout* grid);
    QWidget* buildFilters();
    QWidget* buildMapFrame();
    QWidget* buildButtons();
    void addPair(QGridLayout* grid, int row, const char* name, const char* caption, const SliderRange& range,
                 Field field, std::function<std::string(int)> text, std::function<int(const std::string&)> parse);
    QComboBox* addCombo(QGridLayout* grid, int row, const char* name, const char* caption,
                        const std::vector<std::string>& lines, Field field);
    void edit(const std::function<void(GlobalSettings&)>& change);
    void commitTexts();
    QWidget* frame();

    Program& session_;
    Observable::Token token_ = 0;
    Observable::Token midiToken_ = 0;
    bool refreshing_ = false;
    QLineEdit* name_ = nullptr;
    QCheckBox* default_ = nullptr;
    std::vector<Pair> pairs_;
    struct Combo {
        QComboBox* combo;
        Field field;
        const std::vector<std::string>* lines;
    };
    std::vector<Combo> combos_;
    std::vector<QWidget*> pc1600xOnly_;
    std::array<QCheckBox*, 15> filters_{};
    QComboBox* editMap_ = nullptr;
    QListWidget* progChanges_ = nullptr;
    QListWidget* targets_ = nullptr;
};

}  // namespace tavlo

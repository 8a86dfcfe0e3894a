#pragma once
#include <QWidget>
#include <memory>

namespace Ui {
class PoolForm;
}

namespace tavlo {

class Program;
struct PoolContext;

// The window on the stored presets. It shows PoolFormState and hands the
// user's clicks to the pool operations of core.
class PoolForm : public QWidget {
    Q_OBJECT
public:
    explicit PoolForm(Program& session, QWidget* parent = nullptr);
    ~PoolForm() override;

    // The first fill of the run, and a reload after changes elsewhere.
    void reload();

private:
    void refresh();
    void lineSelected(int row);
    void selectionChanged();
    void orderChanged();
    void runOperation(void (*operation)(const PoolContext&));
    void loadPresetSysex();
    void savePresetSysex();

    Program& session_;
    std::unique_ptr<Ui::PoolForm> ui_;
    int subscription_ = 0;
    bool filling_ = false;
};

}  // namespace tavlo

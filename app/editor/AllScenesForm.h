#pragma once
#include <QDialog>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace Ui {
class AllScenesForm;
}

namespace tavlo {

class Program;

// The scenes of every other preset of the pool, to pick one for a Send
// Scene button or for the setup scene.
class AllScenesForm : public QDialog {
    Q_OBJECT
public:
    AllScenesForm(Program& session, QWidget* parent = nullptr);
    ~AllScenesForm() override;
    // FillSceneList; false (the user has been told) when there are none.
    bool FillSceneList(const std::string& excludedPreset);
    // The SceneRec.ID chosen with OK, nothing after Cancel.
    std::optional<std::int64_t> chosen() const { return chosen_; }

private:
    void ok();
    Program& session_;
    std::unique_ptr<Ui::AllScenesForm> ui_;
    std::optional<std::int64_t> chosen_;
};

}  // namespace tavlo

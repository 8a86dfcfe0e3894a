#pragma once
#include <memory>
#include <string>

#include "ui/SteadyClock.h"

namespace tavlo {

class Prompter;
class Program;
class StatusForm;
class TavloController;
class QtPump;

// Tavlo with its windows: the Qt adapters of the boundaries, the Program
// they serve, and the windows over it.
class TavloProgram {
public:
    explicit TavloProgram(Prompter& prompter);
    ~TavloProgram();

    // The start-up: opens and proves the pool, then creates the windows.
    // False when the pool can't be used; the user has been told, and no
    // window exists.
    bool start(const std::string& poolPath);

    TavloController* controller() const { return controller_.get(); }
    Program& program() const { return *program_; }

private:
    Prompter& prompter_;
    SteadyClock clock_;
    std::unique_ptr<QtPump> pump_;
    std::unique_ptr<StatusForm> status_;
    std::unique_ptr<Program> program_;
    std::unique_ptr<TavloController> controller_;
};

}  // namespace tavlo

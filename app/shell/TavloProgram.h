#pragma once
#include <memory>
#include <string>

#include "pool/PoolDatabase.h"
#include "ui/SteadyClock.h"

namespace tavlo {

class Prompter;
class Session;
class StatusForm;
class TavloController;
class QtPump;

// Owns everything a run of Tavlo has: the pool, the session and its
// adapters, and the windows.
class TavloProgram {
public:
    explicit TavloProgram(Prompter& prompter);
    ~TavloProgram();

    // The start-up: opens and proves the pool, then creates the windows.
    // False when the pool can't be used; the user has been told, and no
    // window exists.
    bool start(const std::string& poolPath);

    TavloController* controller() const { return controller_.get(); }
    Session& session() const { return *session_; }

private:
    Prompter& prompter_;
    PoolDatabase pool_;
    SteadyClock clock_;
    std::unique_ptr<QtPump> pump_;
    std::unique_ptr<StatusForm> status_;
    std::unique_ptr<Session> session_;
    std::unique_ptr<TavloController> controller_;
};

}  // namespace tavlo

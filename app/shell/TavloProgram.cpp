#include "shell/TavloProgram.h"

#include "ui/Prompter.h"

#include "shell/Session.h"
#include "shell/Startup.h"
#include "shell/TavloController.h"
#include "ui/QtPump.h"
#include "ui/StatusForm.h"

namespace tavlo {

TavloProgram::TavloProgram(Prompter& prompter) : prompter_(prompter), pump_(std::make_unique<QtPump>()) {}

TavloProgram::~TavloProgram() = default;

bool TavloProgram::start(const std::string& poolPath) {
    if (!OpenPoolForStartup(pool_, poolPath, prompter_)) return false;
    status_ = std::make_unique<StatusForm>();
    session_ = std::make_unique<Session>(pool_, prompter_, *status_, *pump_, clock_);
    try {
        PrepareSession(*session_);
    } catch (const DatabaseError& e) {
        // The first write of the run: a full disk shows here.
        const PoolMessage message = DatabaseErrorMessage(e, poolPath);
        prompter_.message(message.title, message.text);
        session_.reset();
        pool_.close();
        return false;
    } catch (const PoolBusy&) {
        const PoolMessage message = PoolBusyMessage(poolPath);
        prompter_.message(message.title, message.text);
        session_.reset();
        pool_.close();
        return false;
    }
    controller_ = std::make_unique<TavloController>(*session_);
    controller_->restoreGeometryFromPool();
    return true;
}

}  // namespace tavlo

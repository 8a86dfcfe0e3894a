#include "shell/TavloProgram.h"

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
    PrepareSession(*session_);
    controller_ = std::make_unique<TavloController>(*session_);
    controller_->restoreGeometryFromPool();
    return true;
}

}  // namespace tavlo

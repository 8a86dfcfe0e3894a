#include "shell/TavloProgram.h"

#include "shell/Program.h"
#include "shell/Startup.h"
#include "shell/TavloController.h"
#include "ui/QtPump.h"
#include "ui/StatusForm.h"

namespace tavlo {

TavloProgram::TavloProgram(Prompter& prompter) : prompter_(prompter), pump_(std::make_unique<QtPump>()) {}

TavloProgram::~TavloProgram() = default;

bool TavloProgram::start(const std::string& poolPath) {
    status_ = std::make_unique<StatusForm>();
    program_ = std::make_unique<Program>(prompter_, *status_, *pump_, clock_);
    if (!OpenPoolForStartup(program_->pool, poolPath, prompter_)) {
        program_.reset();
        status_.reset();
        return false;
    }
    PrepareSession(*program_);
    controller_ = std::make_unique<TavloController>(*program_);
    controller_->restoreGeometryFromPool();
    return true;
}

}  // namespace tavlo

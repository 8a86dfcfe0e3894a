#include "shell/TavloProgram.h"

#include <optional>

#include "db/PoolDatabase.h"
#include "shell/Program.h"
#include "ui/Prompter.h"
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
    std::optional<PoolMessage> refusal;
    try {
        PrepareSession(*program_);
    } catch (const DatabaseError& e) {
        // The first write of the run: a full disk shows here.
        refusal = DatabaseErrorMessage(e, poolPath);
    } catch (const PoolBusy&) {
        refusal = PoolBusyMessage(poolPath);
    }
    if (refusal) {
        prompter_.message(refusal->title, refusal->text);
        program_->pool.close();
        program_.reset();
        return false;
    }
    controller_ = std::make_unique<TavloController>(*program_);
    controller_->restoreGeometryFromPool();
    controller_->firstRunGlobals();
    return true;
}

}  // namespace tavlo

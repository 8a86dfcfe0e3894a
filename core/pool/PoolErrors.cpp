#include "pool/PoolErrors.h"

#include "db/PoolDatabase.h"
#include "ui/Prompter.h"

namespace tavlo {

void TellDatabaseError(const PoolContext& session, const DatabaseError& error) {
    const PoolMessage message = DatabaseErrorMessage(error, session.pool.path());
    session.prompter.message(message.title, message.text);
}

}  // namespace tavlo

#include "shell/QuitMenu.h"

#include "shell/Program.h"
#include "db/PoolDatabase.h"
#include "globals/GlobalsFlows.h"
#include "pool/EditorStoreQuestions.h"
#include "ui/Prompter.h"

namespace tavlo {

bool QuitMenu(Program& session, const std::vector<WindowStateRow>& windows) {
    // Positions are written before any question: a cancelled exit leaves them
    // written, which is harmless as the next exit rewrites them.
    try {
        WriteWindowStates(session.pool.db(), windows);
    } catch (const DatabaseError&) {
        session.prompter.message("Database Error", "There has been a Database Error");
    }
    if (!StoreBeforeQuit(session)) return false;
    if (!AskStoreGlobalsOnClose(session)) return false;
    session.pool.close();
    return true;
}

}  // namespace tavlo

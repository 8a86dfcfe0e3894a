#include "midistrings/MSBModule.h"
#include "pool/PoolList.h"
#include "pool/PoolOperations.h"
#include "pool/PresetLoad.h"
#include "shell/Session.h"

namespace tavlo {

void EditButton(Session& session) {
    const int line = PoolOperationLine(session);
    if (line < 0) return;
    const SessionFlags& flags = session.flags;
    if (flags.TransferBusy || flags.DownloadInProgress || flags.ImageLoadRunning) {
        session.prompter.message("Cannot Edit Preset",
                                 "The PC1600(x) Edit Window is busy with another operation.  Please try again later.");
        return;
    }
    if (MSBModule::Trim(session.poolForm.PoolList.list(line)) == kInitializedName) return;
    session.flags.MemoryImageBound = false;
    session.editor.Caption = "Edit Preset from Pool";
    if (LoadPC1600xFormFromPool(session, session.poolForm.PoolList.itemData(line))) {
        session.editor.Visible = true;
        session.editor.notifyChanged();
    }
}

}  // namespace tavlo

#include "base/MSBModule.h"
#include "preset/PresetNames.h"
#include "pool/PoolList.h"
#include "pool/PoolOperations.h"
#include "pool/PresetLoad.h"
#include "pool/PoolContext.h"
#include "editor/EditorState.h"
#include "pool/PoolFlags.h"
#include "pool/PoolFormState.h"
#include "editor/ImageSlots.h"
#include "db/PoolDatabase.h"
#include "ui/Prompter.h"

namespace tavlo {

void EditButton(const PoolContext& session) {
    const int line = PoolOperationLine(session);
    if (line < 0) return;
    const PoolFlags& flags = session.flags;
    if (flags.TransferBusy || flags.DownloadInProgress || session.memImage.ImageLoadRunning) {
        session.prompter.message("Cannot Edit Preset",
                                 "The PC1600(x) Edit Window is busy with another operation.  Please try again later.");
        return;
    }
    if (IsInitializedName(session.poolForm.PoolList.list(line))) return;
    session.memImage.MemoryImageBound = false;
    session.editor.Caption = "Edit Preset from Pool";
    if (LoadPC1600xFormFromPool(session, session.poolForm.PoolList.itemData(line))) {
        session.editor.Visible = true;
        session.editor.notifyChanged();
    }
}

}  // namespace tavlo

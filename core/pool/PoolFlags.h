#pragma once

namespace tavlo {

// Flags that the pool's flows set to keep each other out while they run,
// and the answers a download carries from one preset to the next.
struct PoolFlags {
    bool DownloadInProgress = false;
    bool BulkImportActive = false;
    bool TransferBusy = false;
    // A blank name stopped a store that the quit command asked for.
    bool StoreAborted = false;
    // MemImageOrPoolChoiceForm: what to do with a clashing name (0 keep the
    // pool's, 1 use the downloaded one, 2 rename the pool's, 3 rename the
    // downloaded one), and whether that holds for the rest of the download.
    int ChoiceResult = 0;
    bool ChoiceForAll = false;
    // MemImageForm: the device's memory may hold presets of equal name.
    bool DuplicateNamesAccepted = false;
    // A preset row vanished under a load: the program cannot go on safely.
    bool FatalDatabaseError = false;
};

}  // namespace tavlo

#pragma once
#include <string>

namespace tavlo {

// Program-wide flags that flows set to keep each other out while they run.
struct SessionFlags {
    bool TimedOut = false;
    bool DownloadInProgress = false;
    bool MemoryImageBound = false;
    int MemoryImageSlot = -1;
    bool ImageLoadRunning = false;
    bool BulkImportActive = false;
    bool TransferBusy = false;
    bool ProgramInit = true;
    bool Quitting = false;
    std::string DragType;
    int DragSource = -1;
    long DefaultGlobalsID = -1;
};

}  // namespace tavlo

#pragma once
#include <chrono>
#include <string>

namespace tavlo {

// One process works on a pool at a time. The owner holds an exclusive lock
// on "<pool>.lock" beside the pool and has written its process ID into it.
// The lock belongs to the open file description, not to the process, so no
// other open and close of any file in the process (a file dialog looking
// into the folder, say) can drop it, as it would drop SQLite's own POSIX
// record locks. The lock file stays when released: removing it would let
// a waiter lock a name that no longer leads to the file others lock.
class PoolLock {
public:
    enum class Outcome {
        Taken,
        HeldElsewhere,   // another owner kept it through the whole wait
        ReadOnlyFolder,  // the lock file can't be made or written
        DiskFull,        // no room to write the process ID
        Failed,          // anything else; see error()
    };

    PoolLock() = default;
    ~PoolLock() { release(); }
    PoolLock(const PoolLock&) = delete;
    PoolLock& operator=(const PoolLock&) = delete;

    // Takes the lock of the pool at `poolPath`, waiting up to `wait` while
    // another owner has it. `wholeRun` tells waiters that this owner keeps
    // the pool until it quits, so they need not wait for it.
    Outcome take(const std::string& poolPath, std::chrono::milliseconds wait, bool wholeRun);
    void release();
    bool held() const { return fd_ >= 0; }

    // After HeldElsewhere: the owner's process ID, 0 when it couldn't be read.
    long holderPid() const { return holderPid_; }
    // After Failed: what the system said.
    const std::string& error() const { return error_; }

    static std::string LockPath(const std::string& poolPath) { return poolPath + ".lock"; }

private:
    int fd_ = -1;
    long holderPid_ = 0;
    std::string error_;
};

}  // namespace tavlo

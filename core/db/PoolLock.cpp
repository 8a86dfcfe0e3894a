#include "db/PoolLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <thread>

namespace tavlo {
namespace {

// Non-blocking attempt on the whole file; true when taken.
bool tryLock(int fd) {
#ifdef F_OFD_SETLK
    struct flock range {};
    range.l_type = F_WRLCK;
    range.l_whence = SEEK_SET;
    range.l_start = 0;
    range.l_len = 0;
    return fcntl(fd, F_OFD_SETLK, &range) == 0;
#else
    // BSD locks also belong to the open file description.
    return flock(fd, LOCK_EX | LOCK_NB) == 0;
#endif
}

bool heldByOther(int error) { return error == EAGAIN || error == EACCES || error == EWOULDBLOCK; }

// What the owner wrote: "<pid>" and, for an owner that keeps the pool for
// its whole run, " run".
struct Holder {
    long pid = 0;
    bool wholeRun = false;
};

Holder readHolder(int fd) {
    char text[64] = {};
    const ssize_t n = pread(fd, text, sizeof text - 1, 0);
    Holder holder;
    if (n <= 0) return holder;
    char* end = nullptr;
    holder.pid = std::strtol(text, &end, 10);
    holder.wholeRun = end && std::strncmp(end, " run", 4) == 0;
    return holder;
}

}  // namespace

PoolLock::Outcome PoolLock::take(const std::string& poolPath, std::chrono::milliseconds wait, bool wholeRun) {
    release();
    holderPid_ = 0;
    error_.clear();
    const std::string path = LockPath(poolPath);
    const int fd = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (fd < 0) {
        const int error = errno;
        if (error == EROFS || error == EACCES || error == EPERM) return Outcome::ReadOnlyFolder;
        if (error == ENOSPC || error == EDQUOT) return Outcome::DiskFull;
        error_ = path + ": " + std::strerror(error);
        return Outcome::Failed;
    }

    const auto deadline = std::chrono::steady_clock::now() + wait;
    while (!tryLock(fd)) {
        const int error = errno;
        if (!heldByOther(error)) {
            error_ = path + ": " + std::strerror(error);
            ::close(fd);
            return Outcome::Failed;
        }
        const Holder holder = readHolder(fd);
        holderPid_ = holder.pid;
        if (holder.wholeRun || std::chrono::steady_clock::now() >= deadline) {
            ::close(fd);
            return Outcome::HeldElsewhere;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }

    const std::string text = std::to_string(static_cast<long>(getpid())) + (wholeRun ? " run\n" : "\n");
    if (ftruncate(fd, 0) != 0 || pwrite(fd, text.data(), text.size(), 0) != static_cast<ssize_t>(text.size())) {
        const int error = errno;
        ::close(fd);
        if (error == ENOSPC || error == EDQUOT) return Outcome::DiskFull;
        if (error == EROFS || error == EACCES || error == EPERM) return Outcome::ReadOnlyFolder;
        error_ = path + ": " + std::strerror(error);
        return Outcome::Failed;
    }
    fd_ = fd;
    holderPid_ = 0;
    return Outcome::Taken;
}

void PoolLock::release() {
    if (fd_ < 0) return;
    // Emptied first, so a process ID left behind never names a stranger.
    if (ftruncate(fd_, 0) != 0) {
        // The lock still goes with the descriptor; a stale ID is only ever
        // read while someone holds the lock and has written their own.
    }
    ::close(fd_);
    fd_ = -1;
}

}  // namespace tavlo

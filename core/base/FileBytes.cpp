#include "base/FileBytes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <iterator>

namespace tavlo {

std::optional<std::string> ReadWholeFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return std::nullopt;
    std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (in.bad()) return std::nullopt;
    return bytes;
}

namespace {

bool writeAll(int fd, const std::string& bytes) {
    std::size_t written = 0;
    while (written < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.data() + written, bytes.size() - written);
        if (n <= 0) return false;
        written += static_cast<std::size_t>(n);
    }
    return true;
}

}  // namespace

bool WriteWholeFile(const std::string& path, const std::string& bytes) {
    // A device or a pipe (/dev/stdout) is written as it is: it can't be replaced.
    struct stat target {};
    if (::stat(path.c_str(), &target) == 0 && !S_ISREG(target.st_mode)) {
        const int fd = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
        if (fd < 0) return false;
        const bool complete = writeAll(fd, bytes);
        return ::close(fd) == 0 && complete;
    }
    const std::string temporary = path + ".tavlo-new";
    const int fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0) return false;
    const bool complete = writeAll(fd, bytes) && ::fsync(fd) == 0;
    if (::close(fd) != 0 || !complete || std::rename(temporary.c_str(), path.c_str()) != 0) {
        std::remove(temporary.c_str());
        return false;
    }
    return true;
}

}  // namespace tavlo

#pragma once
#include <filesystem>
#include <string>

namespace tavlo::testing {

// A folder of its own for each test, removed afterwards.
class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    std::string file(const std::string& name) const { return (path_ / name).string(); }
    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

}  // namespace tavlo::testing

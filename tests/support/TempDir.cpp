#include "TempDir.h"

#include <cstdlib>
#include <system_error>

namespace tavlo::testing {

TempDir::TempDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tavlo-test-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("cannot make a temporary folder");
    path_ = pattern;
}

TempDir::~TempDir() {
    std::error_code ec;
    std::filesystem::remove_all(path_, ec);
}

}  // namespace tavlo::testing

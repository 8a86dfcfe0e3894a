#pragma once
// What the benchmarks share: a pool file of their own, and a prompter that
// answers nothing.
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include "db/PoolDatabase.h"
#include "editor/EditorState.h"
#include "shell/Program.h"
#include "ui/SteadyClock.h"
#include "ui/StreamPrompter.h"

namespace tavlo::bench {

inline void RemovePool(const std::string& path) {
    for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(path + suffix);
}

// A pool file in the temporary folder, with what an earlier run left removed.
inline std::string FreshPoolPath(const char* name) {
    const auto dir = std::filesystem::temp_directory_path() / "tavlo-bench";
    std::filesystem::create_directories(dir);
    const std::string path = (dir / name).string();
    RemovePool(path);
    return path;
}

// A benchmark answers nothing: any message but the one it expects, and any
// input, is a fault of the set-up.
class NoQuestions : public StreamPrompter {
public:
    explicit NoQuestions(std::string expected = {}) : expected_(std::move(expected)) {}
    MessageAnswer message(const std::string& title, const std::string&, MessageButtons) override {
        if (!expected_.empty() && title == expected_) return MessageAnswer::OK;
        throw std::runtime_error("unexpected message: " + title);
    }
    std::optional<std::string> input(const std::string& title, const std::string&, const std::string&) override {
        throw std::runtime_error("unexpected input: " + title);
    }

private:
    std::string expected_;
};

// The program on a fresh pool of its own, past its start-up.
struct BenchSession {
    explicit BenchSession(const char* file) : session(std::make_unique<Program>(prompter, status, pump, clock)) {
        if (!session->pool.open(FreshPoolPath(file)).ok()) throw std::runtime_error("pool");
        session->editor.ProgramInit = false;
    }
    NoQuestions prompter;
    SilentStatusView status;
    SleepingPump pump;
    SteadyClock clock;
    std::unique_ptr<Program> session;
    PoolDatabase& pool = session->pool;
};

}  // namespace tavlo::bench

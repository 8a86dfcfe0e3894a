// Start-up cost of the pool: creating a new one with its seed, and opening
// and proving an existing one, as every start of Tavlo does.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "db/PoolDatabase.h"

namespace {

std::string benchPath(const char* name) {
    const auto dir = std::filesystem::temp_directory_path() / "tavlo-bench";
    std::filesystem::create_directories(dir);
    return (dir / name).string();
}

void removePool(const std::string& path) {
    for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(path + suffix);
}

void BM_CreatePoolWithSeed(benchmark::State& state) {
    const std::string path = benchPath("create.mdb");
    for (auto _ : state) {
        state.PauseTiming();
        removePool(path);
        state.ResumeTiming();
        tavlo::PoolDatabase pool;
        if (!pool.open(path).ok()) state.SkipWithError("create failed");
    }
    removePool(path);
}
BENCHMARK(BM_CreatePoolWithSeed)->Unit(benchmark::kMillisecond);

void BM_OpenExistingPool(benchmark::State& state) {
    const std::string path = benchPath("open.mdb");
    removePool(path);
    { tavlo::PoolDatabase pool; pool.open(path); }
    for (auto _ : state) {
        tavlo::PoolDatabase pool;
        if (!pool.open(path).ok()) state.SkipWithError("open failed");
    }
    removePool(path);
}
BENCHMARK(BM_OpenExistingPool)->Unit(benchmark::kMillisecond);

}  // namespace

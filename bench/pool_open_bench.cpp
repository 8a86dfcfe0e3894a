// Start-up cost of the pool: creating a new one with its seed, and opening
// and proving an existing one, as every start of Tavlo does.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "BenchSupport.h"
#include "db/PoolDatabase.h"

namespace {

void BM_CreatePoolWithSeed(benchmark::State& state) {
    const std::string path = tavlo::bench::FreshPoolPath("create.mdb");
    for (auto _ : state) {
        state.PauseTiming();
        tavlo::bench::RemovePool(path);
        state.ResumeTiming();
        tavlo::PoolDatabase pool;
        if (!pool.open(path).ok()) state.SkipWithError("create failed");
    }
    tavlo::bench::RemovePool(path);
}
BENCHMARK(BM_CreatePoolWithSeed)->Unit(benchmark::kMillisecond);

void BM_OpenExistingPool(benchmark::State& state) {
    const std::string path = tavlo::bench::FreshPoolPath("open.mdb");
    { tavlo::PoolDatabase pool; pool.open(path); }
    for (auto _ : state) {
        tavlo::PoolDatabase pool;
        if (!pool.open(path).ok()) state.SkipWithError("open failed");
    }
    tavlo::bench::RemovePool(path);
}
BENCHMARK(BM_OpenExistingPool)->Unit(benchmark::kMillisecond);

}  // namespace

// Handle memory beside the two heap calls under it: the record may cost one small allocation, nothing else.
#include "HandleMemory.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <cstring>

namespace {

void HandleMemory_AllocFree(benchmark::State& state)
{
    const int size = static_cast<int>(state.range(0));
    for (auto _ : state) {
        HMEM__* const handle = MEMMANAlloc(size);
        benchmark::DoNotOptimize(handle->data);
        MEMMANFree(handle);
    }
}

void HandleMemory_BareHeap(benchmark::State& state)
{
    const auto size = static_cast<std::size_t>(state.range(0));
    for (auto _ : state) {
        void* record = std::malloc(sizeof(HMEM__));
        void* block = std::malloc(size);
        std::memset(block, 0, size);
        benchmark::DoNotOptimize(record);
        benchmark::DoNotOptimize(block);
        std::free(block);
        std::free(record);
    }
}

BENCHMARK(HandleMemory_AllocFree)->ArgName("bytes")->RangeMultiplier(16)->Range(16, 1 << 16);
BENCHMARK(HandleMemory_BareHeap)->ArgName("bytes")->RangeMultiplier(16)->Range(16, 1 << 16);

}   // namespace

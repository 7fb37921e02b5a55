// Starting a record among many, beside one walk over a table of as many that asks each entry whether it has expired.
#include "TrackFileFormatUse.h"
#include "siblings/TvlUtils/ThreadLock.h"

#include <benchmark/benchmark.h>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

TvlString Path(int number) { return L"/home/user/documents/drawing " + std::to_wstring(number) + L".tvr"; }

void LiveRecords(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgName("records")->Arg(100)->Arg(1'000)->Arg(4'000)->Arg(16'000)->Arg(64'000);
}

/// One record starts and ends each time, so that each start finds an entry to remove.
void TrackingStart_Own(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    std::vector<TrackFileFormatUse> live;
    for (int i = 0; i < count; ++i)
        live.push_back(TrackFileFormatUse::StartGlobal(Path(i), L"Import"));
    const TvlString path = Path(count);
    for (auto _ : state) {
        TrackFileFormatUse use = TrackFileFormatUse::StartGlobal(path, L"Import");
        use.Discard();
    }
    for (TrackFileFormatUse& use : live)
        use.Discard();
}
BENCHMARK(TrackingStart_Own)->Apply(LiveRecords);

/// A start that finds a live record.
void TrackingStart_OwnLive(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    std::vector<TrackFileFormatUse> live;
    for (int i = 0; i < count; ++i)
        live.push_back(TrackFileFormatUse::StartGlobal(Path(i), L"Import"));
    const TvlString path = Path(count / 2);
    for (auto _ : state)
        benchmark::DoNotOptimize(TrackFileFormatUse::StartGlobal(path, L"Import"));
    for (TrackFileFormatUse& use : live)
        use.Discard();
}
BENCHMARK(TrackingStart_OwnLive)->Apply(LiveRecords);

void TrackingStart_Walk(benchmark::State& state)
{
    std::vector<std::shared_ptr<int>> live;
    std::unordered_map<TvlString, std::weak_ptr<int>> table;
    TvlUtils::ThreadLock lock;
    for (int i = 0; i < state.range(0); ++i) {
        live.push_back(std::make_shared<int>(i));
        table.emplace(Path(i), live.back());
    }
    for (auto _ : state) {
        const TvlUtils::WriteLock hold(lock);
        benchmark::DoNotOptimize(std::erase_if(table, [](const auto& entry) { return entry.second.expired(); }));
    }
}
BENCHMARK(TrackingStart_Walk)->Apply(LiveRecords);

}   // namespace

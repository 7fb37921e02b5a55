// Events and task progress beside boost::signals2: applications report from inner loops.
#include "ITaskProgressMgr.h"
#include "siblings/TvlUtils/EventBase.h"

#include <benchmark/benchmark.h>
#include <boost/signals2.hpp>
#include <vector>

namespace {

using Signal = boost::signals2::signal<void(void*)>;

void Event_Own(benchmark::State& state)
{
    TvlUtils::EventBase event;
    long calls = 0;
    for (int i = 0; i < state.range(0); ++i)
        event.Subscribe([&calls](void*) { ++calls; }).MakePermanent();
    for (auto _ : state) {
        event.Raise(&event);
        benchmark::DoNotOptimize(calls);
    }
}

void Event_Signals2(benchmark::State& state)
{
    Signal signal;
    long calls = 0;
    for (int i = 0; i < state.range(0); ++i)
        signal.connect([&calls](void*) { ++calls; });
    for (auto _ : state) {
        signal(&signal);
        benchmark::DoNotOptimize(calls);
    }
}

void EventWithoutHandlers_Own(benchmark::State& state) { Event_Own(state); }
void EventWithoutHandlers_Signals2(benchmark::State& state) { Event_Signals2(state); }
BENCHMARK(EventWithoutHandlers_Own)->Arg(0);
BENCHMARK(EventWithoutHandlers_Signals2)->Arg(0);
BENCHMARK(Event_Own)->Arg(10);
BENCHMARK(Event_Signals2)->Arg(10);

/// One listener besides the manager's own subscription; the argument is the task's type.
void SetProgress_Own(benchmark::State& state)
{
    long calls = 0;
    TvlUtl::ITaskProgress* const task =
        TvlUtl::ITaskProgressMgr::GetInst().CreateTask(1, static_cast<int>(state.range(0)), L"task");
    task->GetProgressEvent().Subscribe([&calls](void*) { ++calls; }).MakePermanent();
    unsigned long long done = 0;
    for (auto _ : state) {
        task->SetProgress(++done, nullptr);
        benchmark::DoNotOptimize(calls);
    }
    task->Finish();
}

/// The same number of slots, with nothing to keep.
void SetProgress_Signals2(benchmark::State& state)
{
    Signal signal;
    long calls = 0;
    for (int i = 0; i < 2; ++i)
        signal.connect([&calls](void*) { ++calls; });
    for (auto _ : state) {
        signal(&signal);
        benchmark::DoNotOptimize(calls);
    }
}
BENCHMARK(SetProgress_Own)->Arg(0)->Arg(1);
BENCHMARK(SetProgress_Signals2)->Arg(0)->Arg(1);

}   // namespace

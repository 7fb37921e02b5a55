// Events and task progress beside boost::signals2 and GLib's signals: applications report from inner loops.
#include "ITaskProgressMgr.h"
#include "siblings/TvlUtils/EventBase.h"

#include <benchmark/benchmark.h>
#include <boost/signals2.hpp>
#include <glib-object.h>
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

/// A signal of GObject, whose handlers get its object.
void Event_GSignal(benchmark::State& state)
{
    static const guint signal =
        g_signal_new("raised", G_TYPE_OBJECT, G_SIGNAL_RUN_LAST, 0, nullptr, nullptr, nullptr, G_TYPE_NONE, 0);
    auto* const sender = static_cast<GObject*>(g_object_new(G_TYPE_OBJECT, nullptr));
    long calls = 0;
    const auto handler = +[](GObject*, long* counted) { ++*counted; };
    for (int i = 0; i < state.range(0); ++i)
        g_signal_connect(sender, "raised", G_CALLBACK(handler), &calls);
    for (auto _ : state) {
        g_signal_emit(sender, signal, 0);
        benchmark::DoNotOptimize(calls);
    }
    g_object_unref(sender);
}

void EventWithoutHandlers_Own(benchmark::State& state) { Event_Own(state); }
void EventWithoutHandlers_Signals2(benchmark::State& state) { Event_Signals2(state); }
BENCHMARK(EventWithoutHandlers_Own)->Arg(0);
BENCHMARK(EventWithoutHandlers_Signals2)->Arg(0);
BENCHMARK(Event_Own)->ArgName("handlers")->Arg(1)->Arg(10)->Arg(40)->Arg(160)->Arg(640);
BENCHMARK(Event_Signals2)->ArgName("handlers")->Arg(1)->Arg(10)->Arg(40)->Arg(160)->Arg(640);
BENCHMARK(Event_GSignal)->ArgName("handlers")->Arg(1)->Arg(10)->Arg(40)->Arg(160)->Arg(640);

/// Listeners besides the manager's own subscription, and the task's type.
void SetProgress_Own(benchmark::State& state)
{
    long calls = 0;
    TvlUtl::ITaskProgress* const task =
        TvlUtl::ITaskProgressMgr::GetInst().CreateTask(1, static_cast<int>(state.range(1)), L"task");
    for (int i = 0; i < state.range(0); ++i)
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
    for (int i = 0; i < state.range(0) + 1; ++i)
        signal.connect([&calls](void*) { ++calls; });
    for (auto _ : state) {
        signal(&signal);
        benchmark::DoNotOptimize(calls);
    }
}
BENCHMARK(SetProgress_Own)->ArgNames({"listeners", "type"})->ArgsProduct({{1, 4, 16, 64}, {0, 1}});
BENCHMARK(SetProgress_Signals2)->ArgNames({"listeners", "type"})->ArgsProduct({{1, 4, 16, 64}, {0, 1}});

}   // namespace

// Many threads on many tasks.
#include "EndOfTask.h"

#include <array>
#include <atomic>
#include <chrono>
#include <cmath>
#include <gtest/gtest.h>
#include <numeric>
#include <random>
#include <thread>

namespace {
using namespace TvlUtl;

constexpr int kTasks = 64;
constexpr int kReporters = 16;
constexpr unsigned long long kManyUnits = 1ull << 40;
constexpr unsigned long long kFirstGroup = 100;
constexpr int kGroups = 8;
constexpr unsigned long long kChurnGroup = 200;

std::atomic<long> detachedTasks = 0;

ITaskProgressMgr& Manager() { return ITaskProgressMgr::GetInst(); }

/// Counts what the manager tells, and what the tasks tell themselves.
struct Tally {
    Tally()
    {
        const auto count = [this](TvlUtils::EventBase& event, std::atomic<long>& counter) {
            kept.push_back(event.Subscribe([&counter](void*) { ++counter; }));
        };
        kept.push_back(Manager().GetTaskAddedEvent().Subscribe([this](void* sender) {
            ++added;
            auto* const task = static_cast<ITaskProgress*>(sender);
            if (task->GetTaskType() == eTaskCancellationReported)
                task->GetCancelledEvent().Subscribe([this](void*) { ++ownCancelled; }).MakePermanent();
            else
                task->GetCancelledEvent().Subscribe([this](void*) { ++ownChanged; }).MakePermanent();
            task->GetProgressEvent().Subscribe([this](void*) { ++ownChanged; }).MakePermanent();
            task->GetErrorEvent().Subscribe([this](void*) { ++ownErrors; }).MakePermanent();
        }));
        count(Manager().GetTaskRemovedEvent(), removed);
        kept.push_back(Manager().GetTaskChangedEvent().Subscribe([this](void* sender) {
            ++changed;
            const unsigned long long group = static_cast<ITaskProgress*>(sender)->GetGroupId();
            reported += group >= kFirstGroup && group < kFirstGroup + kGroups;
        }));
        count(Manager().GetTaskCancelledEvent(), cancelled);
        count(Manager().GetTaskErrorEvent(), errors);
    }

    std::atomic<long> added = 0, removed = 0, changed = 0, cancelled = 0, errors = 0;
    std::atomic<unsigned long long> reported = 0;   // on the tasks that live all the time
    std::atomic<long> ownChanged = 0, ownCancelled = 0, ownErrors = 0;
    std::vector<TvlUtils::Subscription> kept;
};

/// What all threads share.
struct Work {
    std::array<ITaskProgress*, kTasks> tasks;
    std::array<std::atomic<unsigned long long>, kTasks> units{};
    std::atomic<bool> isOver = false;
    std::atomic<long> created = 0;

    bool Goes() const { return !isOver.load(std::memory_order_relaxed); }
    ITaskProgress* Create(unsigned long long group, int type)
    {
        ++created;
        return Manager().CreateTask(group, type, L"task");
    }
};

void Report(Work& work, unsigned seed)
{
    std::mt19937 random(seed);
    while (work.Goes()) {
        const unsigned i = random() % kTasks;
        ITaskProgress& task = *work.tasks[i];
        task.AddProgress(1);
        ++work.units[i];
        if (random() % 8 == 0) {
            EXPECT_LE(task.GetProgress(), 1.0);
            EXPECT_EQ(task.GetStepName(), L"");
            EXPECT_FALSE(task.HasError());
        }
    }
}

/// Lives of tasks that their thread owns: nested steps, errors, cancellation, end.
void LiveShortLives(Work& work, unsigned seed)
{
    std::mt19937 random(seed);
    while (work.Goes()) {
        const int type = static_cast<int>(random() % 4);
        ITaskProgress* const task = work.Create(kChurnGroup + random() % 3, type);
        task->BeginSubTask(50, 10);
        task->SetProgress(5, L"halfway");
        if (random() % 3 == 0)
            task->Cancel();
        task->EndSubTask();
        task->Finish();
    }
}

/// Tasks that nobody owns once they are made: several threads fail, clear and finish them at once.
void ClearAndFinish(Work& work, unsigned seed)
{
    constexpr unsigned long long group = kChurnGroup + 10;
    std::mt19937 random(seed);
    const auto fail = Manager().GetTaskAddedEvent().Subscribe([&](void* sender) {
        auto* const task = static_cast<ITaskProgress*>(sender);
        if (task->GetGroupId() == group)
            task->SetError(L"failed");
    });
    while (work.Goes()) {
        work.Create(group, 1);
        if (random() % 2 == 0)
            Manager().ClearFailedTasks(group, 1);
        else
            Manager().FinishTask(group, 1);
    }
}

void Ask(Work& work, unsigned seed)
{
    std::mt19937 random(seed);
    while (work.Goes()) {
        const unsigned long long group = kFirstGroup + random() % kGroups;
        EXPECT_EQ(Manager().GetTaskCount(group, eTaskAnyType, 0), static_cast<unsigned>(kTasks / kGroups));
        EXPECT_LE(Manager().GetGroupProgress(group, eTaskAnyType), 1.0);
        Manager().GetTaskErrorText(kChurnGroup + 10, 1);
        Manager().GetTaskCount(0, 1, eTaskStateCancelledOrFailed);
        Manager().GetDefaultGroupTaskCount(0, eTaskStateSound);
        if (random() % 64 == 0)
            Manager().CancelGroup(kChurnGroup + random() % 3, eTaskAnyType);
        if (random() % 256 == 0)
            Manager().CancelAll(1);
        ITaskProgress* const detached = Manager().CreateDetachedTask(L"detached");
        ++work.created;
        detached->AddProgress(1);
        detached->Finish();
        ++detachedTasks;
    }
}

void CompareCounts(const Tally& tally, const Work& work)
{
    EXPECT_EQ(tally.removed, work.created);
    EXPECT_EQ(tally.added + detachedTasks, work.created);
    const auto units = std::accumulate(work.units.begin(), work.units.end(), 0ull);
    EXPECT_EQ(tally.reported, units + 2 * kTasks) << "each report, and the first step and the end of each task";
    // A task may be cancelled before its own listeners are there.
    EXPECT_GE(tally.changed, tally.ownChanged);
    EXPECT_GE(tally.cancelled, tally.ownCancelled);
    EXPECT_GT(tally.cancelled, 0);
    EXPECT_EQ(tally.errors, tally.ownErrors);
    EXPECT_EQ(Manager().GetDefaultGroupTaskCount(eTaskAnyType, 0), 0u);
    for (unsigned long long group = kFirstGroup; group <= kChurnGroup + 10; ++group)
        EXPECT_EQ(Manager().GetTaskCount(group, eTaskAnyType, 0), 0u) << group;
}

TEST(Threads, ReportOnTasksWhileOthersCreateFinishCancelAndAsk)
{
    Tally tally;
    Work work;
    for (int i = 0; i < kTasks; ++i) {
        work.tasks[i] = work.Create(kFirstGroup + i % kGroups, 2 + i % 3);
        work.tasks[i]->BeginSubTask(100, kManyUnits);
    }
    std::vector<std::thread> threads;
    for (unsigned seed = 0; seed < kReporters; ++seed)
        threads.emplace_back(Report, std::ref(work), seed);
    for (unsigned seed = 0; seed < 2; ++seed) {
        threads.emplace_back(LiveShortLives, std::ref(work), seed);
        threads.emplace_back(ClearAndFinish, std::ref(work), seed);
        threads.emplace_back(Ask, std::ref(work), seed);
    }
    std::this_thread::sleep_for(std::chrono::seconds(THREADS_WORK_SECONDS));
    work.isOver = true;
    for (auto& thread : threads)
        thread.join();

    for (int i = 0; i < kTasks; ++i) {
        const double done = work.tasks[i]->GetProgress() * static_cast<double>(kManyUnits);
        EXPECT_EQ(static_cast<unsigned long long>(std::llround(done)), work.units[i]) << i;
        work.tasks[i]->Finish();
    }
    Manager().ClearFailedTasks(kChurnGroup + 10, 1);
    CompareCounts(tally, work);
}

// Two threads end the same tasks: each task ends once.
TEST(Threads, EndEachTaskOnce)
{
    constexpr int kRounds = 300;
    constexpr unsigned long long kGroup = 300;
    Tally tally;
    for (int round = 0; round < kRounds; ++round) {
        Manager().CreateTask(kGroup, 2, L"kept")->SetError(L"failed");
        std::thread clearing([] { Manager().ClearFailedTasks(kGroup, 2); });
        std::thread finishing([] { Manager().FinishTask(kGroup, 2); });
        clearing.join();
        finishing.join();
        EXPECT_EQ(Manager().GetTaskCount(kGroup, 2, 0), 0u);
    }
    EXPECT_EQ(tally.removed, kRounds);
}

}   // namespace

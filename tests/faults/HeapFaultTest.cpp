// Memory that runs out, in each allocation of each operation: once, and from then on. Nothing crashes, leaks, keeps a lock
// or breaks what holds, and the same operation goes through as soon as there is memory again.
#include "FailingHeap.h"
#include "NamedOperation.h"
#include "Tally.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <chrono>
#include <future>
#include <gtest/gtest.h>
#include <new>
#include <thread>

namespace {
constexpr int kMostPoints = 40;   // of one operation and extent, unless the run is whole

/// Runs an operation on another thread, which would wait for ever for a lock that was left. False when it does.
bool RunsElsewhere(const std::function<void()>& run)
{
    std::packaged_task<void()> task(run);
    std::future<void> done = task.get_future();
    std::thread thread(std::move(task));
    constexpr auto kLongest = std::chrono::seconds(30);
    if (done.wait_for(kLongest) != std::future_status::ready) {
        thread.detach();
        return false;
    }
    thread.join();
    done.get();
    return true;
}

/// Whether allocations inside of the stand-ins' library are counted: on windows each library has a heap of its own.
bool ReachesStandIns()
{
    static const bool reaches = [] {
        const FailingHeap heap(FailingHeap::kNever);
        TvlPlatform::ToUtf8(std::wstring(200, L'a'));
        return heap.Count() > 1;
    }();
    return reaches;
}

class HeapFaults : public testing::TestWithParam<NamedOperation> {
protected:
    /// Allocations of a run without a fault.
    int Count() const
    {
        const HeapTrial trial = GetParam().operation.begin();
        HeapRun run;
        int count = 0;
        {
            const FailingHeap heap(FailingHeap::kNever);
            trial.run();
            count = heap.Count();
        }
        EXPECT_FALSE(trial.tells()) << "without any fault";
        trial.check(run);
        return count;
    }
    void Try(int point, FailingHeap::Extent extent) const
    {
        const HeapTrial trial = GetParam().operation.begin();
        HeapRun run;
        int failed = 0;
        {
            const FailingHeap heap(point, extent);
            try {
                trial.run();
            } catch (const std::bad_alloc&) {
                run.hasThrown = true;
            }
            failed = heap.CountFailed();
        }
        // Who tells nothing must have done it all.
        const bool isTold = run.hasThrown || trial.tells();
        EXPECT_TRUE(failed > 0 || !isTold) << "without any fault";
        run.hasFailed = failed > 0 && (isTold || GetParam().operation.isSilent);
        trial.check(run);
        Tally::Get().Add("allocations failed", failed);
        ASSERT_TRUE(RunsElsewhere(trial.run)) << "a lock was left";
        EXPECT_FALSE(trial.tells()) << "with memory again";
        trial.check(HeapRun());
        Tally::Get().Add("runs out of memory survived", HasFailure() ? 0 : 1);
    }
};

TEST_P(HeapFaults, LeaveWhatHolds)
{
    Count();   // what is made once in a process is there from now on
    const int count = Count();
    if (count == 0 && !ReachesStandIns())
        return Tally::Get().Add("operations that need memory of the stand-ins alone");
    ASSERT_GT(count, 0) << "an operation that needs no memory";
    Tally::Get().Add("operations out of memory");
    Tally::Get().Add("allocations of these operations", count);
    // Not a divisor of loops in the operations: other places are met in each of their rounds.
    const int step = StepBetween(count, kMostPoints);
    for (const auto extent : {FailingHeap::Extent::Once, FailingHeap::Extent::Onward})
        for (int point = 0; point < count && !HasFailure(); point += step) {
            SCOPED_TRACE(testing::Message() << "allocation " << point << " of " << count
                                            << (extent == FailingHeap::Extent::Once ? "" : " and all behind it"));
            Try(point, extent);
        }
}

INSTANTIATE_TEST_SUITE_P(Operations, HeapFaults, testing::ValuesIn(NamedOperation::All()),
    [](const auto& operation) { return operation.param.name; });

}   // namespace

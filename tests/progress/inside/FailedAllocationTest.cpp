// Allocations that fail: the caller sees std::bad_alloc, nothing half made stays, and no lock.
#include "FailingHeap.h"
#include "ITaskProgressMgr.h"
#include "siblings/TvlUtils/EventBase.h"

#include <gtest/gtest.h>
#include <new>
#include <thread>

namespace {
using namespace TvlUtl;

constexpr unsigned long long kGroup = 11;

ITaskProgressMgr& Manager() { return ITaskProgressMgr::GetInst(); }

/// What another thread finds: it would wait for a lock that was left.
unsigned long long CountElsewhere()
{
    unsigned long long count = 0;
    std::thread([&] { count = Manager().GetTaskCount(kGroup, eTaskAnyType, 0); }).join();
    return count;
}

TEST(FailedAllocation, MakesNoTaskAndLeavesNoLock)
{
    Manager();
    ITaskProgress* made = nullptr;
    FailEachAllocation(
        6,
        [&] {
            try {
                made = Manager().CreateTask(kGroup, 2, L"a name that needs an allocation of its own");
            } catch (const std::bad_alloc&) {
                made = nullptr;
            }
        },
        [&](bool failed) {
            EXPECT_EQ(made == nullptr, failed);
            EXPECT_EQ(CountElsewhere(), made ? 1u : 0u);
            if (made)
                made->Finish();
            EXPECT_EQ(Manager().GetTaskCount(0, eTaskAnyType, 0), 0u);
            made = nullptr;
        });
}

TEST(FailedAllocation, LeavesATaskThatCanBeFinished)
{
    FailEachAllocation(
        1,
        [] {
            try {
                ITaskProgress* const task = Manager().CreateTask(kGroup, 2, L"task");
                task->BeginSubTask(1, 2);
                task->SetProgress(1, L"a step's name that needs an allocation of its own");
                task->Finish();
            } catch (const std::bad_alloc&) {
            }
        },
        [](bool) {
            if (CountElsewhere() > 0)
                Manager().FinishTask(kGroup, 2);
            EXPECT_EQ(CountElsewhere(), 0u);
        });
}

}   // namespace

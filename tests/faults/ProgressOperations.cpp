// Tasks and events. The text of a task that could not be made is nobody's, and no lock stays.
#include "HeapOperation.h"
#include "ITaskProgressMgr.h"
#include "siblings/TvlUtils/EventBase.h"

#include <gtest/gtest.h>

namespace {
using namespace TvlUtl;

constexpr unsigned long long kGroup = 11;
constexpr int kType = 2;
constexpr const wchar_t* kReason = L"a reason that is longer than a few words";
constexpr const wchar_t* kName = L"a name that needs an allocation of its own";

ITaskProgressMgr& Manager() { return ITaskProgressMgr::GetInst(); }

/// What is left of a run is finished before the next.
struct Tasks {
    Tasks() { Manager(); }
    ~Tasks() { End(); }
    void End()
    {
        if (task)
            task->Finish();
        task = nullptr;
        EXPECT_EQ(Manager().GetTaskCount(kGroup, eTaskAnyType, eTaskStateAny), 0u);
    }

    ITaskProgress* task = nullptr;
    TvlString text;
    int calls = 0;
    TvlUtils::EventBase event;
    std::vector<TvlUtils::Subscription> subscriptions;
};

struct RunningTask : Tasks {
    RunningTask() { task = Manager().CreateTask(kGroup, kType, kName); }

    /// The task is whole and listed.
    void Check()
    {
        EXPECT_EQ(Manager().GetTaskCount(kGroup, kType, eTaskStateAny), 1u);
        EXPECT_EQ(task->GetDisplayName(), kName);
        EXPECT_GE(task->GetProgress(), 0.0);
        EXPECT_LE(task->GetProgress(), 1.0);
    }
    bool isDone = false;
};

struct FailedTask : RunningTask {
    FailedTask() { task->SetError(kReason); }
};
}   // namespace

HeapOperations ProgressOperations()
{
    return {
        Row<Tasks>(
            "CreateTask", [](Tasks& tasks) { tasks.task = Manager().CreateTask(kGroup, kType, kName); },
            [](Tasks& tasks, const HeapRun& outcome) {
                EXPECT_TRUE(tasks.task || outcome.hasThrown);
                tasks.End();
            }),
        Row<Tasks>(
            "CreateDetachedTask", [](Tasks& tasks) { tasks.task = Manager().CreateDetachedTask(kName); },
            [](Tasks& tasks, const HeapRun& outcome) {
                EXPECT_TRUE(tasks.task || outcome.hasThrown);
                tasks.End();
            }),
        Row<RunningTask>(
            "BeginSubTask",
            [](RunningTask& running) {
                for (int depth = 0; depth < 20; ++depth)
                    running.task->BeginSubTask(1, 2);
                running.task->SetProgress(1, L"a step's name that needs an allocation of its own");
                for (int depth = 0; depth < 20; ++depth)
                    running.task->EndSubTask();
                running.isDone = true;
            },
            [](RunningTask& running, const HeapRun& outcome) {
                running.Check();
                EXPECT_TRUE(running.isDone || outcome.hasFailed);
                running.isDone = false;
            }),
        Row<RunningTask>(
            "SetError", [](RunningTask& running) { running.task->SetError(kReason); },
            [](RunningTask& running, const HeapRun& outcome) {
                running.Check();
                EXPECT_TRUE(running.task->HasError() || outcome.hasFailed);
                const TvlString text = Manager().GetTaskErrorText(kGroup, kType);
                EXPECT_TRUE(text == kReason || (text.IsEmpty() && outcome.hasFailed)) << text.c_str();
            }),
        Row<FailedTask>(
            "GetTaskErrorText", [](FailedTask& failed) { failed.text = Manager().GetTaskErrorText(kGroup, kType); },
            [](FailedTask& failed, const HeapRun& outcome) {
                failed.Check();
                EXPECT_TRUE(failed.text == kReason || outcome.hasFailed) << failed.text.c_str();
                failed.text = L"";
            }),
        Row<Tasks>(
            "Subscribe",
            [](Tasks& tasks) {
                for (int i = 0; i < 10; ++i)
                    tasks.subscriptions.push_back(tasks.event.Subscribe([&tasks](void*) { ++tasks.calls; }));
            },
            [](Tasks& tasks, const HeapRun& outcome) {
                tasks.calls = 0;
                tasks.event.Raise(nullptr);
                EXPECT_TRUE(tasks.calls == 10 || outcome.hasFailed) << tasks.calls;
                EXPECT_EQ(static_cast<std::size_t>(tasks.calls), tasks.subscriptions.size())
                    << "who has no subscription is not called";
                tasks.subscriptions.clear();
            }),
    };
}

// The manager: groups, counts, events, ends of tasks.
#include "EndOfTask.h"
#include "siblings/TvlComponent/Application.h"

#include <gmock/gmock.h>
#include <stdexcept>
#include <thread>

namespace {
using namespace TvlUtl;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr unsigned long long kGroup = 5;

ITaskProgressMgr& Manager() { return ITaskProgressMgr::GetInst(); }

TEST(Manager, PutsMainTasksInGroupZero)
{
    const OwnedTask task = MakeTask(7, eTaskMain);
    EXPECT_EQ(task->GetGroupId(), 0u);
    EXPECT_EQ(Manager().GetTaskCount(7, eTaskAnyType, 0), 0u);
    EXPECT_EQ(Manager().GetDefaultGroupTaskCount(eTaskMain, 0), 1u);
}

TEST(Manager, CountsEndedTasksAsDoneAsLongAsTheGroupHasTasks)
{
    EXPECT_EQ(Manager().GetGroupProgress(kGroup, 1), 0.0);
    OwnedTask first = MakeTask(kGroup, 1);
    OwnedTask second = MakeTask(kGroup, 1);
    second->SetProgress(30, nullptr);
    EXPECT_DOUBLE_EQ(Manager().GetGroupProgress(kGroup, 1), 0.15);
    first.reset();
    EXPECT_DOUBLE_EQ(Manager().GetGroupProgress(kGroup, 1), (1.0 + 0.3) / 2);
    EXPECT_DOUBLE_EQ(Manager().GetGroupProgress(kGroup, eTaskAnyType), (1.0 + 0.3) / 2);
    EXPECT_DOUBLE_EQ(Manager().GetGroupProgress(kGroup, 2), 1.0) << "the ended one is of every type";
    second.reset();
    EXPECT_EQ(Manager().GetGroupProgress(kGroup, 1), 0.0);
    const OwnedTask third = MakeTask(kGroup, 1);
    EXPECT_EQ(Manager().GetGroupProgress(kGroup, 1), 0.0) << "the group began anew";
}

TEST(Manager, CountsByState)
{
    struct Row {
        int state;
        unsigned long long count;
    };
    constexpr Row kRows[] = {{0, 4}, {1, 2}, {2, 2}, {3, 1}, {4, 3}, {5, 2}, {6, 2}, {7, 4}, {100, 4}};
    const OwnedTask sound = MakeTask(kGroup, 2);
    const OwnedTask cancelled = MakeTask(kGroup, 2);
    const OwnedTask failed = MakeTask(kGroup, 2);
    const OwnedTask both = MakeTask(kGroup, 2);
    const OwnedTask otherType = MakeTask(kGroup, 3);
    cancelled->Cancel();
    failed->SetError(L"broken");
    both->Cancel();
    both->SetError(L"broken");
    for (const auto& [state, count] : kRows) {
        EXPECT_EQ(Manager().GetTaskCount(kGroup, 2, state), count) << state;
        EXPECT_EQ(Manager().GetTaskCount(kGroup, eTaskAnyType, state), 5u) << state;
        EXPECT_EQ(Manager().GetTaskCount(0, 2, state), count) << state;
    }
}

TEST(Manager, SumsUpAllGroupsUnlessGroupZeroExists)
{
    const OwnedTask a = MakeTask(kGroup, 2);
    const OwnedTask b = MakeTask(kGroup + 1, 2);
    EXPECT_EQ(Manager().GetTaskCount(0, 2, 0), 2u);
    EXPECT_EQ(Manager().GetTaskCount(0, eTaskAnyType, 0), 2u);
    OwnedTask zero = MakeTask(0, 2);
    EXPECT_EQ(Manager().GetTaskCount(0, eTaskAnyType, 0), 0u);
    EXPECT_EQ(Manager().GetTaskCount(0, 2, 0), 0u);
    EXPECT_EQ(Manager().GetDefaultGroupTaskCount(eTaskAnyType, 0), 1u);
    EXPECT_EQ(Manager().GetDefaultGroupTaskCount(3, 0), 0u);
    zero.reset();
    EXPECT_EQ(Manager().GetTaskCount(0, 2, 0), 2u);
    // Looking for failed tasks makes the group, and an empty one counts as well.
    Manager().ClearFailedTasks(0, 2);
    EXPECT_EQ(Manager().GetTaskCount(0, 2, 0), 0u);
    MakeTask(0, 2);   // goes with its group
    EXPECT_EQ(Manager().GetTaskCount(0, 2, 0), 2u);
}

TEST(Manager, CancelsByTypeAndGroup)
{
    const OwnedTask a = MakeTask(kGroup, 1);
    const OwnedTask b = MakeTask(kGroup, 2);
    const OwnedTask c = MakeTask(kGroup + 1, 2);
    Manager().CancelGroup(kGroup, 2);
    Manager().CancelGroup(kGroup + 2, eTaskAnyType);
    EXPECT_FALSE(a->IsCancelled());
    EXPECT_TRUE(b->IsCancelled());
    EXPECT_FALSE(c->IsCancelled());
    Manager().CancelAll(2);
    EXPECT_FALSE(a->IsCancelled());
    EXPECT_TRUE(c->IsCancelled());
    Manager().CancelAll(eTaskAnyType);
    EXPECT_TRUE(a->IsCancelled());
    EXPECT_EQ(Manager().GetTaskCount(kGroup, eTaskAnyType, 0), 2u) << "they stay until they are finished";
}

TEST(Manager, FinishesTheFirstTaskOfAType)
{
    auto* const first = Manager().CreateTask(kGroup, 2, L"first");
    auto* const second = Manager().CreateTask(kGroup, 3, L"second");
    second->SetError(L"second failed");
    EXPECT_EQ(Manager().GetTaskErrorText(kGroup, 3), L"second failed");
    EXPECT_EQ(Manager().GetTaskErrorText(kGroup, 2), L"");
    EXPECT_EQ(Manager().GetTaskErrorText(kGroup, 4), L"");
    EXPECT_EQ(Manager().GetTaskErrorText(kGroup + 9, 3), L"");
    EventLog log;
    log.Listen(first->GetFinishedEvent(), "first");
    log.Listen(second->GetFinishedEvent(), "second");
    Manager().FinishTask(kGroup, eTaskAnyType);
    EXPECT_THAT(log.Take(), IsEmpty());
    Manager().FinishTask(kGroup, 3);
    Manager().FinishTask(kGroup, 3);
    EXPECT_THAT(log.Take(), ElementsAre("second"));
    Manager().FinishTask(kGroup, 2);
    EXPECT_THAT(log.Take(), ElementsAre("first"));
    EXPECT_EQ(Manager().GetTaskCount(kGroup, eTaskAnyType, 0), 0u);
}

TEST(Manager, TakesATaskWithoutAGroupIntoGroup0)
{
    auto* const task = Manager().CreateTask(2, L"alone");
    EXPECT_EQ(task->GetGroupId(), 0u);
    EXPECT_EQ(Manager().GetDefaultGroupTaskCount(eTaskAnyType, 0), 1u);
    EventLog log;
    log.Listen(task->GetFinishedEvent(), "alone");
    Manager().FinishTask(0, 2);
    EXPECT_THAT(log.Take(), ElementsAre("alone"));
}

TEST(Manager, ClearsFailedTasksWhenTheNextOneComes)
{
    auto* const failed = Manager().CreateTask(kGroup, 1, L"failed");
    const OwnedTask otherType = MakeTask(kGroup, 2);
    otherType->SetError(L"broken");
    EventLog log;
    log.Listen(failed->GetFinishedEvent(), "finished");
    log.Listen(failed->GetProgressEvent(), "progress");
    log.Listen(Manager().GetTaskRemovedEvent(), "removed");
    log.Listen(Manager().GetTaskAddedEvent(), "added");
    failed->SetError(L"broken");
    const OwnedTask elsewhere = MakeTask(kGroup + 1, 1);
    EXPECT_EQ(Manager().GetTaskCount(kGroup, 1, 0), 1u);
    log.Take();
    const OwnedTask next = MakeTask(kGroup, 1);
    EXPECT_THAT(log.Take(), ElementsAre("removed", "added"));
    EXPECT_EQ(log.senders[1], failed);
    EXPECT_EQ(Manager().GetTaskCount(kGroup, 1, 0), 1u);
    EXPECT_TRUE(otherType->HasError());
    Manager().ClearFailedTasks(kGroup, eTaskAnyType);
    EXPECT_EQ(Manager().GetTaskCount(kGroup, 2, 0), 1u) << "clearing knows no type for all";
}

TEST(Manager, RaisesItsEventsByType)
{
    EventLog log;
    log.ListenToManager();
    for (const int type : {0, 1, 2}) {
        SCOPED_TRACE(type);
        OwnedTask task = MakeTask(kGroup, type);
        EXPECT_THAT(log.Take(), ElementsAre("added"));
        task->SetProgress(1, nullptr);
        EXPECT_THAT(log.Take(), ElementsAre("changed"));
        task->Cancel();
        EXPECT_THAT(log.Take(), ElementsAre(type == 1 ? "cancelled" : "changed"));
        task->SetError(L"broken");
        EXPECT_THAT(log.Take(), ElementsAre("error"));
        for (ITaskProgress* const sender : log.senders)
            EXPECT_EQ(sender, task.get());
        task.reset();
        EXPECT_THAT(log.Take(), ElementsAre("changed", "removed"));
        log.senders.clear();
    }
}

TEST(Manager, ShowsErrorsOfMainTasksAlone)
{
    struct Application : ITovelCmn_App {
        void ShowMessage(const wchar_t*) override { }
        void ShowError(const wchar_t* text) override { shown.push_back(text); }
        std::vector<std::wstring> shown;
    } application;
    TvlComponent::SetAppInterface(&application);
    MakeTask(0, eTaskMain)->SetError(L"the disk is full");
    MakeTask(0, 1)->SetError(L"nobody sees it");
    const OwnedTask detached(Manager().CreateDetachedTask(L"detached"));
    detached->SetError(L"neither this");
    TvlComponent::SetAppInterface(nullptr);
    EXPECT_THAT(application.shown, ElementsAre(L"the disk is full"));
    MakeTask(0, eTaskMain)->SetError(L"without an application");
}

TEST(Manager, LeavesDetachedTasksToTheirCreators)
{
    EventLog log;
    log.ListenToManager();
    OwnedTask task(Manager().CreateDetachedTask(L"detached"));
    EXPECT_EQ(task->GetTaskType(), eTaskMain);
    EXPECT_EQ(task->GetGroupId(), 0u);
    EXPECT_EQ(Manager().GetDefaultGroupTaskCount(eTaskAnyType, 0), 0u);
    task->SetProgress(10, nullptr);
    task->Cancel();
    Manager().FinishTask(0, eTaskMain);
    EXPECT_THAT(log.Take(), IsEmpty());
    log.Listen(task->GetFinishedEvent(), "finished");
    task.reset();
    EXPECT_THAT(log.Take(), ElementsAre("finished", "removed"));
}

TEST(Manager, IsReplacedForCallersAlone)
{
    ITaskProgressMgr& own = Manager();
    struct Pointer {
        void* words[8] = {};
    } other;
    auto* const substitute = reinterpret_cast<ITaskProgressMgr*>(&other);   // never called
    ITaskProgressMgr::SetInstanceForTests(substitute);
    EXPECT_EQ(&Manager(), substitute);
    ITaskProgressMgr::SetInstanceForTests(nullptr);
    EXPECT_EQ(&Manager(), &own);
}

TEST(Manager, HandlersEndOtherTasks)
{
    auto* other = Manager().CreateTask(kGroup, 2, L"other");
    auto* const own = Manager().CreateTask(kGroup, 3, L"own");
    const auto kept = own->GetProgressEvent().Subscribe([&](void*) {
        if (auto* const ended = std::exchange(other, nullptr))
            ended->Finish();
    });
    own->SetProgress(1, nullptr);
    EXPECT_EQ(Manager().GetTaskCount(kGroup, eTaskAnyType, 0), 1u);
    // From the end of a task, and by the manager's own events, too.
    auto* third = Manager().CreateTask(kGroup, 4, L"third");
    OwnedTask fourth;
    const auto removed = Manager().GetTaskRemovedEvent().Subscribe([&](void*) {
        if (auto* const ended = std::exchange(third, nullptr))
            ended->Finish();
        else
            fourth = MakeTask(kGroup, 5);
    });
    own->Finish();
    EXPECT_EQ(Manager().GetTaskCount(kGroup, eTaskAnyType, 0), 1u);
    EXPECT_EQ(Manager().GetTaskCount(kGroup, 5, 0), 1u);
}

// A listener of changes may end the very task that it is told of, when its owner is done with it.
TEST(Manager, ListenersEndTheTaskThatTheyAreToldOf)
{
    for (const int type : {0, 1, 2}) {
        auto* const task = Manager().CreateTask(kGroup, type, L"short");
        bool isDone = false;
        const auto kept = Manager().GetTaskChangedEvent().Subscribe([&](void* sender) {
            if (!std::exchange(isDone, true))
                static_cast<ITaskProgress*>(sender)->Finish();
        });
        int told = 0;
        const auto later = task->GetProgressEvent().Subscribe([&](void*) { ++told; });
        task->SetProgress(100, nullptr);
        EXPECT_EQ(told, 1) << "of the end, and no more of the report that led to it";
        EXPECT_EQ(Manager().GetTaskCount(kGroup, eTaskAnyType, 0), 0u);
        EXPECT_EQ(Manager().GetDefaultGroupTaskCount(eTaskAnyType, 0), 0u);
    }
}

TEST(Manager, TakesATaskBackWhenSomebodyThrowsAtIt)
{
    EventLog log;
    const OwnedTask before = MakeTask(kGroup, 2);
    log.Listen(Manager().GetTaskAddedEvent(), "added");
    log.Listen(Manager().GetTaskRemovedEvent(), "removed");
    auto kept = Manager().GetTaskAddedEvent().Subscribe([](void*) { throw std::runtime_error("refused"); });
    EXPECT_THROW(Manager().CreateTask(kGroup, 2, L"new"), std::runtime_error);
    EXPECT_THROW(Manager().CreateTask(kGroup + 1, 2, L"new"), std::runtime_error);
    EXPECT_THAT(log.Take(), ElementsAre("added", "removed", "added", "removed"));
    EXPECT_EQ(Manager().GetTaskCount(kGroup, 2, 0), 1u);
    EXPECT_EQ(Manager().GetGroupProgress(kGroup, 2), 0.0) << "it is not counted as done";
    kept.Unsubscribe();
    std::thread([] { MakeTask(kGroup + 1, 2); }).join();   // no lock is left behind
}

TEST(Manager, DestroysATaskEvenIfItsRemovalIsRefused)
{
    OwnedTask stays = MakeTask(kGroup, 2);
    const auto captured = std::make_shared<int>();
    auto* const task = Manager().CreateTask(kGroup, 3, L"new");
    task->GetFinishedEvent().Subscribe([captured](void*) {}).MakePermanent();
    auto kept = Manager().GetTaskRemovedEvent().Subscribe([](void*) { throw std::runtime_error("refused"); });
    EXPECT_THROW(task->Finish(), std::runtime_error);
    EXPECT_EQ(captured.use_count(), 1);
    kept.Unsubscribe();
    EXPECT_EQ(Manager().GetTaskCount(kGroup, eTaskAnyType, 0), 1u);
    std::thread([&] { stays.reset(); }).join();
}

// Of several failed tasks those that were not cleared yet stay when a handler throws.
TEST(Manager, GoesOnClearingAfterAHandlerThrew)
{
    for (int i = 0; i < 3; ++i)
        Manager().CreateTask(kGroup, 2, L"failed");
    auto kept = Manager().GetTaskChangedEvent().Subscribe([](void*) {});
    const auto count = [] { return Manager().GetTaskCount(kGroup, 2, 0); };
    EXPECT_EQ(count(), 3u);
    auto added = Manager().GetTaskAddedEvent().Subscribe(
        [](void* sender) { static_cast<ITaskProgress*>(sender)->SetError(L"at once"); });
    Manager().FinishTask(kGroup, 2);
    Manager().FinishTask(kGroup, 2);
    Manager().FinishTask(kGroup, 2);
    EXPECT_EQ(count(), 0u);
    std::vector<ITaskProgress*> tasks;
    added.Unsubscribe();
    for (int i = 0; i < 3; ++i)
        tasks.push_back(Manager().CreateTask(kGroup, 2, L"failed"));
    for (auto* const task : tasks)
        task->SetError(L"broken");
    bool throws = true;
    const auto removed = Manager().GetTaskRemovedEvent().Subscribe([&](void*) {
        if (std::exchange(throws, false))
            throw std::runtime_error("refused");
    });
    EXPECT_THROW(Manager().ClearFailedTasks(kGroup, 2), std::runtime_error);
    EXPECT_EQ(count(), 2u);
    Manager().ClearFailedTasks(kGroup, 2);
    EXPECT_EQ(count(), 0u);
}

}   // namespace

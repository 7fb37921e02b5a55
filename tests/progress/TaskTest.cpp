// One task: nested steps, cancellation, error, events.
#include "EndOfTask.h"
#include "TaskProgressProvider.h"
#include "VirtualSlot.h"

#include <gmock/gmock.h>
#include <limits>
#include <stdexcept>
#include <thread>

namespace {
using namespace TvlUtl;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr unsigned long long kGroup = 40;
constexpr int kType = 3;

TEST(Task, StartsWithNothingDone)
{
    const OwnedTask task = MakeTask(kGroup, kType, L"Saving");
    EXPECT_EQ(task->GetProgress(), 0.0);
    EXPECT_EQ(task->GetStepName(), L"");
    EXPECT_EQ(task->GetDisplayName(), L"Saving");
    EXPECT_EQ(task->GetTaskType(), kType);
    EXPECT_EQ(task->GetGroupId(), kGroup);
    EXPECT_FALSE(task->IsCancelled());
    EXPECT_FALSE(task->HasError());
    EXPECT_EQ(task->GetErrorText(), L"");
}

TEST(Task, CountsNestedSteps)
{
    const OwnedTask task = MakeTask(kGroup, kType);
    const auto reads = [&](double progress) { EXPECT_DOUBLE_EQ(task->GetProgress(), progress); };
    task->SetProgress(50, nullptr);
    reads(0.5);
    task->SetProgress(250, nullptr);
    reads(1.0);
    task->SetProgress(20, nullptr);
    task->BeginSubTask(40, 10);
    task->SetProgress(5, nullptr);
    reads(0.4);
    task->AddProgress(2);
    reads(0.48);
    task->AddProgress(100);
    reads(0.6);
    task->EndSubTask();
    reads(0.6);
    task->EndSubTask();
    reads(0.6);
}

// A level of no units adds nothing and hides nothing; it passes on what lies in it with the weight of the inner level.
TEST(Task, PassesThroughLevelsWithoutUnits)
{
    const OwnedTask task = MakeTask(kGroup, kType);
    task->SetProgress(10, nullptr);
    task->BeginSubTask(40, 0);
    EXPECT_DOUBLE_EQ(task->GetProgress(), 0.1);
    task->SetProgress(7, nullptr);
    EXPECT_DOUBLE_EQ(task->GetProgress(), 0.1);
    task->BeginSubTask(20, 4);
    task->SetProgress(2, nullptr);
    EXPECT_DOUBLE_EQ(task->GetProgress(), 0.2);
    task->EndSubTask();
    task->EndSubTask();
    EXPECT_DOUBLE_EQ(task->GetProgress(), 0.5);
}

TEST(Task, TakesTheLargestNumbers)
{
    constexpr auto kMost = std::numeric_limits<unsigned long long>::max();
    const OwnedTask task = MakeTask(kGroup, kType);
    task->BeginSubTask(100, kMost);
    task->SetProgress(kMost, nullptr);
    EXPECT_EQ(task->GetProgress(), 1.0);
    task->SetProgress(kMost / 2, nullptr);
    EXPECT_DOUBLE_EQ(task->GetProgress(), 0.5);
}

TEST(Task, KeepsTheTextOfEachStep)
{
    const OwnedTask task = MakeTask(kGroup, kType);
    task->SetProgress(1, L"outer");
    task->SetProgress(2, nullptr);
    EXPECT_EQ(task->GetStepName(), L"outer");
    task->BeginSubTask(1, 1);
    EXPECT_EQ(task->GetStepName(), L"");
    task->SetProgress(0, L"inner");
    EXPECT_EQ(task->GetStepName(), L"inner");
    task->EndSubTask();
    EXPECT_EQ(task->GetStepName(), L"outer");
    task->SetProgress(2, L"");
    EXPECT_EQ(task->GetStepName(), L"");
}

TEST(Task, RaisesItsEventsWithItselfAsSender)
{
    EventLog log;
    OwnedTask task = MakeTask(kGroup, kType);
    log.Listen(task->GetProgressEvent(), "progress");
    log.Listen(task->GetFinishedEvent(), "finished");
    log.Listen(task->GetCancelledEvent(), "cancelled");
    log.Listen(task->GetErrorEvent(), "error");
    task->SetProgress(1, nullptr);
    task->AddProgress(1);
    task->BeginSubTask(1, 1);
    task->EndSubTask();
    EXPECT_THAT(log.Take(), ElementsAre("progress", "progress", "progress", "progress"));
    task->EndSubTask();
    EXPECT_THAT(log.Take(), ElementsAre("progress")) << "the root stays, and the event is raised";
    task->Cancel();
    EXPECT_TRUE(task->IsCancelled());
    task->SetError(L"disk full");
    EXPECT_TRUE(task->HasError());
    EXPECT_EQ(task->GetErrorText(), L"disk full");
    EXPECT_THAT(log.Take(), ElementsAre("cancelled", "error"));
    for (ITaskProgress* const sender : log.senders)
        EXPECT_EQ(sender, task.get());
    task.reset();
    EXPECT_THAT(log.Take(), ElementsAre("progress", "finished"));
}

TEST(Task, HandlersMayAskAndReport)
{
    const OwnedTask task = MakeTask(kGroup, kType);
    double seen = 0.0;
    const auto kept = task->GetProgressEvent().Subscribe([&](void* sender) {
        auto* const told = static_cast<ITaskProgress*>(sender);
        seen = told->GetProgress();
        if (seen < 0.5)
            told->AddProgress(10);
        // From another thread as well: no lock of the task is held.
        std::thread([&] { seen = told->GetProgress(); }).join();
    });
    task->SetProgress(15, nullptr);
    EXPECT_DOUBLE_EQ(seen, 0.55);
}

TEST(Task, ReportsInFullBeforeAHandlerThrows)
{
    OwnedTask task = MakeTask(kGroup, kType);
    auto kept = task->GetProgressEvent().Subscribe([](void*) { throw std::runtime_error("no"); });
    EXPECT_THROW(task->SetProgress(30, nullptr), std::runtime_error);
    EXPECT_DOUBLE_EQ(task->GetProgress(), 0.3);
    EXPECT_THROW(task->Finish(), std::runtime_error);
    EXPECT_DOUBLE_EQ(task->GetProgress(), 0.3) << "it stays";
    std::thread([&] { EXPECT_FALSE(task->IsCancelled()); }).join();
    kept.Unsubscribe();
    task.reset();
    EXPECT_EQ(ITaskProgressMgr::GetInst().GetTaskCount(kGroup, eTaskAnyType, 0), 0u);
}

TEST(Task, DummyTakesEverythingAndKeepsNothing)
{
    ITaskProgress* const dummy = ITaskProgressMgr::GetInst().GetDummyTask();
    EXPECT_EQ(dummy, ITaskProgressMgr::GetInst().GetDummyTask());
    EventLog log;
    EXPECT_EQ(&dummy->GetProgressEvent(), &dummy->GetFinishedEvent());
    EXPECT_EQ(&dummy->GetProgressEvent(), &dummy->GetCancelledEvent());
    EXPECT_EQ(&dummy->GetProgressEvent(), &dummy->GetErrorEvent());
    log.Listen(dummy->GetProgressEvent(), "any");
    dummy->BeginSubTask(1, 2);
    dummy->SetProgress(1, L"step");
    dummy->AddProgress(1);
    dummy->EndSubTask();
    dummy->Cancel();
    dummy->SetError(L"error");
    dummy->Finish();
    EXPECT_THAT(log.entries, IsEmpty());
    EXPECT_FALSE(dummy->IsCancelled());
    EXPECT_FALSE(dummy->HasError());
    EXPECT_EQ(dummy->GetErrorText(), L"");
    EXPECT_EQ(dummy->GetStepName(), L"");
    EXPECT_EQ(dummy->GetDisplayName(), L"");
    EXPECT_EQ(dummy->GetTaskType(), 0);
    EXPECT_EQ(dummy->GetGroupId(), 0u);
    EXPECT_EQ(dummy->GetProgress(), 0.0);
}

TEST(TaskProgressProvider, CopiesAndMovesThePointer)
{
    ITaskProgress* const task = ITaskProgressMgr::GetInst().GetDummyTask();
    TaskProgressProvider first;
    EXPECT_EQ(first.GetTaskProgress(), nullptr);
    first.SetTaskProgress(task);
    TaskProgressProvider copy(first);
    TaskProgressProvider moved(std::move(first));
    TaskProgressProvider assigned;
    assigned = copy;
    TaskProgressProvider moveAssigned;
    moveAssigned = std::move(copy);
    for (const TaskProgressProvider* const provider : {&moved, &assigned, &moveAssigned})
        EXPECT_EQ(provider->GetTaskProgress(), task);
}

TEST(Slots, OfATaskStandInOrder)
{
    constexpr std::size_t kDestructors = 2;   // slots of the destructor
    const std::size_t slots[] = {Slot(&ITaskProgress::Finish), Slot(&ITaskProgress::BeginSubTask),
        Slot(&ITaskProgress::EndSubTask), Slot(&ITaskProgress::SetProgress), Slot(&ITaskProgress::AddProgress),
        Slot(&ITaskProgress::Cancel), Slot(&ITaskProgress::IsCancelled), Slot(&ITaskProgress::SetError),
        Slot(&ITaskProgress::HasError), Slot(&ITaskProgress::GetErrorText), Slot(&ITaskProgress::GetTaskType),
        Slot(&ITaskProgress::GetProgress), Slot(&ITaskProgress::GetStepName), Slot(&ITaskProgress::GetDisplayName),
        Slot(&ITaskProgress::GetGroupId), Slot(&ITaskProgress::GetProgressEvent),
        Slot(&ITaskProgress::GetFinishedEvent), Slot(&ITaskProgress::GetCancelledEvent),
        Slot(&ITaskProgress::GetErrorEvent)};
    for (std::size_t i = 0; i < std::size(slots); ++i)
        EXPECT_EQ(slots[i], kDestructors + i);
    EXPECT_EQ(Slot(&TaskProgressProvider::GetTaskProgress), 0u);
    EXPECT_EQ(Slot(&TaskProgressProvider::SetTaskProgress), 1u);
    EXPECT_EQ(sizeof(TaskProgressProvider), 16u);
}

TEST(Slots, OfTheManagerStandInOrder)
{
    using Manager = ITaskProgressMgr;
    using Create = ITaskProgress* (Manager::*)(int, const wchar_t*);
    using CreateInGroup = ITaskProgress* (Manager::*)(unsigned long long, int, const wchar_t*);
    const std::size_t slots[] = {Slot(static_cast<Create>(&Manager::CreateTask)),
        Slot(static_cast<CreateInGroup>(&Manager::CreateTask)), Slot(&Manager::GetDummyTask),
        Slot(&Manager::CreateDetachedTask), Slot(&Manager::GetGroupProgress), Slot(&Manager::GetTaskCount),
        Slot(&Manager::GetDefaultGroupTaskCount), Slot(&Manager::CancelAll), Slot(&Manager::CancelGroup),
        Slot(&Manager::FinishTask), Slot(&Manager::ClearFailedTasks), Slot(&Manager::GetTaskErrorText),
        Slot(&Manager::GetTaskAddedEvent), Slot(&Manager::GetTaskRemovedEvent), Slot(&Manager::GetTaskErrorEvent),
        Slot(&Manager::GetTaskCancelledEvent), Slot(&Manager::GetTaskChangedEvent)};
    for (std::size_t i = 0; i < std::size(slots); ++i)
        EXPECT_EQ(slots[i], i);
}

}   // namespace

#include "TaskProgressMgr.h"

#include "DummyTaskProgress.h"
#include "TaskProgressMgrDS.h"
#include "siblings/TvlComponent/Application.h"

#include <algorithm>
#include <atomic>
#include <memory>

namespace TvlUtl {

using TvlUtils::WriteLock;

namespace {
std::atomic<ITaskProgressMgr*> substitute = nullptr;

void ShowErrors(TaskProgress& task)
{
    const auto show = [](void* sender) {
        TvlComponent::MessageMgr::ShowError(static_cast<ITaskProgress*>(sender)->GetErrorText().c_str());
    };
    task.GetErrorEvent().Subscribe(show).MakePermanent();
}
}   // namespace

ITaskProgressMgr& ITaskProgressMgr::GetInst()
{
    ITaskProgressMgr* const other = substitute.load(std::memory_order_acquire);
    return other ? *other : TaskProgressMgr::GetInstance();
}

void ITaskProgressMgr::SetInstanceForTests(ITaskProgressMgr* instance)
{
    substitute.store(instance, std::memory_order_release);
}

ITaskProgress* TaskProgressMgr::CreateTask(int type, const wchar_t* displayName)
{
    return CreateTask(0, type, displayName);
}

ITaskProgress* TaskProgressMgr::CreateTask(unsigned long long group, int type, const wchar_t* displayName)
{
    if (type == eTaskMain)
        group = 0;
    auto made = std::make_unique<TaskProgress>(group, type, displayName);
    if (type == eTaskMain)
        ShowErrors(*made);
    try {
        ClearFailedTasks(group, type);
        List(group, *made);
    } catch (...) {
        DropEmptyGroup(group);
        throw;
    }
    TaskProgress& task = *made.release();
    Tell(task);
    return &task;
}

ITaskProgress* TaskProgressMgr::GetDummyTask()
{
    static DummyTaskProgress dummy;
    return &dummy;
}

ITaskProgress* TaskProgressMgr::CreateDetachedTask(const wchar_t* displayName)
{
    auto task = std::make_unique<TaskProgress>(0, eTaskMain, displayName);
    const WriteLock hold(m_lock);
    m_detached.insert(task.get());
    return task.release();
}

/// Lists a new task, claimed for the thread that makes it, and passes its events on.
void TaskProgressMgr::List(unsigned long long group, TaskProgress& task)
{
    const WriteLock hold(m_lock);
    m_claimed.reserve(m_claimed.size() + 1);
    ForwardEvents(task);
    m_groups[group].tasks.push_back(&task);
    m_claimed.push_back(&task);
}

/// Handlers know the task's type from the start: a listener may end the task while it is told.
void TaskProgressMgr::ForwardEvents(TaskProgress& task)
{
    const bool isMain = task.GetTaskType() == eTaskMain;
    const auto tellChange = [isMain](void* sender) {
        GetInstance().m_changedEvent.Raise(sender);
        if (isMain)
            NotifyTaskDataChanged(kProgressProperty);
    };
    const auto tellCancellation = [](void* sender) { GetInstance().m_cancelledEvent.Raise(sender); };
    task.GetProgressEvent().Subscribe(tellChange).MakePermanent();
    if (task.GetTaskType() == eTaskCancellationReported)
        task.GetCancelledEvent().Subscribe(tellCancellation).MakePermanent();
    else
        task.GetCancelledEvent().Subscribe(tellChange).MakePermanent();
    task.GetErrorEvent().Subscribe([](void* sender) { GetInstance().m_errorEvent.Raise(sender); }).MakePermanent();
}

/// Tells of a new task; when somebody refuses to hear of it, it goes again.
void TaskProgressMgr::Tell(TaskProgress& task)
{
    ITaskProgress* const sender = &task;
    try {
        if (task.GetTaskType() == eTaskMain)
            NotifyTaskDataChanged(kInProgressProperty);
        m_addedEvent.Raise(sender);
    } catch (...) {
        try {
            Remove(task.GetGroupId(), sender, false);
        } catch (...) {   // the first refusal is the one to know of
        }
        throw;
    }
    const WriteLock hold(m_lock);
    EndClaim(sender);
}

void TaskProgressMgr::Finish(TaskProgress& task)
{
    {
        const WriteLock hold(m_lock);
        if (!TryClaim(task.GetGroupId(), &task))
            return;
    }
    FinishClaimed(task);
}

void TaskProgressMgr::FinishTask(unsigned long long group, int type)
{
    TaskProgress* task = nullptr;
    {
        const WriteLock hold(m_lock);
        if (TaskGroup* const found = FindGroup(group))
            for (ITaskProgress* const listed : found->tasks)
                if (listed->GetTaskType() == type && !IsClaimed(listed)) {
                    m_claimed.push_back(listed);
                    task = static_cast<TaskProgress*>(listed);   // none but those of List are in a group
                    break;
                }
    }
    if (task)
        FinishClaimed(*task);
}

void TaskProgressMgr::FinishClaimed(TaskProgress& task)
{
    try {
        task.RaiseEnd();
    } catch (...) {
        const WriteLock hold(m_lock);
        EndClaim(&task);
        throw;
    }
    Remove(task.GetGroupId(), &task, true);
}

void TaskProgressMgr::ClearFailedTasks(unsigned long long group, int type)
{
    std::vector<ITaskProgress*> failed;
    {
        const WriteLock hold(m_lock);
        for (ITaskProgress* const task : m_groups[group].tasks)
            if (task->GetTaskType() == type && task->HasError() && !IsClaimed(task))
                failed.push_back(task);
        m_claimed.insert(m_claimed.end(), failed.begin(), failed.end());
    }
    auto next = failed.begin();
    try {
        while (next != failed.end())
            Remove(group, *next++, true);
    } catch (...) {
        const WriteLock hold(m_lock);
        std::for_each(next, failed.end(), [this](ITaskProgress* task) { EndClaim(task); });
        throw;
    }
}

/// Ends a task that this thread has claimed.
void TaskProgressMgr::Remove(unsigned long long group, ITaskProgress* task, bool hasFinished)
{
    if (!Unlist(group, task, hasFinished))
        return;
    const std::unique_ptr<ITaskProgress> owned(task);
    m_removedEvent.Raise(task);
    if (task->GetTaskType() == eTaskMain)
        NotifyTaskDataChanged(kInProgressProperty);
}

bool TaskProgressMgr::Unlist(unsigned long long group, ITaskProgress* task, bool hasFinished)
{
    const WriteLock hold(m_lock);
    EndClaim(task);
    const auto at = m_groups.find(group);
    if (at == m_groups.end() || std::erase(at->second.tasks, task) == 0)
        return m_detached.erase(task) > 0;
    if (at->second.tasks.empty())
        m_groups.erase(at);
    else if (hasFinished)
        ++at->second.finishedCount;
    return true;
}

void TaskProgressMgr::DropEmptyGroup(unsigned long long group)
{
    const WriteLock hold(m_lock);
    if (const TaskGroup* const found = FindGroup(group); found && found->tasks.empty())
        m_groups.erase(group);
}

/// Whether the task is one of this manager's that no thread is making or ending; it is this thread's then.
bool TaskProgressMgr::TryClaim(unsigned long long group, ITaskProgress* task)
{
    const TaskGroup* const found = FindGroup(group);
    const bool isListed = found && std::find(found->tasks.begin(), found->tasks.end(), task) != found->tasks.end();
    if ((!isListed && !m_detached.contains(task)) || IsClaimed(task))
        return false;
    m_claimed.push_back(task);
    return true;
}

void TaskProgressMgr::EndClaim(const ITaskProgress* task) noexcept { std::erase(m_claimed, task); }

bool TaskProgressMgr::IsClaimed(const ITaskProgress* task) const
{
    return std::find(m_claimed.begin(), m_claimed.end(), task) != m_claimed.end();
}

TaskGroup* TaskProgressMgr::FindGroup(unsigned long long group)
{
    const auto found = m_groups.find(group);
    return found == m_groups.end() ? nullptr : &found->second;
}

}   // namespace TvlUtl

// What the manager tells of its tasks, and cancelling them.
#include "TaskProgressMgr.h"

namespace TvlUtl {

using TvlUtils::ReadLock;

namespace {
bool Matches(ITaskProgress& task, int type) { return type == eTaskAnyType || task.GetTaskType() == type; }

bool IsInState(ITaskProgress& task, int state)
{
    switch (state) {
    case eTaskStateCancelled:
        return task.IsCancelled();
    case eTaskStateFailed:
        return task.HasError();
    case eTaskStateSound:
        return !task.IsCancelled() && !task.HasError();
    case eTaskStateCancelledOrFailed:
        return task.IsCancelled() || task.HasError();
    case eTaskStateNotFailed:
        return !task.HasError();
    case eTaskStateNotCancelled:
        return !task.IsCancelled();
    default:
        return true;
    }
}

unsigned long long Count(const TaskGroup* group, int type, int state)
{
    if (!group)
        return 0;
    if (type == eTaskAnyType)
        return group->tasks.size();
    unsigned long long count = 0;
    for (ITaskProgress* const task : group->tasks)
        if (task->GetTaskType() == type && IsInState(*task, state))
            ++count;
    return count;
}

void Cancel(const TaskGroup& group, int type)
{
    for (ITaskProgress* const task : group.tasks)
        if (Matches(*task, type))
            task->Cancel();
}
}   // namespace

double TaskProgressMgr::GetGroupProgress(unsigned long long group, int type)
{
    const ReadLock hold(m_lock);
    const TaskGroup* const found = FindGroup(group);
    if (!found)
        return 0.0;
    unsigned long long count = found->finishedCount;
    double sum = 0.0;
    for (ITaskProgress* const task : found->tasks)
        if (Matches(*task, type)) {
            ++count;
            sum += task->GetProgress();
        }
    return count == 0 ? 0.0 : (sum + static_cast<double>(found->finishedCount)) / static_cast<double>(count);
}

unsigned long long TaskProgressMgr::GetTaskCount(unsigned long long group, int type, int state)
{
    const ReadLock hold(m_lock);
    if (group != 0)
        return Count(FindGroup(group), type, state);
    unsigned long long count = 0;
    for (const auto& [id, tasks] : m_groups) {
        if (id == 0)
            break;   // it stands first: callers rely on getting 0 then
        count += Count(&tasks, type, state);
    }
    return count;
}

unsigned long long TaskProgressMgr::GetDefaultGroupTaskCount(int type, int state)
{
    const ReadLock hold(m_lock);
    return Count(FindGroup(0), type, state);
}

void TaskProgressMgr::CancelAll(int type)
{
    const ReadLock hold(m_lock);
    for (const auto& [id, group] : m_groups)
        Cancel(group, type);
}

void TaskProgressMgr::CancelGroup(unsigned long long group, int type)
{
    const ReadLock hold(m_lock);
    if (const TaskGroup* const found = FindGroup(group))
        Cancel(*found, type);
}

TvlStringT<wchar_t> TaskProgressMgr::GetTaskErrorText(unsigned long long group, int type)
{
    const ReadLock hold(m_lock);
    if (const TaskGroup* const found = FindGroup(group))
        for (ITaskProgress* const task : found->tasks)
            if (task->GetTaskType() == type)
                return task->GetErrorText();
    return {};
}

}   // namespace TvlUtl

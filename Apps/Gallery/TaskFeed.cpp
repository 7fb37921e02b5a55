#include "TaskFeed.h"

#include <algorithm>
#include <utility>

using TvlUtl::ITaskProgress;

TaskFeed::TaskFeed(HWND window, UINT message) : m_window(window), m_message(message)
{
    auto& manager = TvlUtl::ITaskProgressMgr::GetInst();
    for (TvlUtils::EventBase* const event : {&manager.GetTaskAddedEvent(), &manager.GetTaskChangedEvent(),
             &manager.GetTaskErrorEvent(), &manager.GetTaskCancelledEvent()})
        m_subscriptions.push_back(event->Subscribe([this](void* sender) { Note(sender); }));
    m_subscriptions.push_back(manager.GetTaskRemovedEvent().Subscribe([this](void* sender) { Remove(sender); }));
}

void TaskFeed::Note(void* sender)
{
    auto& task = *static_cast<ITaskProgress*>(sender);
    // Asked before the lock: the task has locks of its own.
    TaskState state{sender, task.GetGroupId(), task.GetDisplayName().Std(), task.GetStepName().Std(),
        task.GetProgress(), task.IsCancelled()};
    const std::lock_guard hold(m_mutex);
    const auto known =
        std::find_if(m_tasks.begin(), m_tasks.end(), [&](const TaskState& other) { return other.task == state.task; });
    if (known == m_tasks.end())
        m_tasks.push_back(std::move(state));
    else
        *known = std::move(state);
    Post();
}

void TaskFeed::Remove(void* sender)
{
    auto& task = *static_cast<ITaskProgress*>(sender);
    std::wstring end = task.GetDisplayName().Std();
    if (task.HasError())
        end += L": failed, " + task.GetErrorText().Std();
    else
        end += task.IsCancelled() ? L": cancelled" : L": done";
    const std::lock_guard hold(m_mutex);
    std::erase_if(m_tasks, [sender](const TaskState& state) { return state.task == sender; });
    m_lastEnd = std::move(end);
    Post();
}

void TaskFeed::Post()
{
    if (!m_isPosted)
        m_isPosted = PostMessageW(m_window, m_message, 0, 0) != FALSE;
}

std::vector<TaskState> TaskFeed::Take()
{
    const std::lock_guard hold(m_mutex);
    m_isPosted = false;
    return m_tasks;
}

std::wstring TaskFeed::LastEnd()
{
    const std::lock_guard hold(m_mutex);
    return m_lastEnd;
}

// What the manager tells of its tasks, brought to a window's thread.
#pragma once

#include "ITaskProgressMgr.h"

#include <mutex>
#include <string>
#include <vector>
#include <windows.h>

/// A running task as it was last told.
struct TaskState {
    const void* task;   // names it, and is not to be followed: it may be gone
    unsigned long long group;
    std::wstring name;
    std::wstring step;
    double progress;   // 0.0 to 1.0
    bool isCancelled;
};

/// Listens to the tasks of the process, whose events come on the threads that do the work, and posts a message to a window
/// when there is something new. However many events there are, one message waits at a time.
class TaskFeed {
public:
    TaskFeed(HWND window, UINT message);
    TaskFeed(const TaskFeed&) = delete;
    TaskFeed& operator=(const TaskFeed&) = delete;
    /// The tasks must have ended: a handler may run still.
    ~TaskFeed() = default;

    /// The tasks in the order of their start. Further events post a message again.
    std::vector<TaskState> Take();
    /// How the task ended that went last, such as "Short: done"; empty before.
    std::wstring LastEnd();

private:
    void Note(void* sender);
    void Remove(void* sender);
    void Post();

    HWND m_window;
    UINT m_message;
    std::mutex m_mutex;
    std::vector<TaskState> m_tasks;
    std::wstring m_lastEnd;
    bool m_isPosted = false;
    std::vector<TvlUtils::Subscription> m_subscriptions;
};

// The register of running tasks.
#pragma once

#include "ITaskProgressMgr.h"
#include "TaskProgress.h"
#include "siblings/TvlUtils/Singleton.h"

#include <map>
#include <unordered_set>
#include <vector>

namespace TvlUtl {

/// Tasks that belong together.
struct TaskGroup {
    std::vector<ITaskProgress*> tasks;      // in the order of their creation
    unsigned long long finishedCount = 0;   // tasks of the group that have ended; forgotten with the last task
};

/// The manager of the process. Tasks and their handlers come back to it by GetInstance, so that none of them is left with
/// a manager that has gone. Field order is part of the interface.
class TaskProgressMgr final : public ITaskProgressMgr, public TvlUtils::Singleton<TaskProgressMgr, 0> {
public:
    ITaskProgress* CreateTask(int type, const wchar_t* displayName) override;
    ITaskProgress* CreateTask(unsigned long long group, int type, const wchar_t* displayName) override;
    ITaskProgress* GetDummyTask() override;
    ITaskProgress* CreateDetachedTask(const wchar_t* displayName) override;
    double GetGroupProgress(unsigned long long group, int type) override;
    unsigned long long GetTaskCount(unsigned long long group, int type, int state) override;
    unsigned long long GetDefaultGroupTaskCount(int type, int state) override;
    void CancelAll(int type) override;
    void CancelGroup(unsigned long long group, int type) override;
    void FinishTask(unsigned long long group, int type) override;
    void ClearFailedTasks(unsigned long long group, int type) override;
    TvlStringT<wchar_t> GetTaskErrorText(unsigned long long group, int type) override;
    TvlUtils::EventBase& GetTaskAddedEvent() override { return m_addedEvent; }
    TvlUtils::EventBase& GetTaskRemovedEvent() override { return m_removedEvent; }
    TvlUtils::EventBase& GetTaskErrorEvent() override { return m_errorEvent; }
    TvlUtils::EventBase& GetTaskCancelledEvent() override { return m_cancelledEvent; }
    TvlUtils::EventBase& GetTaskChangedEvent() override { return m_changedEvent; }

    /// Raises the events of a task's end and destroys the task. A task that is not known, or is being ended already, is
    /// left alone: it may be gone as soon as the other thread goes on.
    void Finish(TaskProgress& task);

private:
    friend struct TaskProgressMgrLayout;   // of tests

    void List(unsigned long long group, TaskProgress& task);
    static void ForwardEvents(TaskProgress& task);
    void Tell(TaskProgress& task);
    void FinishClaimed(TaskProgress& task);
    void Remove(unsigned long long group, ITaskProgress* task, bool hasFinished);
    bool Unlist(unsigned long long group, ITaskProgress* task, bool hasFinished);
    void DropEmptyGroup(unsigned long long group);

    // The next four are called under the lock.

    bool TryClaim(unsigned long long group, ITaskProgress* task);
    void EndClaim(const ITaskProgress* task) noexcept;
    bool IsClaimed(const ITaskProgress* task) const;
    TaskGroup* FindGroup(unsigned long long group);

    TvlUtils::ThreadLock m_lock;   // guards the groups, and what stands behind the events
    std::map<unsigned long long, TaskGroup> m_groups;
    TvlUtils::EventBase m_addedEvent;
    TvlUtils::EventBase m_removedEvent;
    TvlUtils::EventBase m_errorEvent;
    TvlUtils::EventBase m_cancelledEvent;
    TvlUtils::EventBase m_changedEvent;
    std::unordered_set<const ITaskProgress*> m_detached;   // tasks without a group
    std::vector<const ITaskProgress*>
        m_claimed;   // tasks that one thread is making or ending, which others leave alone
};

}   // namespace TvlUtl

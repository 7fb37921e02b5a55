// The running tasks of the process.
#pragma once

#include "ITaskProgress.h"

namespace TvlUtl {

/// Which tasks a count takes in; other values take in all.
enum ETaskState : int {
    eTaskStateAny = 0,                 ///< every task
    eTaskStateCancelled = 1,           ///< Cancel was called
    eTaskStateFailed = 2,              ///< SetError was called
    eTaskStateSound = 3,               ///< neither cancelled nor in error
    eTaskStateCancelledOrFailed = 4,   ///< either, or both
    eTaskStateNotFailed = 5,           ///< not in error, cancelled or not
    eTaskStateNotCancelled = 6,        ///< not cancelled, in error or not
};

/// Registers tasks in groups, tells listeners of them and cleans up when they end. Any thread may call. An unknown group
/// is empty. Slot order is part of the interface.
class TVLUTL_API ITaskProgressMgr {
public:
    /// The manager of the process, or the one that stands in for it.
    static ITaskProgressMgr& GetInst();
    /// Lets GetInst give another manager, which the caller keeps; null takes that back. Tasks and data sources stay with
    /// the manager of the process.
    static void SetInstanceForTests(ITaskProgressMgr* instance);

    /// Makes a task in group 0.
    virtual ITaskProgress* CreateTask(int type, const wchar_t* displayName) = 0;
    /// Makes a task, which lives until its Finish. Tasks of the same group and type that have failed are destroyed first.
    /// When a handler throws, the task goes again, and the exception comes out.
    /// @param group group that the task belongs to; tasks of type 0 are in group 0 whatever is passed
    virtual ITaskProgress* CreateTask(unsigned long long group, int type, const wchar_t* displayName) = 0;
    /// A task that does nothing, for callers that must pass one; it is shared, and lives as long as the library.
    virtual ITaskProgress* GetDummyTask() = 0;
    /// Makes a task of type 0 that no query finds and no event of the manager tells of, but its removal. Its Finish destroys it.
    virtual ITaskProgress* CreateDetachedTask(const wchar_t* displayName) = 0;

    /// How much of a group is done, from 0.0 to 1.0: the mean over its tasks of a type, or of all for eTaskAnyType. Those
    /// that have ended count as done as long as the group has tasks; all types of them count.
    virtual double GetGroupProgress(unsigned long long group, int type) = 0;
    /// Number of tasks of exactly this type in a state (ETaskState). For eTaskAnyType all count, whatever their state.
    /// For group 0 it sums up all other groups, and gives 0 as soon as group 0 exists: callers rely on it, and ask
    /// GetDefaultGroupTaskCount for group 0.
    virtual unsigned long long GetTaskCount(unsigned long long group, int type, int state) = 0;
    /// The same of group 0 alone.
    virtual unsigned long long GetDefaultGroupTaskCount(int type, int state) = 0;

    /// @{
    /// Cancels the tasks of a type, or all for eTaskAnyType, of the process or of one group. The manager's lock is held
    /// meanwhile: handlers must not create or finish tasks.
    virtual void CancelAll(int type) = 0;
    virtual void CancelGroup(unsigned long long group, int type) = 0;
    /// @}
    /// Finishes the first task of exactly this type in a group, if there is one.
    virtual void FinishTask(unsigned long long group, int type) = 0;
    /// Destroys the tasks of exactly this type in a group that have failed, without their finished event.
    virtual void ClearFailedTasks(unsigned long long group, int type) = 0;
    /// The error of the first task of exactly this type in a group.
    virtual TvlStringT<wchar_t> GetTaskErrorText(unsigned long long group, int type) = 0;

    // The sender of these events is the task: an ITaskProgress*, cast to void*.

    /// The task is listed. Whoever makes it still has it in hand: until CreateTask returns nobody can end it, and Finish
    /// does nothing.
    virtual TvlUtils::EventBase& GetTaskAddedEvent() = 0;
    /// The task is no longer listed; it is destroyed when the handlers have returned.
    virtual TvlUtils::EventBase& GetTaskRemovedEvent() = 0;
    /// A task has failed: SetError was called.
    virtual TvlUtils::EventBase& GetTaskErrorEvent() = 0;
    /// Told of tasks of type 1 alone; the cancellation of others is a change.
    virtual TvlUtils::EventBase& GetTaskCancelledEvent() = 0;
    /// Progress, and cancellation.
    virtual TvlUtils::EventBase& GetTaskChangedEvent() = 0;

protected:
    ~ITaskProgressMgr() = default;
};

}   // namespace TvlUtl

// How far an operation has come.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlUtils/EventBase.h"

namespace TvlUtl {

/// Task types with a meaning here; others are the callers' own.
enum ETaskType : int {
    eTaskMain = 0,                   ///< always in group 0; its errors are shown, and bound controls see its progress
    eTaskCancellationReported = 1,   ///< its cancellation is told by ITaskProgressMgr::GetTaskCancelledEvent
    eTaskAnyType = 6,                ///< in queries of the manager: every type
};

/// An operation's progress in nested steps, its cancellation and its error. Any thread may call until Finish. Handlers of
/// the events run on the thread that made the change, with no lock of the task held: they may call back. What they throw
/// comes out of the operation that raised the event, which has been done by then. Slot order is part of the interface.
class ITaskProgress {
public:
    virtual ~ITaskProgress() = default;
    /// Ends the operation: raises the progress event and the finished event, and destroys the task, which must not be
    /// used afterwards. When a handler of these two throws, the task stays and can be finished again.
    virtual void Finish() = 0;

    /// Enters a step.
    /// @param parentUnits what the whole step is worth, in units of the level that it is entered from
    /// @param totalUnits  own units that make it complete; a step of 0 units passes on what the steps in it have done
    virtual void BeginSubTask(unsigned long long parentUnits, unsigned long long totalUnits) = 0;
    /// Leaves the innermost step and counts it as done; in the outermost level nothing changes. Raises the progress event
    /// in any case.
    virtual void EndSubTask() = 0;
    /// Sets the units that are done in the innermost level (the outermost has 100) and, unless null, its text. A level
    /// that overshoots reads as complete.
    virtual void SetProgress(unsigned long long doneUnits, const wchar_t* stepName) = 0;
    /// Adds to the units that are done in the innermost level.
    virtual void AddProgress(unsigned long long units) = 0;
    /// Asks the operation to stop. Who runs it looks at IsCancelled, and calls Finish.
    virtual void Cancel() = 0;
    /// Whether Cancel was called; it stays so.
    virtual bool IsCancelled() = 0;
    /// Marks the operation as failed and tells why. It still ends by Finish.
    virtual void SetError(const wchar_t* text) = 0;
    /// Whether SetError was called; it stays so.
    virtual bool HasError() = 0;
    /// What SetError was told last; empty without an error.
    virtual TvlStringT<wchar_t> GetErrorText() = 0;
    /// The number that the task was made with: an ETaskType, or a type of the caller's own.
    virtual int GetTaskType() = 0;
    /// How much of the whole is done, from 0.0 to 1.0.
    virtual double GetProgress() = 0;
    /// Text of the innermost step.
    virtual TvlStringT<wchar_t> GetStepName() = 0;
    /// The name that the task was made with, for the user.
    virtual TvlStringT<wchar_t> GetDisplayName() = 0;
    /// The group that the task was made in.
    virtual unsigned long long GetGroupId() = 0;

    // The sender of these events is the task: an ITaskProgress*, cast to void*.

    /// Raised by every change of the progress or of a step's text, by the end of a step and by Finish.
    virtual TvlUtils::EventBase& GetProgressEvent() = 0;
    /// Raised by Finish, before the task is destroyed.
    virtual TvlUtils::EventBase& GetFinishedEvent() = 0;
    /// Raised by Cancel.
    virtual TvlUtils::EventBase& GetCancelledEvent() = 0;
    /// Raised by SetError.
    virtual TvlUtils::EventBase& GetErrorEvent() = 0;
};

}   // namespace TvlUtl

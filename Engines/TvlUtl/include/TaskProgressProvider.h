// Classes that report to a task which they are given.
#pragma once

#include "ITaskProgress.h"

namespace TvlUtl {

/// Base of a class that holds a task, which it does not own. Copying and moving both copy the pointer. Slot order is part
/// of the interface.
class TVLUTL_API TaskProgressProvider {
public:
    /// Holds no task.
    TaskProgressProvider();
    /// @{
    /// The other's task becomes this object's too; the other keeps it.
    TaskProgressProvider(const TaskProgressProvider&);
    TaskProgressProvider(TaskProgressProvider&&) noexcept;
    TaskProgressProvider& operator=(const TaskProgressProvider&);
    TaskProgressProvider& operator=(TaskProgressProvider&&) noexcept;
    /// @}
    ~TaskProgressProvider();

    /// The task, or null.
    virtual ITaskProgress* GetTaskProgress() const;
    /// Holds another task from now on, or none for null. The caller sees to it that the task lives as long as it is
    /// held.
    virtual void SetTaskProgress(ITaskProgress* task);

private:
    ITaskProgress* m_task = nullptr;
};

}   // namespace TvlUtl

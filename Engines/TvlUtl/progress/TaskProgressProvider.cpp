#include "TaskProgressProvider.h"

namespace TvlUtl {

TaskProgressProvider::TaskProgressProvider() = default;
TaskProgressProvider::TaskProgressProvider(const TaskProgressProvider&) = default;
TaskProgressProvider::TaskProgressProvider(TaskProgressProvider&&) noexcept = default;
TaskProgressProvider& TaskProgressProvider::operator=(const TaskProgressProvider&) = default;
TaskProgressProvider& TaskProgressProvider::operator=(TaskProgressProvider&&) noexcept = default;
TaskProgressProvider::~TaskProgressProvider() = default;

ITaskProgress* TaskProgressProvider::GetTaskProgress() const { return m_task; }
void TaskProgressProvider::SetTaskProgress(ITaskProgress* task) { m_task = task; }

}   // namespace TvlUtl

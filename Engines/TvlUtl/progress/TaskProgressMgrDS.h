// What bound controls see of the running tasks.
#pragma once

#include "siblings/DataBinding/DataSourceImpl.h"

namespace TvlUtl {

inline constexpr wchar_t kInProgressProperty[] = L"InProgress";
inline constexpr wchar_t kProgressProperty[] = L"Progress";

/// The tasks of type 0 in group 0, read-only and without state of its own. It is found by the name
/// "TvlUtl::TaskProgressMgrDS". Properties: "InProgress" (bool) whether there is such a task, "Progress" (double) how much
/// of them is done, and "TaskDisplayName", a text of the suite.
class TaskProgressMgrDS : public PartialDataSource<TaskProgressMgrDS, 0> {
public:
    TaskProgressMgrDS();

private:
    void DeclareProperties();
};

/// Tells the live source, if there is one, that a property has changed.
void NotifyTaskDataChanged(const wchar_t* propertyName);

}   // namespace TvlUtl

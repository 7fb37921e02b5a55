// The order of fields, which callers outside depend on.
#include "TaskProgressMgr.h"

#include <algorithm>
#include <cstddef>
#include <gtest/gtest.h>
#include <vector>

namespace TvlUtl {

namespace {
template <class Object, class... Fields>
std::vector<std::ptrdiff_t> Offsets(const Object& object, const Fields&... fields)
{
    const auto at = [](const void* address) { return static_cast<const char*>(address); };
    return {at(&fields) - at(&object)...};
}
}   // namespace

struct TaskProgressLayout {
    static auto Of(const TaskProgress& task)
    {
        return Offsets(task, task.m_lock, task.m_levels, task.m_taskType, task.m_displayName, task.m_cancelled,
            task.m_failed, task.m_errorText, task.m_groupId, task.m_progressEvent, task.m_finishedEvent,
            task.m_cancelledEvent, task.m_errorEvent);
    }
};

struct TaskProgressMgrLayout {
    static auto Of(const TaskProgressMgr& manager)
    {
        return Offsets(manager, manager.m_lock, manager.m_groups, manager.m_addedEvent, manager.m_removedEvent,
            manager.m_errorEvent, manager.m_cancelledEvent, manager.m_changedEvent);
    }
};

namespace {
void ExpectInOrder(const std::vector<std::ptrdiff_t>& offsets, std::ptrdiff_t first)
{
    EXPECT_EQ(offsets.front(), first);
    EXPECT_TRUE(std::is_sorted(offsets.begin(), offsets.end())) << testing::PrintToString(offsets);
}

TEST(Layout, FieldsStandInOrder)
{
    constexpr std::ptrdiff_t kBehindTable = 8;
    const TaskProgress task(1, 2, L"task");
    ExpectInOrder(TaskProgressLayout::Of(task), kBehindTable);
    ExpectInOrder(TaskProgressMgrLayout::Of(TaskProgressMgr::GetInstance()), kBehindTable);
    const ProgressLevel level{1, 2};
    ExpectInOrder(Offsets(level, level.parentUnits, level.totalUnits, level.doneUnits, level.stepName), 0);
    const TaskGroup group;
    ExpectInOrder(Offsets(group, group.tasks, group.finishedCount), 0);
}
}   // namespace

}   // namespace TvlUtl

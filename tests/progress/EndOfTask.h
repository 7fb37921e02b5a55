// Tasks that tests make.
#pragma once

#include "ITaskProgressMgr.h"

#include <memory>
#include <string>
#include <vector>

/// Finishes a task when a test is done with it.
struct EndOfTask {
    void operator()(TvlUtl::ITaskProgress* task) const { task->Finish(); }
};
using OwnedTask = std::unique_ptr<TvlUtl::ITaskProgress, EndOfTask>;

inline OwnedTask MakeTask(unsigned long long group, int type, const wchar_t* name = L"task")
{
    return OwnedTask(TvlUtl::ITaskProgressMgr::GetInst().CreateTask(group, type, name));
}

/// Writes down events by name.
class EventLog {
public:
    void Listen(TvlUtils::EventBase& event, std::string name)
    {
        m_kept.push_back(event.Subscribe([this, name](void* sender) {
            entries.push_back(name);
            senders.push_back(static_cast<TvlUtl::ITaskProgress*>(sender));
        }));
    }
    void ListenToManager()
    {
        auto& manager = TvlUtl::ITaskProgressMgr::GetInst();
        Listen(manager.GetTaskAddedEvent(), "added");
        Listen(manager.GetTaskRemovedEvent(), "removed");
        Listen(manager.GetTaskErrorEvent(), "error");
        Listen(manager.GetTaskCancelledEvent(), "cancelled");
        Listen(manager.GetTaskChangedEvent(), "changed");
    }
    /// What happened since the last call.
    std::vector<std::string> Take() { return std::exchange(entries, {}); }

    std::vector<std::string> entries;
    std::vector<TvlUtl::ITaskProgress*> senders;

private:
    std::vector<TvlUtils::Subscription> m_kept;
};

// A task that counts.
#pragma once

#include "ITaskProgress.h"
#include "siblings/TvlUtils/ThreadLock.h"

#include <vector>

namespace TvlUtl {

/// One nested step of a task.
struct ProgressLevel {
    unsigned long long parentUnits;   // what the level is worth, in units of the level below it
    unsigned long long totalUnits;    // units that make it complete
    unsigned long long doneUnits = 0;
    TvlStringT<wchar_t> stepName = {};
};

/// A task of the manager. Field order is part of the interface.
class TaskProgress final : public ITaskProgress {
public:
    TaskProgress(unsigned long long groupId, int taskType, const wchar_t* displayName);

    void Finish() override;
    void BeginSubTask(unsigned long long parentUnits, unsigned long long totalUnits) override;
    void EndSubTask() override;
    void SetProgress(unsigned long long doneUnits, const wchar_t* stepName) override;
    void AddProgress(unsigned long long units) override;
    void Cancel() override;
    bool IsCancelled() override;
    void SetError(const wchar_t* text) override;
    bool HasError() override;
    TvlStringT<wchar_t> GetErrorText() override;
    int GetTaskType() override { return m_taskType; }
    double GetProgress() override;
    TvlStringT<wchar_t> GetStepName() override;
    TvlStringT<wchar_t> GetDisplayName() override { return m_displayName; }
    unsigned long long GetGroupId() override { return m_groupId; }
    TvlUtils::EventBase& GetProgressEvent() override { return m_progressEvent; }
    TvlUtils::EventBase& GetFinishedEvent() override { return m_finishedEvent; }
    TvlUtils::EventBase& GetCancelledEvent() override { return m_cancelledEvent; }
    TvlUtils::EventBase& GetErrorEvent() override { return m_errorEvent; }

    /// Raises the events of Finish.
    void RaiseEnd();

private:
    friend struct TaskProgressLayout;   // of tests

    void Raise(TvlUtils::EventBase& event) { event.Raise(static_cast<ITaskProgress*>(this)); }

    TvlUtils::ThreadLock m_lock;   // guards what follows but the display name, the type and the group, which are fixed
    std::vector<ProgressLevel> m_levels;   // from the root to the innermost, never empty
    int m_taskType;
    TvlStringT<wchar_t> m_displayName;
    bool m_cancelled = false;
    bool m_failed = false;
    TvlStringT<wchar_t> m_errorText;
    unsigned long long m_groupId;
    TvlUtils::EventBase m_progressEvent;
    TvlUtils::EventBase m_finishedEvent;
    TvlUtils::EventBase m_cancelledEvent;
    TvlUtils::EventBase m_errorEvent;
};

}   // namespace TvlUtl

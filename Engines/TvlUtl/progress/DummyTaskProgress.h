// A task that does nothing.
#pragma once

#include "ITaskProgress.h"

namespace TvlUtl {

/// Takes every report and keeps none. Its one event is never raised.
class DummyTaskProgress final : public ITaskProgress {
public:
    void Finish() override { }
    void BeginSubTask(unsigned long long, unsigned long long) override { }
    void EndSubTask() override { }
    void SetProgress(unsigned long long, const wchar_t*) override { }
    void AddProgress(unsigned long long) override { }
    void Cancel() override { }
    bool IsCancelled() override { return false; }
    void SetError(const wchar_t*) override { }
    bool HasError() override { return false; }
    TvlStringT<wchar_t> GetErrorText() override { return {}; }
    int GetTaskType() override { return 0; }
    double GetProgress() override { return 0.0; }
    TvlStringT<wchar_t> GetStepName() override { return {}; }
    TvlStringT<wchar_t> GetDisplayName() override { return {}; }
    unsigned long long GetGroupId() override { return 0; }
    TvlUtils::EventBase& GetProgressEvent() override { return m_event; }
    TvlUtils::EventBase& GetFinishedEvent() override { return m_event; }
    TvlUtils::EventBase& GetCancelledEvent() override { return m_event; }
    TvlUtils::EventBase& GetErrorEvent() override { return m_event; }

private:
    TvlUtils::EventBase m_event;
};

}   // namespace TvlUtl

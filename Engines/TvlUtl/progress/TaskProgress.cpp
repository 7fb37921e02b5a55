#include "TaskProgress.h"

#include "TaskProgressMgr.h"

#include <algorithm>

namespace TvlUtl {

namespace {
constexpr unsigned long long kRootUnits = 100;
}

using TvlUtils::ReadLock;
using TvlUtils::WriteLock;

TaskProgress::TaskProgress(unsigned long long groupId, int taskType, const wchar_t* displayName)
    : m_levels{ProgressLevel{kRootUnits, kRootUnits}}, m_taskType(taskType), m_displayName(displayName),
      m_groupId(groupId)
{
}

void TaskProgress::Finish() { TaskProgressMgr::GetInstance().Finish(*this); }

void TaskProgress::RaiseEnd()
{
    Raise(m_progressEvent);
    Raise(m_finishedEvent);
}

void TaskProgress::BeginSubTask(unsigned long long parentUnits, unsigned long long totalUnits)
{
    {
        const WriteLock hold(m_lock);
        m_levels.push_back({parentUnits, totalUnits});
    }
    Raise(m_progressEvent);
}

void TaskProgress::EndSubTask()
{
    {
        const WriteLock hold(m_lock);
        if (m_levels.size() > 1) {
            const unsigned long long worth = m_levels.back().parentUnits;
            m_levels.pop_back();
            m_levels.back().doneUnits += worth;
        }
    }
    Raise(m_progressEvent);
}

void TaskProgress::SetProgress(unsigned long long doneUnits, const wchar_t* stepName)
{
    {
        const WriteLock hold(m_lock);
        ProgressLevel& level = m_levels.back();
        if (stepName)
            level.stepName = stepName;
        level.doneUnits = doneUnits;
    }
    Raise(m_progressEvent);
}

void TaskProgress::AddProgress(unsigned long long units)
{
    {
        const WriteLock hold(m_lock);
        m_levels.back().doneUnits += units;
    }
    Raise(m_progressEvent);
}

void TaskProgress::Cancel()
{
    {
        const WriteLock hold(m_lock);
        m_cancelled = true;
    }
    Raise(m_cancelledEvent);
}

bool TaskProgress::IsCancelled()
{
    const ReadLock hold(m_lock);
    return m_cancelled;
}

void TaskProgress::SetError(const wchar_t* text)
{
    {
        const WriteLock hold(m_lock);
        m_errorText = text;
        m_failed = true;
    }
    Raise(m_errorEvent);
}

bool TaskProgress::HasError()
{
    const ReadLock hold(m_lock);
    return m_failed;
}

TvlStringT<wchar_t> TaskProgress::GetErrorText()
{
    const ReadLock hold(m_lock);
    return m_errorText;
}

double TaskProgress::GetProgress()
{
    const ReadLock hold(m_lock);
    double fraction = 0.0;
    unsigned long long childUnits = 0;
    for (auto level = m_levels.rbegin(); level != m_levels.rend(); ++level) {
        if (level->totalUnits == 0)
            continue;
        const unsigned long long done = std::min(level->totalUnits, level->doneUnits);
        fraction = (static_cast<double>(done) + static_cast<double>(childUnits) * fraction)
            / static_cast<double>(level->totalUnits);
        childUnits = level->parentUnits;
    }
    return fraction;
}

TvlStringT<wchar_t> TaskProgress::GetStepName()
{
    const ReadLock hold(m_lock);
    return m_levels.back().stepName;
}

}   // namespace TvlUtl

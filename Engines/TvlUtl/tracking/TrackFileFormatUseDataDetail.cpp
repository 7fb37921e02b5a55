#include "TrackFileFormatUseDataDetail.h"

#include "EventTable.h"
#include "RecordTable.h"
#include "TrackedRecord.h"
#include "siblings/TvlComponent/Application.h"
#include "siblings/TvlPref/CPrefObject.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "siblings/TvlUtils/TextStreamWriter.h"

#include <atomic>
#include <mutex>

struct TrackFileFormatUseDataDetail::Copy : TrackedRecord {
    using TrackedRecord::TrackedRecord;
};

namespace {
// Guards the stopwatches of all records. They have no lock of their own, and whoever reads a time must not wait for a
// record that somebody else is filling in. Nothing is called under it.
std::mutex stopwatches;

TvlString TypeOf(const TvlString& path) { return TvlUtils::SystemIO::Path::GetExtension(path).Trim(L"."); }

TvlString MakeLabel(const TrackedRecord& record)
{
    TvlString label = record.GetContext() + L"_" + record.GetType();
    if (!record.GetFilter().IsEmpty())
        label += TvlString().Format(L"[FLT %s]", record.GetFilter());
    if (!record.GetVersion().IsEmpty())
        label += TvlString().Format(L"[VER %s]", record.GetVersion());
    if (record.IsAccepted())
        label += L"[ACCEPTED]";
    return label;
}

/// The file for developers who want to see the labels; a file that can't be written is left alone.
void LogLabel(const TvlString& label)
{
    // Never destroyed: handles go at the end of the process, too.
    static const auto& file = *new CPrefObject<TvlString, CBoxPrefManager>(L"FileFormatTracking/DebugTrackingLogFile");
    const TvlString path = file.GetValue();
    if (path.IsEmpty())
        return;
    using TvlUtils::TextEncoding;
    TvlUtils::TextStreamWriter(TvlUtils::Stream::AppendToFile(path), TextEncoding::Utf8).WriteLine(label);
}

void SendLabel(const TrackedRecord& record)
{
    if (record.GetContext().IsEmpty() || record.GetType().IsEmpty())
        return;
    const TvlString label = MakeLabel(record);
    if (ITovelCmn_App* const application = TvlComponent::GetAppInterface())
        application->TrackFeature(label.c_str());
    LogLabel(label);
}
}   // namespace

TrackFileFormatUseDataDetail::TrackFileFormatUseDataDetail(
    bool global, TvlStringT<wchar_t> path, const TvlStringT<wchar_t>& context, bool finished)
    : TrackFileFormatUseData(global, context, TypeOf(path)), m_finished(finished), m_path(std::move(path))
{
}

TrackFileFormatUseDataDetail::~TrackFileFormatUseDataDetail()
{
    try {
        Commit();
    } catch (...) {
        // Whoever drops a handle has no part in what the application or a full heap makes of it.
    }
    if (m_global)
        RecordTable::Get().NoteEnd(std::move(m_path));
}

std::optional<TrackFileFormatUseDataDetail::Copy> TrackFileFormatUseDataDetail::CopyForCommit()
{
    const TvlUtils::WriteLock hold(m_lock);
    if (m_finished)
        return std::nullopt;
    const EventRow* const row = m_accepted ? FindEvent(*this) : nullptr;
    if (row && row->isTimed)
        StopStopwatch();
    const std::scoped_lock holdDurations(stopwatches);
    std::optional<Copy> copy(std::in_place, *this, m_path);
    m_finished = 1;
    return copy;
}

void TrackFileFormatUseDataDetail::Commit()
{
    const std::optional<Copy> copy = CopyForCommit();
    if (!copy)
        return;
    SendLabel(*copy);
    if (copy->IsAccepted())
        SendTrackedEvent(*copy);
}

void TrackFileFormatUseDataDetail::Finish()
{
    const TvlUtils::WriteLock hold(m_lock);
    m_finished = 1;
}

void TrackFileFormatUseDataDetail::Accept()
{
    const TvlUtils::WriteLock hold(m_lock);
    std::atomic_ref(m_accepted).store(true, std::memory_order_relaxed);
}

// Without the lock: whoever asks must not wait for a record that somebody else is filling in.
bool TrackFileFormatUseDataDetail::IsAccepted() { return std::atomic_ref(m_accepted).load(std::memory_order_relaxed); }

void TrackFileFormatUseDataDetail::StartStopwatch()
{
    const std::scoped_lock hold(stopwatches);
    if (m_durationRunning)
        return;
    m_durationRunning = true;
    m_durationStart = TvlUtils::TimeTicks::Now();
    m_durationTotal = {};
}

void TrackFileFormatUseDataDetail::StopStopwatch()
{
    const std::scoped_lock hold(stopwatches);
    if (!std::exchange(m_durationRunning, false))
        return;
    m_durationTotal += TvlUtils::TimeTicks::Now() - m_durationStart;
}

void TrackFileFormatUseDataDetail::ResumeStopwatch()
{
    const std::scoped_lock hold(stopwatches);
    if (std::exchange(m_durationRunning, true))
        return;
    m_durationStart = TvlUtils::TimeTicks::Now();
}

// While it runs, what was accumulated before the last resume does not count: readers of the events rely on it.
void TrackFileFormatUseDataDetail::Mark(TrackFileFormatUseDurationMarker marker)
{
    const std::scoped_lock hold(stopwatches);
    m_durationMarkers[marker] = m_durationRunning ? TvlUtils::TimeTicks::Now() - m_durationStart : m_durationTotal;
}

TvlUtils::TimeDelta TrackFileFormatUseDataDetail::GetMark(TrackFileFormatUseDurationMarker marker) const
{
    const std::scoped_lock hold(stopwatches);
    const auto found = m_durationMarkers.find(marker);
    return found == m_durationMarkers.end() ? TvlUtils::TimeDelta() : found->second;
}

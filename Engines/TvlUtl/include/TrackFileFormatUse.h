// Tells which file formats documents go through. The code that opens, imports, saves or exports a file starts a handle,
// fills in what it learns on the way, and lets the handle go:
//
//     TrackFileFormatUse use = TrackFileFormatUse::StartGlobal(path, L"Open");
//     use.Lock()->SetVersion(L"2700");
//     ... other layers find the record again: TrackFileFormatUse::Find(path) ...
//     use.Accept();
//
// When the last handle goes, the application gets a label such as "Open_tvr[VER 2700][ACCEPTED]", and the analytics service
// an event if the operation was accepted. docs/tracking.md lists the events.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlConfig/DocumentStatistics.h"
#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlUtils/Time.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>
#include <utility>

class ITovelCmn_Doc;

/// A point in an operation whose time is kept.
enum class TrackFileFormatUseDurationMarker : int {
    Download = 0,   ///< the file that is opened has been fetched
};

/// FNV-1a of the four bytes, the lowest first.
template <>
struct std::hash<TrackFileFormatUseDurationMarker> {
    /// The sum is the same on every target and in every run.
    std::size_t operator()(TrackFileFormatUseDurationMarker marker) const noexcept
    {
        unsigned long long sum = 0xcbf29ce484222325;
        for (unsigned rest = static_cast<unsigned>(marker), i = 0; i < 4; ++i, rest >>= 8)
            sum = (sum ^ (rest & 0xff)) * 0x100000001b3;
        return sum;
    }
};

/// What is known of one operation on one file. Setters give the record, so that calls can be chained.
class TVLUTL_API TrackFileFormatUseData {
public:
    /// What MarkDuration has kept for each marker.
    using Markers = std::unordered_map<TrackFileFormatUseDurationMarker, TvlUtils::TimeDelta>;

    /// A record that knows no more than this. Its stopwatch runs at once where the context is "Open" or
    /// "AutoSave-Completed".
    TrackFileFormatUseData(bool global, TvlStringT<wchar_t> context, TvlStringT<wchar_t> type);

    /// Whether other layers find the record by its path, and access is locked.
    bool IsGlobal() const { return m_global; }
    /// The operation, as "Open" or "Export".
    const TvlStringT<wchar_t>& GetContext() const { return m_context; }
    /// The file's type, at first its path's extension without points before it.
    const TvlStringT<wchar_t>& GetType() const { return m_type; }
    /// Name of the filter that imports or exports; empty for none.
    const TvlStringT<wchar_t>& GetFilter() const { return m_filter; }
    /// The file's version as digits, "2700" for 27.0; empty when it is not known.
    const TvlStringT<wchar_t>& GetVersion() const { return m_version; }
    /// Name of the page layout; empty when it is not known.
    const TvlStringT<wchar_t>& GetLayout() const { return m_layout; }
    /// Whether the document was saved under a new name: any text, sent as it is; empty goes out as "false".
    const TvlStringT<wchar_t>& GetSaveAs() const { return m_saveAs; }
    /// Where an export went; empty when it is not known.
    const TvlStringT<wchar_t>& GetExportedLocation() const { return m_exportedLocation; }
    /// What an export covered, such as "Group"; empty when it is not known.
    const TvlStringT<wchar_t>& GetExportedRange() const { return m_exportedRange; }
    /// Path of the copy that was saved automatically; empty for none.
    const TvlStringT<wchar_t>& GetAutoSaveFilePath() const { return m_autoSaveFilePath; }
    /// Resolution of an exported bitmap, as the code that exports gives it; 0 for none.
    int GetExportFileResolution() const { return m_exportFileResolution; }
    /// Why the operation failed; no text while it has not.
    const std::optional<TvlStringT<wchar_t>>& GetErrorMessage() const { return m_errorMessage; }
    /// Whether the document is stored in the cloud.
    bool IsInCloud() const { return m_cloud; }
    /// What SetDocInfo has found; zeros and empty texts before.
    const ProductAnalytics::DocumentStatistics& GetStatistics() const { return m_statistics; }

    /// Takes the place of the path's extension in what is sent.
    TrackFileFormatUseData& SetType(TvlStringT<wchar_t> type);
    /// Name of the filter that imports or exports; empty for none.
    TrackFileFormatUseData& SetFilter(TvlStringT<wchar_t> filter);
    /// The file's version as digits, "2700" for 27.0; empty for one that is not known.
    TrackFileFormatUseData& SetVersion(TvlStringT<wchar_t> version);
    /// Name of the page layout.
    TrackFileFormatUseData& SetLayout(TvlStringT<wchar_t> layout);
    /// See GetSaveAs.
    TrackFileFormatUseData& SetSaveAs(TvlStringT<wchar_t> saveAs);
    /// Where an export went.
    TrackFileFormatUseData& SetExportedLocation(TvlStringT<wchar_t> location);
    /// What an export covered. "Object" does not take the place of "Group".
    TrackFileFormatUseData& SetExportedRange(TvlStringT<wchar_t> range);
    /// Path of the copy that is saved automatically.
    TrackFileFormatUseData& SetAutoSaveFilePath(TvlStringT<wchar_t> path);
    /// Resolution of an exported bitmap.
    TrackFileFormatUseData& SetExportFileResolution(int resolution);
    /// Why the operation failed; nothing takes that back.
    TrackFileFormatUseData& SetErrorMessage(std::optional<TvlStringT<wchar_t>> message);
    /// Whether the document is stored in the cloud.
    TrackFileFormatUseData& SetCloud(bool cloud);
    /// Asks the document for its statistics. What it does not know counts as 0 or empty.
    TrackFileFormatUseData& SetDocInfo(ITovelCmn_Doc& document);

protected:
    // The order of the fields is that which modules of other ages know.

    /// @{
    /// What the getter of the same name gives.
    bool m_global;
    TvlStringT<wchar_t> m_context;
    TvlStringT<wchar_t> m_type;
    TvlStringT<wchar_t> m_filter;
    TvlStringT<wchar_t> m_version;
    TvlStringT<wchar_t> m_layout;
    TvlStringT<wchar_t> m_saveAs;
    TvlStringT<wchar_t> m_exportedLocation;
    TvlStringT<wchar_t> m_exportedRange;
    TvlStringT<wchar_t> m_autoSaveFilePath;
    int m_exportFileResolution = 0;
    std::optional<TvlStringT<wchar_t>> m_errorMessage;
    bool m_cloud = false;
    /// @}
    bool m_accepted = false;                             // the operation went through
    bool m_durationRunning = false;                      // the stopwatch runs
    TvlUtils::TimeTicks m_durationStart;                 // when the stopwatch was last started
    TvlUtils::TimeDelta m_durationTotal;                 // up to its last stop
    Markers m_durationMarkers;                           // what MarkDuration has kept
    ProductAnalytics::DocumentStatistics m_statistics;   // what GetStatistics gives
};

class TrackFileFormatUseDataDetail;

/// Access to a record for as long as it lives: nobody else has it meanwhile, if the record is global. It keeps the record
/// alive. Without a record it is false, and has nothing to give access to.
class TVLUTL_API TrackFileFormatUseDataLock {
public:
    /// Waits until nobody else has access to a global record. Null gives access to nothing.
    explicit TrackFileFormatUseDataLock(std::shared_ptr<TrackFileFormatUseDataDetail> record);
    TrackFileFormatUseDataLock(const TrackFileFormatUseDataLock&) = delete;
    TrackFileFormatUseDataLock& operator=(const TrackFileFormatUseDataLock&) = delete;
    ~TrackFileFormatUseDataLock();

    /// Whether there is a record to have access to.
    explicit operator bool() const { return m_record != nullptr; }
    /// The record; null without one.
    TrackFileFormatUseData* operator->() const;

private:
    std::shared_ptr<TrackFileFormatUseDataDetail> m_record;
};

/// A share in a record, or none. Every operation on an empty handle does nothing. Any thread may use a global record
/// through handles of its own; a local one belongs to one scope.
class TVLUTL_API TrackFileFormatUse {
public:
    /// An empty handle.
    TrackFileFormatUse() = default;

    // An empty path or context gives an empty handle.

    /// The record of a path, made when there is none that lives: the first context stays.
    static TrackFileFormatUse StartGlobal(const TvlStringT<wchar_t>& path, const TvlStringT<wchar_t>& context);
    /// A record that nobody else finds.
    static TrackFileFormatUse StartLocal(const TvlStringT<wchar_t>& path, const TvlStringT<wchar_t>& context);
    /// As long as the handle lives, a global start for the path gives this record, of which nothing is ever sent. A record
    /// of the path that lives already is given as it is, and is not silenced.
    static TrackFileFormatUse Disable(const TvlStringT<wchar_t>& path);
    /// The live record of a path, or an empty handle.
    static TrackFileFormatUse Find(const TvlStringT<wchar_t>& path);
    /// An empty handle.
    static TrackFileFormatUse NoTrack() { return TrackFileFormatUse(); }

    /// Whether there is a record.
    explicit operator bool() const { return m_record != nullptr; }

    /// Sends what is known, unless that was done before or the record was discarded, and empties the handle. The same
    /// happens when the last handle goes.
    void Commit();
    /// Nothing will be sent of the record, by other handles either. Empties the handle.
    void Discard();
    /// The operation went through: an event is due, and not the label alone.
    void Accept();
    /// Whether Accept was called, through whichever handle; false without a record.
    bool IsAccepted() const;

    /// Access to the record, or to none without one. Waits while others have access to a global record.
    TrackFileFormatUseDataLock Lock() const { return TrackFileFormatUseDataLock(m_record); }
    /// TrackFileFormatUseData::SetExportedRange under a lock of its own.
    void SetExportedRange(const TvlStringT<wchar_t>& range);
    /// Fills in what is known at an export's end.
    /// @param filter           stored unless it is empty
    /// @param document         what was exported; null for the application's active document
    /// @param accept           as Accept
    /// @param exportedLocation stored unless it is empty
    /// @param resolution       stored unless it is 0
    /// Throws std::bad_cast for a document whose name of the page layout is no text.
    void FillExportEvent(const TvlStringT<wchar_t>& filter, ITovelCmn_Doc* document, bool accept,
        const TvlStringT<wchar_t>& exportedLocation, const int& resolution);

    // The stopwatch, which runs from the start for "Open" and "AutoSave-Completed".

    /// Starts it from 0, unless it runs.
    void StartDurationTracker();
    /// @{
    /// Stops it; what it shows stays. Nothing when it stands.
    void StopDurationTracker();
    void SuspendDurationTracker() { StopDurationTracker(); }
    /// @}
    /// Lets it run on, unless it runs.
    void ResumeDurationTracker();
    /// Keeps the time since it was last started or resumed, or of a stopped one what it shows.
    void MarkDuration(TrackFileFormatUseDurationMarker marker);
    /// What was kept; 0 for nothing.
    TvlUtils::TimeDelta GetMarkedDuration(TrackFileFormatUseDurationMarker marker) const;

private:
    friend class TrackFileFormatUseWeak;
    explicit TrackFileFormatUse(std::shared_ptr<TrackFileFormatUseDataDetail> record) : m_record(std::move(record)) { }
    static TrackFileFormatUse Start(const TvlStringT<wchar_t>& path, const TvlStringT<wchar_t>& context, bool finished);

    std::shared_ptr<TrackFileFormatUseDataDetail> m_record;
};

/// Refers to a record without keeping it alive.
class TVLUTL_API TrackFileFormatUseWeak {
public:
    /// Refers to no record.
    TrackFileFormatUseWeak() = default;
    /// @{
    /// Refers to the handle's record, or to none.
    TrackFileFormatUseWeak(const TrackFileFormatUse& use);
    TrackFileFormatUseWeak& operator=(const TrackFileFormatUse& use);
    /// @}

    /// Whether the record lives.
    explicit operator bool() const;
    /// Access to the record, or to none when it is gone.
    TrackFileFormatUseDataLock Lock() const;

private:
    std::weak_ptr<TrackFileFormatUseDataDetail> m_record;
};

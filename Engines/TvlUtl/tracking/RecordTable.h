// The records that are found by their path.
#pragma once

#include "TrackFileFormatUseDataDetail.h"

#include <mutex>
#include <vector>

/// One table for the whole process. Records live as long as their handles: the table refers to them weakly. Safe to call
/// from any thread.
class RecordTable {
public:
    static RecordTable& Get();

    /// The live record of a path, or a new one. Entries of records that ended are removed.
    std::shared_ptr<TrackFileFormatUseDataDetail> FindOrAdd(
        const TvlStringT<wchar_t>& path, const TvlStringT<wchar_t>& context, bool finished);
    /// The live record of a path, or null.
    std::shared_ptr<TrackFileFormatUseDataDetail> Find(const TvlStringT<wchar_t>& path);
    /// A record of this path has ended.
    void NoteEnd(TvlStringT<wchar_t>&& path) noexcept;
    /// Entries there are, those of ended records included.
    std::size_t CountEntries();

private:
    using Record = TrackFileFormatUseDataDetail;

    void Sweep();

    TvlUtils::ThreadLock m_lock;   // guards m_records
    std::unordered_map<TvlStringT<wchar_t>, std::weak_ptr<Record>> m_records;
    std::mutex m_endedLock;   // guards what follows; nothing is called under it
    std::vector<TvlStringT<wchar_t>>
        m_ended;                        // paths whose entries may be removed, so that a start need not look at all
    bool m_isEndedIncomplete = false;   // the heap was full when a path was to be added
};

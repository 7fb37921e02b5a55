#include "RecordTable.h"

// Never destroyed: handles go at the end of the process, too.
RecordTable& RecordTable::Get()
{
    static RecordTable& table = *new RecordTable;
    return table;
}

std::shared_ptr<TrackFileFormatUseDataDetail> RecordTable::FindOrAdd(
    const TvlStringT<wchar_t>& path, const TvlStringT<wchar_t>& context, bool finished)
{
    const TvlUtils::WriteLock hold(m_lock);
    Sweep();
    const auto [entry, isNew] = m_records.try_emplace(path);
    if (auto live = entry->second.lock())
        return live;
    try {
        auto record = std::make_shared<Record>(true, path, context, finished);
        entry->second = record;
        return record;
    } catch (...) {
        if (isNew)
            m_records.erase(entry);   // no record's end would remove it
        throw;
    }
}

std::shared_ptr<TrackFileFormatUseDataDetail> RecordTable::Find(const TvlStringT<wchar_t>& path)
{
    const TvlUtils::ReadLock hold(m_lock);
    const auto found = m_records.find(path);
    return found == m_records.end() ? nullptr : found->second.lock();
}

void RecordTable::NoteEnd(TvlStringT<wchar_t>&& path) noexcept
{
    const std::scoped_lock hold(m_endedLock);
    try {
        m_ended.push_back(std::move(path));
    } catch (...) {
        m_isEndedIncomplete = true;
    }
}

std::size_t RecordTable::CountEntries()
{
    const TvlUtils::ReadLock hold(m_lock);
    return m_records.size();
}

// Asks whether records have expired and takes none: the last share in a record could come to be the sweep's, which would
// commit it under the table's lock.
void RecordTable::Sweep()
{
    std::vector<TvlStringT<wchar_t>> ended;
    bool all = false;
    {
        const std::scoped_lock hold(m_endedLock);
        ended.swap(m_ended);
        all = std::exchange(m_isEndedIncomplete, false);
    }
    if (all)
        std::erase_if(m_records, [](const auto& entry) { return entry.second.expired(); });
    for (const auto& path : ended) {
        const auto found = m_records.find(path);
        if (found != m_records.end() && found->second.expired())   // else the path has a new record
            m_records.erase(found);
    }
}

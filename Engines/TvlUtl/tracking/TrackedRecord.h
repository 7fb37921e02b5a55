// What a record holds at its commit.
#pragma once

#include "TrackFileFormatUse.h"

/// A record's values and its path, which nobody changes any more.
struct TrackedRecord : TrackFileFormatUseData {
    TrackedRecord(const TrackFileFormatUseData& data, TvlStringT<wchar_t> recordPath)
        : TrackFileFormatUseData(data), path(std::move(recordPath))
    {
    }

    bool IsAccepted() const { return m_accepted; }
    /// What the stopwatch showed when it was last stopped.
    TvlUtils::TimeDelta Total() const { return m_durationTotal; }
    TvlUtils::TimeDelta Marked(TrackFileFormatUseDurationMarker marker) const
    {
        const auto found = m_durationMarkers.find(marker);
        return found == m_durationMarkers.end() ? TvlUtils::TimeDelta() : found->second;
    }

    TvlStringT<wchar_t> path;
};

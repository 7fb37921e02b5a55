// A record as its handles share it.
#pragma once

#include "TrackFileFormatUse.h"
#include "siblings/TvlUtils/ThreadLock.h"

/// A record with what its sharing needs. It commits at its end, if nobody has done so before.
class TrackFileFormatUseDataDetail : public TrackFileFormatUseData {
public:
    /// @param finished nothing is to be sent, from the start
    TrackFileFormatUseDataDetail(
        bool global, TvlStringT<wchar_t> path, const TvlStringT<wchar_t>& context, bool finished);
    TrackFileFormatUseDataDetail(const TrackFileFormatUseDataDetail&) = delete;
    TrackFileFormatUseDataDetail& operator=(const TrackFileFormatUseDataDetail&) = delete;
    /// Lets no exception out.
    ~TrackFileFormatUseDataDetail();

    TvlUtils::ThreadLock& GetLock() { return m_lock; }
    /// Sends the label, and the event if it is due. No lock is held then: who is told may call back. What is sent was
    /// copied in one go, and nobody commits the record again.
    void Commit();
    /// Nothing will be sent.
    void Finish();
    void Accept();
    bool IsAccepted();

    void StartStopwatch();
    void StopStopwatch();
    void ResumeStopwatch();
    void Mark(TrackFileFormatUseDurationMarker marker);
    TvlUtils::TimeDelta GetMark(TrackFileFormatUseDurationMarker marker) const;

private:
    struct Copy;
    std::optional<Copy> CopyForCommit();

    TvlUtils::ThreadLock m_lock;
    int m_finished;   // not 0 once the record was committed or discarded
    TvlStringT<wchar_t> m_path;
};

// The files of analytics events, as they are written and read back: docs/tracking.md has their form.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlUtils/FileLayer.h"

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

/// Events for the analytics service: what they are made of, and the files that they wait in.
namespace ProductAnalytics {

/// One event of a file.
struct StoredEvent {
    TvlString time;                              // of UTC, as "2024-05-31T08:15:30.250Z"
    TvlString name;                              // of the event, as EventDescription has it
    std::map<TvlString, TvlString> properties;   // values by their names
    TvlString detail;                            // any further text; usually empty

    /// All members alike.
    bool operator==(const StoredEvent&) const = default;
};

/// An event as one line of UTF-8, with a line feed at its end and none before.
TVLSIBLINGS_API std::string FormatEvent(const StoredEvent& event);
/// The event of a line, whose line feed may be left out; nothing for what is no event of this version, or longer than
/// kLongestEvent.
TVLSIBLINGS_API std::optional<StoredEvent> ParseEvent(std::string_view line);

inline constexpr std::size_t kLongestEvent = 1 << 20;   ///< bytes of an event's line, line feed included
inline constexpr long long kEventFileSize = 1 << 20;    ///< bytes from which on a file is put by
inline constexpr std::size_t kEventFilesKept = 4;       ///< of those that were put by

/// Writes events to the file "events.jsonl" of a folder. Several objects, and several processes, may write to one file:
/// each event is one write at its end.
class TVLSIBLINGS_API EventLog {
public:
    /// @param folder    made with the first event
    /// @param sizeLimit bytes from which on the file is put by
    explicit EventLog(TvlString folder, long long sizeLimit = kEventFileSize);

    /// Full path of the file that is written to.
    TvlString File() const;
    /// Full paths of the files that were put by, the oldest first, whatever the clock said meanwhile.
    std::vector<TvlString> OlderFiles() const;
    /// Adds an event. What a writer that was ended has left of a line becomes a line of its own, which readers skip. Fails
    /// with message_size for one that is longer than kLongestEvent.
    TvlUtils::SystemIO::FileResult Append(const StoredEvent& event) const;

private:
    /// Gives the file a name of its own, and removes what is older than kEventFilesKept others.
    void PutBy(const StoredEvent& event) const;

    TvlString m_folder;
    long long m_sizeLimit;
};

/// Reads the events of a folder, the oldest first, while others write them.
class TVLSIBLINGS_API EventReader {
public:
    /// @param folder the one that an EventLog writes to; need not be there yet
    explicit EventReader(const TvlString& folder) : m_folder(folder), m_log(folder) { }

    /// The events that have been added since the last call, or all of them at first. A last line without its end waits
    /// for the rest of it.
    std::vector<StoredEvent> ReadNew();
    /// Lines so far that were no events: leftovers of writers that were ended, lines of other versions, and those that are
    /// longer than kLongestEvent. Empty ones don't count.
    long long CountSkipped() const { return m_skipped; }

private:
    bool ReadOnce(std::vector<StoredEvent>& events);
    /// Reads whole lines from `position` on and returns where they end. To a file that is complete nothing is added. Takes
    /// no more memory than the longest event.
    long long ReadLines(
        TvlUtils::SystemIO::FileHandle& file, long long position, bool isComplete, std::vector<StoredEvent>& events);
    void TakeLines(std::string_view bytes, std::vector<StoredEvent>& events);

    TvlString m_folder;
    EventLog m_log;
    std::set<TvlString> m_read;   // files put by that are done with
    long long m_position = 0;     // in the file that is written to
    long long m_skipped = 0;
};

}   // namespace ProductAnalytics

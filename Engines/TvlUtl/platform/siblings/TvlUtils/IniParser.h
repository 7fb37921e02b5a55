// A settings file (.ini) as a whole.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlUtils/ProfileText.h"

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace TvlUtils {

/// The sections and values of one file, read when the object is made. ProfileText tells what a file means. An object
/// belongs to one thread at a time.
class TVLSIBLINGS_API IniParser {
public:
    /// A name and its value.
    using Entry = std::pair<TvlString, TvlString>;
    /// A section's name and its entries.
    using Section = std::pair<TvlString, std::vector<Entry>>;

    /// The most lines that a file may have. An application has some hundred settings.
    static constexpr std::size_t kMaxLines = 65536;

    /// A file that can't be read is an empty one, with a line in the log unless there is none of this name. So is one of
    /// more than ProfileText::kMaxBytes or kMaxLines.
    explicit IniParser(const TvlString& path);

    /// Whether the file could not be read although there is one, and may be another time. False for a file that is beyond
    /// the limits, which was refused.
    bool HasFailed() const { return m_hasFailed; }
    /// All sections with their entries, in the order of the file. Names are told apart without case; of two with one name
    /// the first is given.
    std::vector<Section> GetAllData() const;
    /// Calls `take` with one after another of what GetAllData gives, which may be moved away: a file of thousands of entries
    /// never stands in memory as a whole.
    void ForEachSection(const std::function<void(Section&)>& take) const;
    /// The value of an entry, or `defaultValue` when there is none.
    TvlString GetString(const TvlString& section, const TvlString& name, const TvlString& defaultValue) const;
    /// Sets an entry and replaces the file in one step. False when that fails, when the file is there and could not be
    /// read, or for texts that would be read back as something else (see ProfileText::SetValue): object and file are as
    /// before then.
    bool SetString(const TvlString& section, const TvlString& name, const TvlString& value);

private:
    /// Empty bytes for a file that can't be read.
    std::string Read();

    TvlString m_path;
    bool m_isComplete = true;   // nothing of the file is missing here
    bool m_hasFailed = false;
    ProfileText m_text;
};

}   // namespace TvlUtils

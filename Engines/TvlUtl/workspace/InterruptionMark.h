// Marks beside the settings that tell a later process what an earlier one has left half done.
#pragma once

#include "siblings/TvlPlatform/TvlString.h"

#include <optional>

/// A file that stands beside the settings from the object's making until Done. It stays when the process ends in between,
/// or an exception goes past; a power cut does not take it away. Where it can't be made the work goes on without.
class InterruptionMark {
public:
    /// Work that can be interrupted, by the extension of its mark.
    static constexpr const wchar_t* kExtracting = L".extracting";   // the settings and their files are being replaced
    static constexpr const wchar_t* kApplying = L".applying";       // the preferences are being replaced

    InterruptionMark(const TvlString& settings, const wchar_t* work);
    InterruptionMark(const InterruptionMark&) = delete;
    InterruptionMark& operator=(const InterruptionMark&) = delete;
    ~InterruptionMark() = default;
    /// The work is done; the mark goes.
    void Done() const;
    /// Whether it could be made, or was there before.
    bool IsThere() const { return m_isThere; }

    /// Whether a process ended within the work. To be asked by who excludes others from it.
    /// Empty when that can't be looked at.
    static std::optional<bool> WasLeft(const TvlString& settings, const wchar_t* work);

private:
    TvlString m_path;
    bool m_isThere;
};

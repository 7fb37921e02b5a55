// The application's preferences as a whole: in the registry, and as settings of a workspace.
#pragma once

#include "siblings/TvlPlatform/TvlString.h"

#include <map>

/// Values by section and name, as the application means them. Sections separate their parts by "/"; case does not count.
class PreferenceTree {
public:
    struct Place {
        TvlString section;
        TvlString name;
        bool operator<(const Place& other) const;
    };
    using Values = std::map<Place, TvlString>;

    /// What stands under the application's key. Values that are no texts can't go into settings and are left out, with a
    /// line in the log.
    static PreferenceTree FromRegistry();
    /// What a settings file would put there; nothing when it can't be read.
    static PreferenceTree FromSettings(const TvlString& path);

    const Values& All() const { return m_values; }
    /// Replaces a settings file; false when it can't be written.
    bool Save(const TvlString& path) const;

private:
    void AddKey(const TvlString& key, const TvlString& section);

    Values m_values;
};

// The pairs of "guidmap.dat" in memory.
#pragma once

#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlUtils/FileLayer.h"
#include "siblings/TvlUtils/Singleton.h"
#include "windows/Types.h"

#include <compare>
#include <memory>

/// Order of identifiers in the file: from the last of the eight bytes to the first, then the third field, the second and
/// the first, each as an unsigned number.
std::strong_ordering CompareGuids(const GUID& a, const GUID& b);

/// Both directions of the map, sorted for searching. Read-only once it is made.
class CGUIDMap : public TvlUtils::Singleton<CGUIDMap, 0> {
public:
    /// Loads the map of the suite's data folder; in a unit test process that of the unit tests where there is none.
    CGUIDMap();
    virtual ~CGUIDMap();
    CGUIDMap(const CGUIDMap&) = delete;
    CGUIDMap& operator=(const CGUIDMap&) = delete;

    /// Reads a map in place of what is there; false, with no pair left, unless it is whole.
    /// @param length of the file in bytes: no table may reach beyond it
    bool Load(TvlUtils::SystemIO::FileHandle& file, long long length);

    /// The partner of an identifier, or null.
    const GUID* FindApplication(const GUID& engine) const;
    const GUID* FindEngine(const GUID& application) const;
    bool IsLoaded() const { return loaded; }

private:
    void Clear();
    bool LoadFile(const TvlString& path, bool& opened);

    std::int32_t count = 0;
    std::unique_ptr<GUID[]> engKeys;     // engine identifiers in order
    std::unique_ptr<GUID[]> appValues;   // their partners
    std::unique_ptr<GUID[]> appKeys;     // application identifiers in order
    std::unique_ptr<GUID[]> engValues;   // their partners
    bool loaded = false;
};

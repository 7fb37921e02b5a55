// The pairs of "guidmap.dat".
#pragma once

#include "siblings/TvlUtils/Singleton.h"
#include "windows/Types.h"

#include <cstdint>
#include <memory>
#include <span>

/// Engine and application GUIDs, searchable from both sides. Read-only once it is made.
class CGUIDMap : public TvlUtils::Singleton<CGUIDMap, 0> {
public:
    /// Reads the map of the data folder; in a unit test process the tests' data folder serves when it is missing.
    CGUIDMap();
    virtual ~CGUIDMap() = default;
    CGUIDMap(const CGUIDMap&) = delete;
    CGUIDMap& operator=(const CGUIDMap&) = delete;

    bool IsLoaded() const { return m_loaded; }
    /// Null when there is no partner.
    const GUID* FindApp(const GUID& engine) const { return Find(engine, m_engKeys.get(), m_appValues.get()); }
    const GUID* FindEng(const GUID& application) const { return Find(application, m_appKeys.get(), m_engValues.get()); }

    /// Takes the pairs from the bytes of a map; false, and no pairs, when they are not a whole map.
    bool Load(std::span<const std::uint8_t> bytes);

    /// The order of the map's tables: from the last byte of the structure to its first field.
    static int Compare(const GUID& a, const GUID& b);

private:
    const GUID* Find(const GUID& key, const GUID* keys, const GUID* values) const;

    std::int32_t m_count = 0;
    std::unique_ptr<GUID[]> m_engKeys;   // in search order, each with its partner at the same place
    std::unique_ptr<GUID[]> m_appValues;
    std::unique_ptr<GUID[]> m_appKeys;
    std::unique_ptr<GUID[]> m_engValues;
    bool m_loaded = false;
};

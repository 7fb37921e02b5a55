// Where the values of preferences are kept.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <map>
#include <mutex>
#include <optional>
#include <variant>
#include <vector>

/// A stored value: one alternative for each type that a preference can have.
using PrefValue = std::variant<bool, TvlString, std::vector<TvlString>>;

/// Values by the name of their preference: a group, a slash and a key. Safe to call from any thread.
class TVLSIBLINGS_API IPrefStore {
public:
    virtual ~IPrefStore() = default;
    /// The value under a name; empty when there is none or it can't be read.
    virtual std::optional<PrefValue> Read(const TvlString& name) const = 0;
    /// Stores a value; false when that failed.
    virtual bool Write(const TvlString& name, const PrefValue& value) = 0;
    /// Takes a value away, so that the preference has its default again; false when that failed.
    virtual bool Remove(const TvlString& name) = 0;
};

/// A store that lives as long as its object.
class TVLSIBLINGS_API MemoryPrefStore final : public IPrefStore {
public:
    std::optional<PrefValue> Read(const TvlString& name) const override;
    /// Never fails.
    bool Write(const TvlString& name, const PrefValue& value) override;
    bool Remove(const TvlString& name) override;

private:
    mutable std::mutex m_lock;
    std::map<TvlString, PrefValue> m_values;
};

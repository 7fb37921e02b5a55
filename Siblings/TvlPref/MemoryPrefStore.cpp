#include "siblings/TvlPref/PrefStore.h"

std::optional<PrefValue> MemoryPrefStore::Read(const TvlString& name) const
{
    const std::lock_guard hold(m_lock);
    const auto found = m_values.find(name);
    return found == m_values.end() ? std::nullopt : std::optional(found->second);
}

bool MemoryPrefStore::Write(const TvlString& name, const PrefValue& value)
{
    const std::lock_guard hold(m_lock);
    m_values.insert_or_assign(name, value);
    return true;
}

bool MemoryPrefStore::Remove(const TvlString& name)
{
    const std::lock_guard hold(m_lock);
    m_values.erase(name);
    return true;
}

// Preferences in the registry.
#pragma once

#include "siblings/TvlPref/PrefStore.h"

/// Keeps the preference "Group/Key" as the text value "Key" of the key "<product key>\<application>\Application
/// Preferences\Group" under HKEY_CURRENT_USER, in the form of TvlPref::ToText and TvlPref::EncodeText; further slashes of the
/// name separate keys. Reads and writes go through to the registry, each in one step: what others see is the old value or
/// the new one. A value that is no text is none of ours and reads as not there.
class TVLSIBLINGS_API RegistryPrefStore final : public IPrefStore {
public:
    /// Gives texts, which TvlPref::ValueAs makes values of.
    std::optional<PrefValue> Read(const TvlString& name) const override;
    bool Write(const TvlString& name, const PrefValue& value) override;
    bool Remove(const TvlString& name) override;
};

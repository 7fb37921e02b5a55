// What the application tells of itself when it starts.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

/// Texts that distinguish the applications of the suite.
class TVLSIBLINGS_API IAppStartupInit {
public:
    /// The application's own key and folder, where it keeps what it does not share; "Tovel" until it is set.
    const TvlString& GetRegistryName() const { return m_registryName; }
    /// For the application's start, before anything asks. The name must serve as one element of a path.
    void SetRegistryName(const TvlString& name) { m_registryName = name; }

private:
    TvlString m_registryName = L"Tovel";
};

namespace ApplicationInfo {

/// Lives as long as the process.
TVLSIBLINGS_API IAppStartupInit& Settings();

}   // namespace ApplicationInfo

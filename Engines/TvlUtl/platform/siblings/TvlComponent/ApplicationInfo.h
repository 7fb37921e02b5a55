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

    /// The application's file of texts and pictures in each language's "Data" folder; empty when it has none. A language
    /// without it is not for this application.
    const TvlString& GetResourceFileName() const { return m_resourceFileName; }
    /// For the application's start, before anything asks. The name must serve as one element of a path.
    void SetResourceFileName(const TvlString& name) { m_resourceFileName = name; }

private:
    TvlString m_registryName = L"Tovel";
    TvlString m_resourceFileName;
};

/// The screen that an application shows while it starts.
class TVLSIBLINGS_API IAppStartup {
public:
    /// Whether the screen is up.
    bool IsScreenUp() const { return m_giveWay != nullptr; }
    /// The screen is up; `giveWay` takes it out of the way of something that the user has to answer. Null when it is gone.
    void SetScreen(void (*giveWay)()) { m_giveWay = giveWay; }
    /// Tells the screen, if any, to give way.
    void GiveWay() const
    {
        if (m_giveWay)
            m_giveWay();
    }

private:
    void (*m_giveWay)() = nullptr;
};

namespace ApplicationInfo {

/// Lives as long as the process.
TVLSIBLINGS_API IAppStartupInit& Settings();
/// Lives as long as the process. For the thread that starts the application.
TVLSIBLINGS_API IAppStartup& AppStartup();

}   // namespace ApplicationInfo

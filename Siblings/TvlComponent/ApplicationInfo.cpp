#include "siblings/TvlComponent/ApplicationInfo.h"

namespace ApplicationInfo {

// Never destroyed: preferences are read while modules go away.
IAppStartupInit& Settings()
{
    static IAppStartupInit& settings = *new IAppStartupInit;
    return settings;
}

IAppStartup& AppStartup()
{
    static IAppStartup startup;
    return startup;
}

}   // namespace ApplicationInfo

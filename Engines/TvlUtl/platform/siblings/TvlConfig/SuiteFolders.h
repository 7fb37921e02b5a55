// Where the installed suite lies.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

namespace TvlConfig {

/// The installed suite's folder, read-only: TVL_SUITE_DIR of the environment, else the first of these that is there:
/// "Suite" beside the program, "Suite" beside this library, and the place that an installation gives it
/// ("share/TvlUtl/Suite" of the same prefix on linux). The folder beside the program when there is none.
TVLSIBLINGS_API TvlString GetSuiteDir();

}   // namespace TvlConfig

/// "Config" in the suite's folder: master files that users' own files start as.
TVLSIBLINGS_API TvlString INIGetConfigDir();

// Where the installed suite lies.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

namespace TvlConfig {

/// The installed suite's folder, read-only: TVL_SUITE_DIR of the environment, or "Suite" beside the program.
TVLSIBLINGS_API TvlString GetSuiteDir();

}   // namespace TvlConfig

/// "Config" in the suite's folder: master files that users' own files start as.
TVLSIBLINGS_API TvlString INIGetConfigDir();

/// "Workspaces" in the suite's folder: the workspaces that it comes with, and thumbnails for new ones.
TVLSIBLINGS_API TvlString INIGetBootDefaultWorkspaceDir();

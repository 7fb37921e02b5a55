// Where the installed suite lies.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

/// Folders of the suite and of the user, and what the configuration calls in the library.
namespace TvlConfig {

/// The installed suite's folder, read-only: TVL_SUITE_DIR of the environment, else the first of these that is there:
/// "Suite" beside the program, "Suite" beside this library, and the place that an installation gives it
/// ("share/TvlUtl/Suite" of the same prefix on linux). The folder beside the program when there is none.
TVLSIBLINGS_API TvlString GetSuiteDir();

}   // namespace TvlConfig

/// "Config" in the suite's folder: master files that users' own files start as.
TVLSIBLINGS_API TvlString INIGetConfigDir();
/// "Languages" in the suite's folder, which has a folder for each language; empty when the suite has none.
TVLSIBLINGS_API TvlString INIGetLanguageDir();
/// The chosen language's folder of the program's own, "Languages/<DIR>" beside it, where a program keeps resource libraries
/// that the suite lacks. Empty while no language is chosen. Kept once it is known. Any thread may call.
TVLSIBLINGS_API TvlString INIGetLangRelProgDir();
/// Lets the next INIGetLangRelProgDir ask for the language again.
TVLSIBLINGS_API void INIClearLangRelProgDirCache();

/// "Workspaces" in the suite's folder: the workspaces that it comes with, and thumbnails for new ones.
TVLSIBLINGS_API TvlString INIGetBootDefaultWorkspaceDir();

// Where the user's own files lie.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

namespace TvlConfig {

/// The folder of the user's files: TVL_USER_DIR of the environment, or "Tovel/Suite" in the user's application data.
/// Empty when the system tells of no such place. The folder need not exist yet.
TVLSIBLINGS_API TvlString GetUserDir();

}   // namespace TvlConfig

/// "Config" in the folder of the user's files, made when it is missing.
TVLSIBLINGS_API TvlString GetUserProfileConfigDir();

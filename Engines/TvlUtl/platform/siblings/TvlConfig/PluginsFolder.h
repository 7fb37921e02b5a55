// Where the suite's plug-ins are installed.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

/// "Plugins" in the installed suite's folder, without a separator at the end. The folder need not exist.
TVLSIBLINGS_API TvlString INIGetPluginsDir();

// What kind of process this is.
#pragma once

#include "siblings/SiblingsApi.h"

namespace TvlUtils::AppUtils {

/// Whether the process runs in the sandbox of an application store.
TVLSIBLINGS_API bool IsSandboxedApp();

}   // namespace TvlUtils::AppUtils

// Where the product keeps its registry values.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

/// The product's key below a root, without a separator at either end.
TVLSIBLINGS_API TvlString INIGetRegistryProductKey();

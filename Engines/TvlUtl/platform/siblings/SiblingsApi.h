// Export mark of the sibling libraries' stand-ins.
#pragma once

#include "windows/Types.h"

#if defined(TVLSIBLINGS_BUILD)
#define TVLSIBLINGS_API TVL_EXPORT
#else
#define TVLSIBLINGS_API TVL_IMPORT
#endif

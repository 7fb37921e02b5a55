// Export mark of the sibling libraries' stand-ins.
#pragma once

#include "windows/Types.h"

/// Marks what the library of the stand-ins exports: exported where that library is built, imported elsewhere.
#if defined(TVLSIBLINGS_BUILD)
#define TVLSIBLINGS_API TVL_EXPORT
#else
#define TVLSIBLINGS_API TVL_IMPORT
#endif

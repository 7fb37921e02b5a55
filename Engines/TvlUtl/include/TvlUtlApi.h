// Export marks of the library.
#pragma once

#include "windows/Types.h"

/// Marks what the shared library exports. Programs that link the library's objects define TVLUTL_STATIC.
#if defined(TVLUTL_STATIC)
#define TVLUTL_API
#elif defined(TVLUTL_BUILD)
#define TVLUTL_API TVL_EXPORT
#else
#define TVLUTL_API TVL_IMPORT
#endif

/// Defines a second export name of a noexcept function that stands earlier in the same source file: one address, two
/// names.
#define TVLUTL_ALIAS(Result, name, parameters, target)                                                                 \
    TVLUTL_API Result name parameters noexcept __attribute__((alias(#target)));

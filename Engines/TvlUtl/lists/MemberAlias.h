// Flat names for members: one address, two names. A member takes its object where the flat function takes the handle.
#pragma once

#include "TvlUtlApi.h"

#ifndef __clang__
// GCC compares the types, which differ by the object.
#pragma GCC diagnostic ignored "-Wattribute-alias"
#endif

/// Gives a noexcept member that stands earlier in the same source file a flat export name. `member` is its name as linkers
/// know it.
#define TVLUTL_MEMBER_ALIAS(Result, name, parameters, member)                                                          \
    TVLUTL_API Result name parameters noexcept __attribute__((alias(member)));

/// How linkers spell LONG, the integer of 32 bits that is the compiler's long where that is as short.
#if __SIZEOF_LONG__ == 4
#define LONG_LETTER "l"
#else
#define LONG_LETTER "i"
#endif

// Versions of managed runtimes.
#pragma once

#include <compare>
#include <string_view>

namespace TvlUtl {

struct RuntimeVersion {
    unsigned majorNumber = 0;
    unsigned minorNumber = 0;
    unsigned build = 0;

    auto operator<=>(const RuntimeVersion&) const = default;
};

/// Reads up to three numbers that points part, behind a "v" or not; numbers that are not there are 0 and what comes behind
/// the third is not looked at. A character above "9" adds its code less that of "0", as a digit does; a number too large
/// is taken modulo 2^32. Throws std::invalid_argument for a character below "0".
RuntimeVersion ParseRuntimeVersion(std::wstring_view text);

/// The answer of IsDotNetInstalled, found out anew.
bool DetectDotNet();

}   // namespace TvlUtl

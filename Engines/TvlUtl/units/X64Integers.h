// Integers of floating-point values as a 64-bit processor makes them: documents hold values that were stored so, and the
// language defines no result for what does not fit.
#pragma once

#include <cstdint>
#include <limits>

/// Truncated toward zero; the smallest 32-bit integer for NaN and what is out of range.
constexpr std::int32_t ToInt32AsX64(double value)
{
    return value > -2147483649.0 && value < 2147483648.0 ? static_cast<std::int32_t>(value)
                                                         : std::numeric_limits<std::int32_t>::min();
}

/// Truncated toward zero; 2 to the power 63 for NaN and what is out of range.
constexpr std::uint64_t ToUInt64AsX64(double value)
{
    return value > -1.0 && value < 18446744073709551616.0 ? static_cast<std::uint64_t>(value) : std::uint64_t{1} << 63;
}

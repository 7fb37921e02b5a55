// When a value passes for a stored one.
#pragma once

#include <cmath>

/// Whether `value` differs from `stored` by less than a thousandth of it, or of itself where `stored` is 0.0.
inline bool IsNear(double stored, double value)
{
    constexpr double kTolerance = 0.001;
    return stored == value || std::fabs((value - stored) / (stored == 0.0 ? value : stored)) < kTolerance;
}

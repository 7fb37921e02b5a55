// A range of values that somebody else owns.
#pragma once

#include <span>

namespace TvlUtils {

/// Values in a row, `const T` for reading alone. It may be shorter than the values live, never longer.
template <class T>
using array_view = std::span<T>;

}   // namespace TvlUtils

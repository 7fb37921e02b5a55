// Texts taken apart.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <utility>

namespace TvlUtils::String {

/// The text before the first `separator` and that behind it. Without one all is the first part; `wholeIsSecond` makes it
/// the second then.
TVLSIBLINGS_API std::pair<TvlString, TvlString> SplitAtFirst(
    const TvlString& text, wchar_t separator, bool wholeIsSecond = false);

}   // namespace TvlUtils::String

// Numbers in texts.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

namespace TvlUtils::String {

/// "true" or "false".
TVLSIBLINGS_API TvlString ToStringW(bool value);
TVLSIBLINGS_API TvlString ToStringW(int value);
/// The shortest text that reads back as the same number, with a point, whatever the user's locale: "0.1", "1e+20", "2".
TVLSIBLINGS_API TvlString ToStringW(double value);
TvlString ToStringW(const void*) = delete;

/// The number that a text begins with behind blanks, with a point as decimal separator whatever the user's locale; 0.0
/// when it begins with none. A number out of range is infinite or 0.0. Words such as "nan" are no numbers.
TVLSIBLINGS_API double DblFromString(const TvlString& text);

}   // namespace TvlUtils::String

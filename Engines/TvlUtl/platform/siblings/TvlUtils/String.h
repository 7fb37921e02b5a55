// Numbers in texts.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

namespace TvlUtils::String {

/// The number that a text begins with behind blanks, with a point as decimal separator whatever the user's locale; 0.0
/// when it begins with none. A number out of range is infinite or 0.0. Words such as "nan" are no numbers.
TVLSIBLINGS_API double DblFromString(const TvlString& text);

}   // namespace TvlUtils::String

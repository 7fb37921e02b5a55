// The user's separators, as the measure texts need them on every call. Usable before anything was read.
#pragma once

#include "siblings/TvlPlatform/TvlString.h"

/// Four settings of the user's locale. For the user interface thread.
struct LocaleCache {
    TvlString listSeparator = L",";   // up to 3 characters, as the others
    TvlString decimalSeparator = L".";
    TvlString negativeSign = L"-";
    bool leadingZero = true;   // whether "0.5" is written with its zero
};

const LocaleCache& CurrentLocaleCache();
/// Reads the four settings anew; false at the first that can't be read or is longer than 3 characters, with those read
/// before it changed.
bool FillLocaleCache();

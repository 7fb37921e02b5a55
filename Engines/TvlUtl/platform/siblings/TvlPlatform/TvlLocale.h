// The user's locale.
#pragma once

#include "siblings/SiblingsApi.h"

namespace TvlLocale {

/// Id of the user's default locale.
TVLSIBLINGS_API LCID GetUserLocaleID();

}   // namespace TvlLocale

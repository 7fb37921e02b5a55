// The user's locale.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

/// The region that the user has set.
namespace TvlLocale {

/// Id of the user's default locale.
TVLSIBLINGS_API LCID GetUserLocaleID();

/// Two letters of the user's country by ISO 3166, such as "DE"; empty when the system tells of none.
TVLSIBLINGS_API TvlString GetCurrentCountryISOCode();

}   // namespace TvlLocale

#include "siblings/TvlPlatform/TvlLocale.h"

#include "windows/Locale.h"

namespace TvlLocale {

LCID GetUserLocaleID() { return Ports::Locale::Get().UserLocaleId(); }

}   // namespace TvlLocale

#include "siblings/TvlPlatform/TvlLocale.h"

#include "windows/Locale.h"

namespace TvlLocale {

LCID GetUserLocaleID() { return Ports::Locale::Get().UserLocaleId(); }

TvlString GetCurrentCountryISOCode()
{
    constexpr std::size_t kCapacity = 9;   // LOCALE_SISO3166CTRYNAME is no longer
    return Ports::Locale::Get().Setting(Ports::LocaleSetting::CountryCode, kCapacity).value_or(L"");
}

}   // namespace TvlLocale

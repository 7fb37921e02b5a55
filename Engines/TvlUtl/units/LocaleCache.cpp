#include "LocaleCache.h"

#include "Units.h"
#include "windows/Locale.h"

namespace {
constexpr std::size_t kSettingCapacity = 4;   // characters, end mark included

LocaleCache cache;
int initialised = 0;

bool Read(Ports::LocaleSetting setting, TvlString& text)
{
    const auto value = Ports::Locale::Get().Setting(setting, kSettingCapacity);
    if (value)
        text = *value;
    return value.has_value();
}
}   // namespace

const LocaleCache& CurrentLocaleCache() { return cache; }

bool FillLocaleCache()
{
    TvlString leadingZero;
    if (!Read(Ports::LocaleSetting::ListSeparator, cache.listSeparator)
        || !Read(Ports::LocaleSetting::DecimalSeparator, cache.decimalSeparator)
        || !Read(Ports::LocaleSetting::LeadingZero, leadingZero))
        return false;
    cache.leadingZero = leadingZero == L"1";
    return Read(Ports::LocaleSetting::NegativeSign, cache.negativeSign);
}

int UNITInitialize()
{
    if (initialised < 1 && !FillLocaleCache())
        return 0;
    initialised = 1;
    return 1;
}

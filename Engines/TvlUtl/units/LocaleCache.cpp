#include "LocaleCache.h"

#include "Units.h"
#include "windows/Locale.h"

namespace {
LocaleCache cache;
int initialised = 0;

bool Read(const Ports::Locale& locale, Ports::LocaleSetting setting, ShortSetting& into)
{
    const int length = locale.CopySetting(setting, into.text, ShortSetting::kCapacity);
    if (length >= 0)
        into.length = length;
    return length >= 0;
}
}   // namespace

const LocaleCache& CurrentLocaleCache() { return cache; }

bool FillLocaleCache()
{
    const Ports::Locale& locale = Ports::Locale::Get();
    ShortSetting leadingZero{};
    if (!Read(locale, Ports::LocaleSetting::ListSeparator, cache.listSeparator)
        || !Read(locale, Ports::LocaleSetting::DecimalSeparator, cache.decimalSeparator)
        || !Read(locale, Ports::LocaleSetting::LeadingZero, leadingZero))
        return false;
    cache.leadingZero = leadingZero.length == 1 && *leadingZero.text == L'1';
    return Read(locale, Ports::LocaleSetting::NegativeSign, cache.negativeSign);
}

int UNITInitialize() noexcept
try {
    if (initialised < 1 && !FillLocaleCache())
        return 0;
    initialised = 1;
    return 1;
} catch (...) {
    return 0;
}

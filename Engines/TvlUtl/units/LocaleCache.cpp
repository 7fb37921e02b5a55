#include "LocaleCache.h"

#include "Units.h"
#include "windows/Locale.h"

namespace {
LocaleCache cache;
unsigned cacheVersion = 0;   // of the settings that the cache holds; 0 for none
int initialised = 0;

bool Read(const Ports::Locale& locale, Ports::LocaleSetting setting, ShortSetting& into)
{
    const auto text = locale.Setting(setting, ShortSetting::kCapacity);
    if (!text)
        return false;
    into.length = static_cast<int>(text->copy(into.text, ShortSetting::kCapacity));
    return true;
}

bool ReadAll(const Ports::Locale& locale)
{
    ShortSetting leadingZero{};
    if (!Read(locale, Ports::LocaleSetting::ListSeparator, cache.listSeparator)
        || !Read(locale, Ports::LocaleSetting::DecimalSeparator, cache.decimalSeparator)
        || !Read(locale, Ports::LocaleSetting::LeadingZero, leadingZero))
        return false;
    cache.leadingZero = leadingZero.View() == L"1";
    return Read(locale, Ports::LocaleSetting::NegativeSign, cache.negativeSign);
}
}   // namespace

const LocaleCache& CurrentLocaleCache() { return cache; }

bool FillLocaleCache()
{
    const Ports::Locale& locale = Ports::Locale::Get();
    const unsigned version = locale.SettingsVersion();
    if (version != 0 && version == cacheVersion)
        return true;
    const bool isRead = ReadAll(locale);
    cacheVersion = isRead ? version : 0;
    return isRead;
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

// The user's regional settings against ICU's own data, in twenty locales.
#include "Locales.h"
#include "WRegionalSupportFormat.h"
#include "windows/Locale.h"

#include "siblings/TvlPlatform/TextEncoding.h"

#include <gtest/gtest.h>
#include <memory>
#include <unicode/decimfmt.h>

namespace {

using Ports::Locale;
using Ports::LocaleSetting;

std::string Symbol(const icu::DecimalFormat& format, icu::DecimalFormatSymbols::ENumberFormatSymbol symbol)
{
    std::string bytes;
    format.getDecimalFormatSymbols()->getSymbol(symbol).toUTF8String(bytes);
    return bytes;
}

std::string Setting(LocaleSetting setting)
{
    return TvlPlatform::ToUtf8(Locale::Get().Setting(setting, 80).value_or(L"none"));
}

class LocaleData : public testing::Test {
protected:
    void TearDown() override { Locale::Get().UseLocale(L"en-US"); }
};

TEST_F(LocaleData, SettingsAgreeWithTheDataOfTheSystem)
{
    using Symbols = icu::DecimalFormatSymbols;
    for (const char* const name : kLocales) {
        ASSERT_TRUE(Locale::Get().UseLocale(TvlPlatform::FromUtf8(name))) << name;
        UErrorCode status = U_ZERO_ERROR;
        const icu::Locale locale = icu::Locale::forLanguageTag(name, status);
        const std::unique_ptr<icu::NumberFormat> format(icu::NumberFormat::createInstance(locale, status));
        const auto& decimal = dynamic_cast<const icu::DecimalFormat&>(*format);
        EXPECT_EQ(Setting(LocaleSetting::DecimalSeparator), Symbol(decimal, Symbols::kDecimalSeparatorSymbol)) << name;
        EXPECT_EQ(Setting(LocaleSetting::ThousandsSeparator), Symbol(decimal, Symbols::kGroupingSeparatorSymbol))
            << name;
        const auto minus = Symbol(decimal, Symbols::kMinusSignSymbol);
        EXPECT_EQ(Setting(LocaleSetting::NegativeSign), minus == kTypographicMinus ? "-" : minus) << name;
        EXPECT_EQ(Setting(LocaleSetting::Grouping)[0] - '0', decimal.getGroupingSize()) << name;
    }
    EXPECT_TRUE(Locale::Get().UseLocale(L"hi-IN"));
    EXPECT_EQ(Setting(LocaleSetting::Grouping), "3;2;0");
    EXPECT_FALSE(Locale::Get().UseLocale(L"xx-YY"));
    EXPECT_FALSE(Locale::Get().UseLocale(L""));
}

TEST_F(LocaleData, NumbersAreGroupedWithTheLocalesSeparators)
{
    for (const char* const name : kLocales) {
        ASSERT_TRUE(Locale::Get().UseLocale(TvlPlatform::FromUtf8(name))) << name;
        const std::string decimal = Setting(LocaleSetting::DecimalSeparator);
        const std::string thousands = Setting(LocaleSetting::ThousandsSeparator);
        TvlString out;
        ASSERT_TRUE(
            WRegionalSupportFormat().GetValueInLocaleFormat(TvlPlatform::FromUtf8("1234567" + decimal + "89 mm"), out));
        EXPECT_EQ(TvlPlatform::ToUtf8(out), "1" + thousands + "234" + thousands + "567" + decimal + "89 mm") << name;
    }
}

}   // namespace

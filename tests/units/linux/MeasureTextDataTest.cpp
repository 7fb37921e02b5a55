// Measure text against ICU's number text, in the locales of the world.
#include "Locales.h"
#include "Units.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "windows/Locale.h"

#include <gtest/gtest.h>
#include <memory>
#include <unicode/decimfmt.h>

namespace {

constexpr double kMillimetre = 10000.0;
// Exact in binary with three decimals, so that every way of rounding agrees.
constexpr double kValues[] = {
    0.0, 0.125, -0.125, 1.5, 999.875, 1000.0, -1000.0, 12345.625, -987654.375, 1234567.5, 123456789.125, -1234567890.0};

std::string PeerText(icu::DecimalFormat& format, double value)
{
    icu::UnicodeString text;
    std::string bytes;
    return format.format(value, text).toUTF8String(bytes);
}

TEST(MeasureTextData, DigitsSeparatorsAndGroupingAgree)
{
    for (const char* const name : kLocales) {
        ASSERT_TRUE(Ports::Locale::Get().UseLocale(TvlPlatform::FromUtf8(name))) << name;
        UErrorCode status = U_ZERO_ERROR;
        const icu::Locale locale = icu::Locale::forLanguageTag(name, status);
        const std::unique_ptr<icu::NumberFormat> peer(icu::NumberFormat::createInstance(locale, status));
        auto& decimal = dynamic_cast<icu::DecimalFormat&>(*peer);
        icu::DecimalFormatSymbols symbols = *decimal.getDecimalFormatSymbols();
        symbols.setSymbol(icu::DecimalFormatSymbols::kZeroDigitSymbol, u"0");   // and the other nine with it
        if (symbols.getSymbol(icu::DecimalFormatSymbols::kMinusSignSymbol)
            == icu::UnicodeString::fromUTF8(kTypographicMinus))
            symbols.setSymbol(icu::DecimalFormatSymbols::kMinusSignSymbol, u"-");
        decimal.setDecimalFormatSymbols(symbols);
        decimal.setMinimumFractionDigits(3);
        decimal.setMaximumFractionDigits(3);
        // The first number of the grouping counts for all groups.
        decimal.setSecondaryGroupingSize(0);
        decimal.setMinimumGroupingDigits(1);
        if (locale.isRightToLeft()) {
            // Where the language is read from the right the sign stands there too.
            icu::UnicodeString sign;
            decimal.setNegativeSuffix(decimal.getNegativePrefix(sign));
            decimal.setNegativePrefix(icu::UnicodeString());
        }
        for (const double value : kValues)
            EXPECT_EQ(TvlPlatform::ToUtf8(UNITConvToUnitString(value * kMillimetre, 2, 0.0)), PeerText(decimal, value))
                << name;
    }
    Ports::Locale::Get().UseLocale(L"en-US");
}

}   // namespace

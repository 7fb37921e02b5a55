// The user's separators, before and after reads that fail.
#include "LocaleCache.h"

#include "FakeLocale.h"
#include "Units.h"

#include <gtest/gtest.h>

namespace {

using Ports::LocaleSetting;

void ExpectCache(std::wstring_view list, std::wstring_view decimal, std::wstring_view sign, bool leadingZero)
{
    const LocaleCache& cache = CurrentLocaleCache();
    EXPECT_TRUE(cache.listSeparator.View() == list && cache.decimalSeparator.View() == decimal);
    EXPECT_TRUE(cache.negativeSign.View() == sign);
    EXPECT_EQ(cache.leadingZero, leadingZero);
}

// The order of the reads shows in what a failed one leaves behind.
TEST(LocaleCache, KeepsWhatWasReadBeforeAFailure)
{
    ExpectCache(L",", L".", L"-", true);
    FakeLocale locale;
    auto& settings = locale.settings;
    settings = {{LocaleSetting::ListSeparator, L";"}, {LocaleSetting::DecimalSeparator, L"long"}};
    EXPECT_EQ(UNITInitialize(), 0);
    ExpectCache(L";", L".", L"-", true);
    settings[LocaleSetting::DecimalSeparator] = L"abc";
    EXPECT_EQ(UNITInitialize(), 0);
    ExpectCache(L";", L"abc", L"-", true);
    settings[LocaleSetting::LeadingZero] = L"01";   // anything but "1" is none
    EXPECT_EQ(UNITInitialize(), 0);
    ExpectCache(L";", L"abc", L"-", false);
    settings[LocaleSetting::NegativeSign] = L"\u2212";
    EXPECT_EQ(UNITInitialize(), 1);
    ExpectCache(L";", L"abc", L"\u2212", false);

    settings.clear();
    const int reads = locale.reads;
    EXPECT_EQ(UNITInitialize(), 1);
    EXPECT_EQ(locale.reads, reads);
    EXPECT_FALSE(FillLocaleCache());
    ExpectCache(L";", L"abc", L"\u2212", false);
}

}   // namespace

// Measures as text.
#include "FakeLocale.h"
#include "WRegionalSupportFormat.h"
#include "WUnit.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

struct TextRow {
    int display;
    double value;
    unsigned form;
    int decimals;
    const wchar_t* text;
};

TEST(WUnit, FormatsValues)
{
    constexpr TextRow kRows[] = {
        {2, 12.3456, 1, -1, L"12.346 mm"},
        {2, 12.5, 1, -1, L"12.5 mm"},
        {2, 12.0, 0, -1, L"12"},
        {11, 100, 0, -1, L"100"},
        {2, 0.0005, 0, -1, L"0.001"},
        {2, -0.0004, 0, -1, L"-0"},
        {2, 1.5, 7, -1, L"1.5"},
        {1, 1.5, 4, -1, L"1.5\""},
        {1, 2.0, 3, -1, L"2 inches"},
        {2, 2.0, 4, -1, L"2 millimeters"},
        {2, 1.23456, 0, 1, L"1.2"},
        {3, 1.5, 1, -1, L"1 pc 6 pt"},
        {3, 1.5, 0, -1, L"1 6"},
        {29, 5.5, 4, -1, L"5° 30′"},
        {28, -1.2625, 4, -1, L"-1° 15′ 45″"},
        {33, 1.75, 0, -1, L"1 3/4"},
        {33, 0.25, 0, -1, L"1/4"},
        {33, 0.5, 0, -1, L"1/2"},
        {33, 0.001, 0, -1, L"0"},
        {33, 2.999, 0, -1, L"3"},
        {33, 7.999, 0, -1, L"8"},
        {33, -1.5, 0, -1, L"-1 1/2"},
        {33, 1.5, 4, -1, L"1 1/2\""},
        {33, 1.5, 1, -1, L"1 1/2 in"},
        {31, 5.5, 4, -1, L"5' 6\""},
        {39, 50, 4, -1, L"50%"},
        {8, 1.0 / 3.0, 0, -1, L"0.333333333"},
    };
    WUnit& units = WUnit::GetDefaultWUnit();
    for (const auto& [display, value, form, decimals, text] : kRows) {
        units.GetUnitString(display, form);   // loads every part of a chain
        EXPECT_EQ(units.DisplayUnitValueAsString(display, value, form, decimals), text) << display << " " << value;
    }
}

// Numbers are written with a point, and trimmed by the user's separator.
TEST(WUnit, KeepsThePointWhereTheUserHasAnotherSeparator)
{
    FakeLocale locale;
    locale.settings = FakeLocale::German();
    WUnit& units = WUnit::GetDefaultWUnit();
    EXPECT_EQ(units.DisplayUnitValueAsString(2, 12.0, 1, -1), L"12. mm");
    EXPECT_EQ(units.DisplayUnitValueAsString(2, 12.5, 1, -1), L"12.5 mm");
    locale.settings.clear();
    EXPECT_EQ(units.DisplayUnitValueAsString(2, 12.0, 0, -1), L"12.");
    EXPECT_EQ(units.DisplayUnitValueAsString(2, 100.0, 0, 0), L"100");
}

TEST(WUnit, ShowsAnInfinitePartOfAChainThatNothingLoaded)
{
    WUnit units;
    units.AddUnitDisplay(3);
    const TvlString text = units.DisplayUnitValueAsString(3, 1.5, 0, -1);
    EXPECT_GE(text.Find(L"inf"), 0) << TvlPlatform::ToUtf8(text);
}

TEST(WUnit, FormatsWhateverItIsGiven)
{
    WUnit& units = WUnit::GetDefaultWUnit();
    for (const double value : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
             -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::max(), 1e-320})
        for (const int display : {2, 3, 28, 31, 33})
            EXPECT_GT(units.DisplayUnitValueAsString(display, value, 1, -1).GetLength(), 0);
}

TEST(WUnit, NamesDisplays)
{
    WUnit& units = WUnit::GetDefaultWUnit();
    EXPECT_EQ(units.GetUnitString(3, 3), L"picas points");
    EXPECT_EQ(units.GetUnitString(33, 1), L"in");
    EXPECT_EQ(units.GetUnitDisplayString(33, 1), L"in (fractions)");
    EXPECT_EQ(units.GetUnitString(22, 1), L"");
    EXPECT_EQ(units.GetUnitString(1, 9), L"");
}

// A locale id of its own makes the cached settings follow.
class RegionalFormat : public testing::Test {
protected:
    /// An id that no settings were cached for.
    static LCID NextId()
    {
        static LCID last = 0x10000;
        return ++last;
    }

    FakeLocale locale{NextId()};
    WRegionalSupportFormat format;

    TvlString Format(const wchar_t* text, bool expected = true)
    {
        TvlString out = L"before";
        EXPECT_EQ(format.GetValueInLocaleFormat(text, out), expected) << text;
        return out;
    }
};

TEST_F(RegionalFormat, FollowsTheUsersSeparators)
{
    locale.settings = FakeLocale::German();
    locale.localeId = NextId();
    EXPECT_EQ(Format(L"1234,5 mm"), L"1.234,5 mm");
    EXPECT_EQ(Format(L"1234.5"), L"12.345");   // the point is a thousands separator here
    EXPECT_EQ(Format(L"-12"), L"-12");
    EXPECT_EQ(Format(L"abc", false), L"abc");
    EXPECT_EQ(Format(L"", false), L"before");
    EXPECT_EQ(Format(L"0,12345678901"), L"0,123456789");   // nine digits at most
    EXPECT_EQ(Format(L"1-2", false), L"1-2");
    TvlString out = L"before";
    EXPECT_TRUE(format.RemoveThousandSeptFromValue(L"1.000.000", out));
    EXPECT_EQ(out, L"1000000");
    EXPECT_FALSE(format.RemoveThousandSeptFromValue(L"1000", out));
    EXPECT_EQ(out, L"1000000");
}

TEST_F(RegionalFormat, MirrorsTheSignForRightToLeftReaders)
{
    struct Row {
        const wchar_t* order;
        const wchar_t* text;
        const wchar_t* mirrored;
    };
    constexpr Row kRows[] = {{L"0", L"(1,234)", L"(1,234)"}, {L"1", L"-1,234", L"1,234-"},
        {L"2", L"- 1,234", L"1,234 -"}, {L"3", L"1,234-", L"-1,234"}, {L"4", L"1,234 -", L"- 1,234"}};
    for (const auto& [order, text, mirrored] : kRows) {
        locale.settings[Ports::LocaleSetting::NegativeNumberOrder] = order;
        for (const LANGID language : {0x0409, 0x040D}) {   // English, Hebrew
            locale.language = language;
            locale.localeId = NextId();
            EXPECT_EQ(Format(L"-1234"), language == 0x0409 ? text : mirrored) << order;
        }
    }
}

TEST_F(RegionalFormat, TakesTheDecimalsOfTheTextAlone)
{
    locale.localeId = NextId();
    for (const unsigned digits : {0u, 4u}) {
        format.SetNumFractionalDigit(digits);
        EXPECT_EQ(Format(L"1234 mm"), L"1,234 mm");
        EXPECT_EQ(Format(L"1234.50 mm"), L"1,234.50 mm");
    }
}

TEST_F(RegionalFormat, ReadsSettingsOncePerLocale)
{
    locale.settings[Ports::LocaleSetting::Grouping] = L"3;2;0";
    locale.localeId = NextId();
    EXPECT_EQ(Format(L"12345678"), L"12,345,678");   // the first number of the grouping counts
    const int reads = locale.reads;
    Format(L"1");
    EXPECT_EQ(locale.reads, reads);
}

TEST_F(RegionalFormat, NeedsNoSystemForPlainNumbers)
{
    const Ports::NumberFormat plain{0, 1, 3, L".", L",", 1};
    std::mt19937 random(4711);
    const auto digits = [&](unsigned most) {
        std::wstring text(random() % (most + 1), L'0');
        for (wchar_t& c : text)
            c = random() % 3 ? static_cast<wchar_t>(L'0' + random() % 10) : L'0';
        return text;
    };
    for (int i = 0; i < 5'000; ++i) {
        const std::wstring fraction = digits(12);
        const bool hasPoint = random() % 4 != 0;
        std::wstring number = (random() % 3 ? L"" : L"-") + digits(20) + (hasPoint ? L"." + fraction : L"");
        if (number.find_first_of(L"0123456789") == std::wstring::npos)
            continue;
        Ports::NumberFormat expected = plain;
        expected.digits = hasPoint ? static_cast<UINT>(std::min<std::size_t>(fraction.size(), 9)) : 0;
        const auto system = Ports::Locale::Get().FormatNumber(number, expected);
        ASSERT_TRUE(system) << TvlPlatform::ToUtf8(number);
        EXPECT_EQ(Format((number + L" mm").c_str()), TvlString(*system + L" mm")) << TvlPlatform::ToUtf8(number);
    }
}

TEST_F(RegionalFormat, WorksWithoutAnySetting)
{
    locale.settings.clear();
    locale.localeId = NextId();
    EXPECT_EQ(Format(L"1234.5"), L"1235");   // no decimals without a separator
    double value = 0.0;
    EXPECT_EQ(WUnit::GetDefaultWUnit().StringToValue(2, L"1,5", value, 256 | 31, DRG::Radians), 0);
    EXPECT_EQ(WUnit::GetDefaultWUnit().StringToValue(2, L"15 mm", value, 256 | 31, DRG::Radians), 1);
    EXPECT_EQ(value, 15.0);
}

TEST_F(RegionalFormat, OnlyTheWholeListSeparatorPartsTwelfths)
{
    locale.settings = FakeLocale::German();
    locale.settings[Ports::LocaleSetting::ListSeparator] = L"; ";
    locale.localeId = NextId();
    double value = 0.0;
    EXPECT_EQ(WUnit::GetDefaultWUnit().StringToValue(3, L"1;6", value, 256 | 31, DRG::Radians), 1);
    EXPECT_EQ(value, 7.0);
}

TEST_F(RegionalFormat, FieldTextsFollowTheLocale)
{
    locale.settings = FakeLocale::German();
    locale.localeId = NextId();
    Format(L"1");
    struct Row {
        int display;
        const wchar_t* text;
        double value;
    };
    constexpr Row kRows[] = {
        {2, L"1,5", 1.5}, {2, L"1.000", 1000.0}, {3, L"1;6", 1.5}, {3, L"-1;6", -1.5}, {12, L"1;6", 1.5}};
    for (const auto& [display, text, expected] : kRows) {
        double value = 0.0;
        EXPECT_EQ(WUnit::GetDefaultWUnit().StringToValue(display, text, value, 256 | 31, DRG::Radians), 1) << text;
        EXPECT_EQ(value, expected) << text;
    }
}

}   // namespace

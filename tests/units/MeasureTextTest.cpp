// Base values as measure text.
#include "FakeLocale.h"
#include "FakeWindowing.h"
#include "Units.h"
#include "siblings/TvlFeatureManagement/Features.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr double kInch = 254000.0;
constexpr double kMillimetre = 10000.0;
constexpr double kPica = 42333.333333333336;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

struct TextRow {
    double base;
    int unit;
    unsigned decimals;
    const wchar_t* text;
};

class MeasureText : public testing::Test {
protected:
    static LCID NextId()
    {
        static LCID last = 0x20000;
        return ++last;
    }

    void Use(const FakeLocale::Settings& settings)
    {
        locale.settings = settings;
        locale.localeId = NextId();
    }
    template <std::size_t count>
    static void Check(const TextRow (&rows)[count])
    {
        for (const auto& [base, unit, decimals, text] : rows)
            EXPECT_EQ(UNITConvToUnitAndString(base, unit, 0.0, decimals), text) << base << " in " << unit;
    }

    FakeLocale locale{NextId()};
    FakeWindowing windowing;
};

TEST_F(MeasureText, RoundsGroupsAndSigns)
{
    constexpr TextRow kRows[] = {
        {kInch * 1.5, 1, 0, L"1.50000"},
        {kMillimetre * 1234567.8914, 2, 0, L"1,234,567.891"},
        {kMillimetre * -12.0005, 2, 0, L"-12.001"},
        {kMillimetre * -0.0004, 2, 0, L"0.000"},
        {kMillimetre * -0.0009, 2, 0, L"0.000"},   // before it is rounded
        {kMillimetre * 2.5, 2, kUnitNoDecimals, L"3"},
        {kMillimetre * -2.5, 2, kUnitNoDecimals, L"-3"},
        {kMillimetre * 0.1, 2, 15, L"0.100000000"},   // the regional form has nine digits
        {1234.5, 22, 0, L"1,235"},
        {1234.5, 27, 2, L"1,234.50"},
        {-1.5, 17, 3, L"-1"},   // rounded up before it is written
        {-0.7, 17, 0, L"0"},    // small for a number without decimals
        {-0.7, 23, 2, L"-1"},
        {-0.004, 23, 2, L"0"},
        {1.5, 23, 3, L"2"},
        {5.0, 41, 3, L""},
        {1.0, 21, 3, L"0.000"},
    };
    Check(kRows);
    EXPECT_EQ(UNITConvToUnitString(kMillimetre * 1.25, 2, 0.0), L"1.250");
    EXPECT_TRUE(windowing.boxes.empty());
}

TEST_F(MeasureText, RoundsHalvesAsItsArithmeticDoes)
{
    // The fraction is cut off a double that the half was added to: some halves are lost, of either sign.
    constexpr TextRow kRows[] = {
        {2.25, 22, 1, L"2.2"},
        {2.5, 22, kUnitNoDecimals, L"3"},
        {2.75, 22, 1, L"2.7"},
        {0.25, 22, 1, L"0.3"},
        {-4.75, 22, 1, L"-4.7"},
        {0.125, 22, 2, L"0.13"},
        {0.9999999999999999, 22, 15, L"1.000000000"},
        {9007199254740992.0, 22, 2, L"9,007,199,254,740,992.00"},
    };
    Check(kRows);
    EXPECT_EQ(UNITConvToUnitAndStringEx(0.999999999999999, 22, 0.0, 15, 0, 0), L"0.999999999999999");
}

TEST_F(MeasureText, TrimsZerosDownToOne)
{
    const auto trimmed = [](double millimetres) {
        return UNITConvToUnitAndStringEx(kMillimetre * millimetres, 2, 0.0, 4, 1, 0);
    };
    EXPECT_EQ(trimmed(1.25), L"1.25");
    EXPECT_EQ(trimmed(1.0), L"1.0");
    EXPECT_EQ(trimmed(1.0205), L"1.0205");
    EXPECT_EQ(trimmed(-1.5), L"-1.5");
    EXPECT_EQ(UNITConvToUnitAndStringEx(kMillimetre * 1234.5, 2, 0.0, 2, 0, 0), L"1234.50");
    EXPECT_EQ(UNITConvToUnitAndStringEx(kMillimetre * 0.1, 2, 0.0, 99, 0, 0), L"0.100000000000000");
}

TEST_F(MeasureText, FollowsTheUsersSettings)
{
    Use(FakeLocale::German());
    EXPECT_EQ(UNITConvToUnitAndString(kMillimetre * 1234.5, 2, 0.0, 1), L"1.234,5");
    EXPECT_EQ(UNITConvToUnitAndString(kPica * 1234.5, 3, 0.0, 1), L"1.234;6,0");
    auto settings = FakeLocale::English();
    settings[Ports::LocaleSetting::LeadingZero] = L"0";
    Use(settings);
    EXPECT_EQ(UNITConvToUnitAndString(kMillimetre * -0.5, 2, 0.0, 1), L"-.5");
    EXPECT_EQ(UNITConvToUnitAndStringEx(kMillimetre * 0.5, 2, 0.0, 1, 0, 0), L".5");
    settings[Ports::LocaleSetting::NegativeSign] = L"neg";
    Use(settings);
    EXPECT_EQ(UNITConvToUnitAndStringEx(kMillimetre * -1.5, 2, 0.0, 1, 0, 0), L"neg1.5");
    settings.erase(Ports::LocaleSetting::ListSeparator);
    Use(settings);
    EXPECT_EQ(UNITConvToUnitAndString(kMillimetre, 2, 0.0, 1), L"");
    EXPECT_EQ(UNITPreciseConvToUnitAndString(kMillimetre, 99, 0.0, 1, 0), L"");
    EXPECT_TRUE(windowing.boxes.empty());
}

TEST_F(MeasureText, WritesPicasAndCicerosInTwoParts)
{
    constexpr TextRow kRows[] = {
        {kPica * 1.5, 3, 3, L"1,6.000"},
        {kPica * 1.5, 3, 0, L"1,6"},
        {kPica * (1.0 + 11.9996 / 12.0), 3, 3, L"2,0.000"},
        {kPica * -1.25, 3, 1, L"-1,3.0"},
        {kPica * -0.00001, 3, 3, L"0,0.000"},
        {kPica * 12345.0, 3, 1, L"12,345,0.0"},
        {45118.7 * 2.25, 12, 2, L"2,3.00"},
    };
    Check(kRows);
}

TEST_F(MeasureText, ShowsDecimalsOfPixelsOnlyByTheFeature)
{
    using namespace FeatureManagement;
    constexpr double kOnePixelPerTenthMicron = 1e10;
    const auto pixels = [](double base, unsigned decimals) {
        return UNITConvToUnitAndString(base, 6, kOnePixelPerTenthMicron, decimals);
    };
    EXPECT_EQ(pixels(12.5, 7), L"13");
    EXPECT_EQ(pixels(-12.5, 0), L"-12");
    const Feature& feature = Features::PixelEnableDecimalPrecision_func();
    FeatureSet().Switch(feature, true);
    EXPECT_EQ(pixels(12.345, 7), L"12.35");   // two decimals, whatever is asked for
    EXPECT_EQ(pixels(-12.345, 0), L"-12.35");
    EXPECT_EQ(pixels(-0.001, 0), L"0.00");
    EXPECT_EQ(pixels(12.345, kUnitNoDecimals), L"12");
    EXPECT_EQ(pixels(1e9, 0), L"-21,474,836.48");   // the smallest 32-bit integer stands for what is out of range
    EXPECT_EQ(pixels(kNaN, 0), L"-21,474,836.48");
    FeatureSet().Reset(feature);
    EXPECT_EQ(pixels(12.345, 7), L"12");
}

TEST_F(MeasureText, KeepsTwoDigitsOfSmallValuesWhenPrecise)
{
    const auto precise = [](double millimetres, unsigned decimals, int trim = 0) {
        return UNITPreciseConvToUnitAndString(kMillimetre * millimetres, 2, 0.0, decimals, trim);
    };
    EXPECT_EQ(precise(0.00012, 3), L"0.00012");
    EXPECT_EQ(precise(0.0123, 3), L"0.012");
    EXPECT_EQ(precise(0.00123, 3), L"0.0012");
    EXPECT_EQ(precise(-0.012, 1), L"0.0");   // a small negative is nothing before that
    EXPECT_EQ(precise(-0.5, 1), L"-0.50");
    EXPECT_EQ(precise(0.0002, 3, 1), L"0.0002");
    EXPECT_EQ(precise(1.00012, 3), L"1.000");
    EXPECT_EQ(UNITPreciseConvToUnitAndString(0.4, 17, 0.0, 3, 0), L"0");
    EXPECT_EQ(UNITPreciseConvToUnitAndString(-0.7, 17, 0.0, 0, 0), L"-1");   // rounded before anything else
    EXPECT_EQ(UNITPreciseConvToUnitAndString(kPica * 1.5, 3, 0.0, 1, 0), L"1,6.0");
}

TEST_F(MeasureText, RefusesUnitsWithoutText)
{
    int boxes = 0;
    for (const int unit : {24, 25, 26, 28, 29, 30, 31, 32, 33, 34, 35, 36, 77, -1}) {
        EXPECT_EQ(UNITConvToUnitAndString(1.0, unit, 0.0, 0), L"") << unit;
        EXPECT_EQ(UNITPreciseConvToUnitAndString(1.0, unit, 0.0, 0, 0), L"") << unit;
        boxes += 2;
        ASSERT_EQ(windowing.boxes.size(), static_cast<std::size_t>(boxes)) << unit;
        EXPECT_NE(windowing.boxes.back().caption.find(L"469"), std::wstring::npos);
    }
}

TEST_F(MeasureText, StaysInItsBounds)
{
    for (const double odd : {kNaN, kInfinity, -kInfinity, 1e308, -1e308, 5e-324, -5e-324})
        for (int unit = 0; unit < 41; ++unit)
            for (const unsigned decimals : {0u, 1u, 15u, 400u, kUnitNoDecimals, 0xFFFFFFFFu}) {
                EXPECT_LE(UNITConvToUnitAndStringEx(odd, unit, 0.0, decimals, 1, 0).GetLength(), 49);
                EXPECT_LE(UNITPreciseConvToUnitAndString(odd, unit, 0.0, decimals, 0).GetLength(), 2 * 49);
            }
}

}   // namespace

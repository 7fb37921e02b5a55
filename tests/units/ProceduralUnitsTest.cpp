// Measures by id, procedural form: conversion, names, steps and grids.
#include "FakeLocale.h"
#include "FakeWindowing.h"
#include "ScratchTexts.h"
#include "Units.h"
#include "WUnit.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <vector>

namespace {

using testing::ElementsAre;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kDefaultResolution = 11811024.0;

double Ulp(double value) { return std::nextafter(std::fabs(value), kInfinity) - std::fabs(value); }

TEST(ProceduralUnits, ConvertToTheBaseToTheLastBit)
{
    struct Row {
        unsigned unit;
        double value;
        double base;
    };
    constexpr Row kRows[] = {
        {1, 1.0, 254000.0},
        {2, 25.4, 254000.0},
        {3, 0.1, 0.1 * 42333.333333333336},
        {5, 0.3, 0.3 * 10000.0 * 10.0},   // not 0.3 * 100000.0
        {9, 0.7, 0.7 * 10000.0 * 1000.0},
        {10, 0.7, 0.7 * 10000.0 * 1000000.0},
        {14, 1.1, 1.1 / 14.0 * 254000.0},   // not 1.1 * 254000.0 / 14.0
        {18, 0.3, 0.3 / 10.0 * 254000.0},
        {37, 0.7, 0.7 * 10000.0 * 0.25},
        {26, 1.0, 0.0},
        {27, 1.0, 1.0},
        {21, 1.0, 0.0},
        {40, -3.0, -3.0},
        {41, 7.0, -1.0},
        {1000, 1.0, 0.0},
        {0xFFFFFFFFu, 1.0, 0.0},
    };
    for (const auto& [unit, value, base] : kRows)
        EXPECT_EQ(UNITConvertUnitToBase(unit, 0.0, value), base) << unit;
    EXPECT_EQ(UNITConvertBaseToUnit(5, 0.0, 0.7), 0.7 / 10000.0 / 10.0);
    EXPECT_EQ(UNITConvertBaseToUnit(14, 0.0, 0.7), 0.7 / 254000.0 * 14.0);
    EXPECT_EQ(UNITConvertBaseToUnit(38, 0.0, 0.7), 0.7 * 4.0 / 10000.0);
    EXPECT_EQ(UNITConvertBaseToUnit(41, 0.0, 7.0), -1.0);
}

TEST(ProceduralUnits, HaveTheirNumbers)
{
    struct Row {
        unsigned unit;
        double base;   // of one unit
        unsigned decimals;
        double steps[3];
    };
    constexpr double kInch = 254000.0;
    constexpr Row kRows[] = {
        {1, kInch, 5, {0.01, 0.05000000074505806, 0.1}},
        {2, 10000.0, 3, {0.1, 0.5, 1.0}},
        {3, 42333.333333333336, 0, {0.1, 0.5, 1.0}},
        {4, 3527.777777777778, 3, {0.1, 0.5, 1.0}},
        {5, 100000.0, 4, {0.1, 0.5, 1.0}},
        {7, 3048000.0, 6, {0.1, 0.5, 1.0}},
        {8, 16093440000.0, 9, {0.1, 0.5, 1.0}},
        {9, 10000000.0, 6, {0.1, 0.5, 1.0}},
        {10, 10000000000.0, 9, {1.0, 2.0, 5.0}},
        {11, 1.0, 0, {1.0, 2.0, 5.0}},
        {12, 45118.7, 0, {0.08333, 0.5, 1.0}},
        {13, 3759.2, 3, {0.1, 0.5, 1.0}},
        {14, 1.0 / 14.0 * kInch, 3, {1.0, 2.0, 5.0}},
        {15, 1.0 / 10.0 * kInch, 1, {1.0, 2.0, 5.0}},
        {16, 9144000.0, 6, {0.1, 0.5, 1.0}},
        {17, 1.0, 0, {1.0, 2.0, 5.0}},
        {18, 1.0 / 10.0 * kInch, 0, {0.1, 0.5, 1.0}},
        {19, 1.0 / 100.0 * kInch, 0, {0.01, 0.1, 1.0}},
        {20, 1.0 / 1000.0 * kInch, 0, {0.001, 0.1, 1.0}},
        {21, 0.0, 0, {0.001, 0.1, 1.0}},
        {22, 1.0, 0, {1.0, 2.0, 5.0}},
        {23, 1.0, 0, {1.0, 2.0, 5.0}},
        {27, 1.0, 0, {1.0, 2.0, 5.0}},
        {37, 2500.0, 0, {0.1, 0.5, 1.0}},
        {38, 2500.0, 0, {0.1, 0.5, 1.0}},
        {39, 1.0, 0, {1.0, 2.0, 5.0}},
        {40, 1.0, 0, {1.0, 2.0, 5.0}},
    };
    for (const auto& [unit, base, decimals, steps] : kRows) {
        const int id = static_cast<int>(unit);
        EXPECT_EQ(UNITConvertUnitToBase(unit, 0.0, 1.0), base) << unit;
        EXPECT_EQ(UNITGetDefDecimalPrecision(id), decimals) << unit;
        for (unsigned level = 0; level < 3; ++level)
            EXPECT_EQ(UNITGetIncrement(id, level, 1), steps[level]) << unit << ' ' << level;
    }
    EXPECT_EQ(UNITGetDefDecimalPrecision(0), 3u);
    for (const unsigned angular : {24u, 25u, 26u, 28u, 29u, 30u, 31u, 32u, 33u, 34u, 35u, 36u}) {
        EXPECT_EQ(UNITConvertBaseToUnit(angular, 0.0, 1.0), 0.0) << angular;
        EXPECT_EQ(UNITGetDefDecimalPrecision(static_cast<int>(angular)), 0u) << angular;
        EXPECT_EQ(UNITGetIncrement(static_cast<int>(angular), 1, 0), -2.0) << angular;
    }
    EXPECT_EQ(UNITGetDefDecimalPrecision(6), 0u);
    EXPECT_EQ(UNITGetIncrement(6, 2, 1), 5.0);
}

TEST(ProceduralUnits, TakePixelsFromTheResolution)
{
    EXPECT_NEAR(UNITConvertUnitToBase(6, 0.0, 1.0), 846.6666, 1e-3);
    for (const double unset : {0.0, 1e-06, -5.0})
        EXPECT_EQ(UNITConvertUnitToBase(6, unset, 1.0), 1.0 / (kDefaultResolution / 1e10)) << unset;
    EXPECT_EQ(UNITConvertBaseToUnit(6, 2e-06, 1e10), 2e-06 / 1e10 * 1e10);
    EXPECT_EQ(UNITConvertResToBase(300), 11811023.622047244);   // a little under the default
    EXPECT_EQ(UNITConvertResToBase(0), 0.0);
}

TEST(ProceduralUnits, ConvertFromUnitToUnit)
{
    EXPECT_EQ(UNITConvertUnitToUnit(2, 1, 0.0, 1.0), 25.4);
    EXPECT_EQ(UNITConvertUnitToUnit(1, 2, 0.0, 25.4), 1.0);
    for (const unsigned unitless : {0u, 11u, 17u, 22u, 23u, 39u}) {
        EXPECT_EQ(UNITConvertUnitToUnit(unitless, 1, 0.0, 7.5), 7.5) << unitless;
        EXPECT_EQ(UNITConvertUnitToUnit(1, unitless, 0.0, 7.5), 7.5) << unitless;
    }
    EXPECT_EQ(UNITConvertUnitToUnit(40, 1, 0.0, 1.0), 254000.0);   // a count is not one of them
    EXPECT_EQ(UNITConvertUnitToUnit(1, 32, 0.0, 1.0), 0.0);

    EXPECT_NEAR(UNITConvertResUnitToUnit(5, 1, 300.0), 118.110236, 1e-6);
    EXPECT_EQ(UNITConvertResUnitToUnit(5, 1, 0.99), 0.0);
    EXPECT_EQ(UNITConvertResUnitToUnit(5, 1, -0.99), 0.0);
    EXPECT_EQ(UNITConvertResUnitToUnit(0, 1, 49.0), 1.0 / (1.0 / 49.0));   // passed on, but for the last bit
    EXPECT_TRUE(std::isnan(UNITConvertResUnitToUnit(5, 1, kNaN)));
}

TEST(ProceduralUnits, RoundTripsStayWithinTwoUlp)
{
    std::mt19937_64 random(4711);
    std::uniform_real_distribution<double> mantissa(-10.0, 10.0);
    std::uniform_int_distribution<int> exponent(-9, 12);
    for (const unsigned unit : {0u, 1u, 2u, 3u, 4u, 5u, 6u, 7u, 8u, 9u, 10u, 11u, 12u, 13u, 14u, 15u, 16u, 17u, 18u,
             19u, 20u, 22u, 23u, 27u, 37u, 38u, 39u, 40u}) {
        double worst = 0.0;
        for (int i = 0; i < 10'000; ++i) {
            const double base = mantissa(random) * std::pow(10.0, exponent(random));
            const double back = UNITConvertUnitToBase(unit, 0.0, UNITConvertBaseToUnit(unit, 0.0, base));
            worst = std::max(worst, std::fabs(back - base) / Ulp(base));
        }
        EXPECT_LE(worst, 2.0) << unit;
    }
}

TEST(ProceduralUnits, AgreeWithWUnitButWhereTheyAreApart)
{
    WUnit& units = WUnit::GetDefaultWUnit();
    const auto difference = [&](int unit) {
        const double base = UNITConvertUnitToBase(static_cast<unsigned>(unit), 0.0, 1.7);
        return std::fabs(units.ConvertFromUnitTo10thMicron(unit, 1.7, -1.0) / base - 1.0);
    };
    for (const int unit : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 12, 13, 14, 16, 17, 22, 23, 37, 38})
        EXPECT_LE(difference(unit), 4 * std::numeric_limits<double>::epsilon()) << unit;
    // Angles, parts of a whole and counts have a base of their own there, and the tenth of an inch shows inches.
    for (const int unit : {11, 27, 39, 40, 15})
        EXPECT_GT(difference(unit), 0.5) << unit;
    for (const int unit : {24, 25, 26, 28, 29, 30, 31, 32, 33, 34, 35, 36}) {
        EXPECT_EQ(UNITConvertUnitToBase(static_cast<unsigned>(unit), 0.0, 1.7), 0.0) << unit;
        EXPECT_NE(units.ConvertFromUnitTo10thMicron(unit, 1.7, -1.0), 0.0) << unit;
    }
}

TEST(ProceduralUnits, GiveArraysByTheLowestBit)
{
    const auto ids = [](int flags) {
        std::vector<int> all;
        for (const int* id = UNITGetUnitArray(flags); id && *id != -1; ++id)
            all.push_back(*id);
        return all;
    };
    EXPECT_THAT(ids(1), ElementsAre(1, 2, 3, 4, 12, 13));
    EXPECT_THAT(ids(2 | 16), ElementsAre(1, 2, 3, 4, 5, 6, 12, 13));
    EXPECT_THAT(ids(4 | 32), ElementsAre(22));
    EXPECT_THAT(ids(8), ElementsAre(1, 2, 3, 4, 12, 13, 7, 16, 8, 5, 9, 10));
    EXPECT_THAT(ids(16 | 64), ElementsAre(1, 2, 3, 4, 6, 12, 13, 7, 16, 8, 5, 9, 10, 37, 38));
    for (const int none : {0, 32, 128, 64})   // no custom units were read
        EXPECT_EQ(UNITGetUnitArray(none), nullptr) << none;
}

TEST(ProceduralUnits, HaveNamesThatFollowTheListSeparator)
{
    FakeLocale locale;
    EXPECT_EQ(UNITGetUnitAsString(2, kUnitNameFirst), L"mm");
    EXPECT_EQ(UNITGetUnitAsString(2, kUnitNameFirst | kUnitNameThird), L"millimeters");
    EXPECT_EQ(UNITGetUnitAsString(2, kUnitNameFirst | kUnitNameThird | kUnitNameSecond), L"millimeter");
    EXPECT_EQ(UNITGetUnitAsString(3, kUnitNameThird), L"picas,points");
    locale.settings = FakeLocale::German();
    EXPECT_EQ(UNITGetUnitAsString(3, kUnitNameThird), L"picas;points");
    for (const int name : {kUnitNameFirst, kUnitNameSecond, kUnitNameThird}) {
        for (const int unnamed : {-1, 0, 17, 18, 19, 20, 21, 22, 23, 28, 29, 30, 31, 33, 34, 40, 1000})
            EXPECT_EQ(UNITGetUnitAsString(unnamed, name), L"") << unnamed;
        for (const int named :
            {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 24, 25, 26, 27, 32, 35, 36, 37, 38, 39, 41})
            EXPECT_NE(UNITGetUnitAsString(named, name), L"") << named;
    }
    EXPECT_EQ(UNITGetUnitAsString(2, 8), L"");
    // The comma of a longer name stays, and so does a second one.
    const ScratchTexts texts(R"({"version": 1, "texts": {
        "999af699-9cb5-4afa-aada-ab112f44b538": "0123456,89,bcdef",
        "cb20526f-1afa-47a2-8950-9bbb87d74a13": "0123456,89abcdefg",
        "942b86c0-8006-4c5d-8f01-a2f01e2f50ff": "0123456789abcdefghij,"}})");
    EXPECT_EQ(UNITGetUnitAsString(3, kUnitNameFirst), L"0123456;89,bcdef");
    EXPECT_EQ(UNITGetUnitAsString(3, kUnitNameSecond), L"0123456,89abcdefg");
    EXPECT_EQ(UNITGetUnitAsString(3, kUnitNameThird), L"0123456789abcdefghij");
}

TEST(ProceduralUnits, KnowTheirSeparatorAndDecimals)
{
    FakeLocale locale;
    locale.settings = FakeLocale::German();
    const auto separator = [](int unit) {
        wchar_t text[4] = L"xxx";
        const auto length = UNITGetSeparatorString(unit, text);
        EXPECT_EQ(length, std::wstring(text).size()) << unit;
        return std::wstring(text);
    };
    for (const int unit : {0, 1, 2, 4, 5, 7, 8, 9, 10, 11, 13, 14, 15, 16, 22, 27, 37, 38, 39, 40, 41})
        EXPECT_EQ(separator(unit), L",") << unit;
    for (const int unit : {3, 12})
        EXPECT_EQ(separator(unit), L";") << unit;
    for (const int unit : {6, 17, 18, 19, 20, 21, 23, 24, 25, 26, 28, 29, 30, 31, 32, 33, 34, 35, 36, -1, 1000})
        EXPECT_EQ(separator(unit), L"") << unit;
    locale.settings.clear();
    EXPECT_EQ(separator(1), L"");

    EXPECT_EQ(UNITGetDefDecimalPrecision(8), 9u);
    EXPECT_EQ(UNITGetDefDecimalPrecision(22), 0u);   // 3 in WUnit
    EXPECT_EQ(UNITGetDefDecimalPrecision(41), 1u);
    EXPECT_EQ(UNITGetDefDecimalPrecision(-1), 1u);
}

TEST(ProceduralUnits, AskOnceWhetherTheUserMeasuresInMetricUnits)
{
    const auto system = Ports::Locale::Get().Setting(Ports::LocaleSetting::MeasurementSystem, 4);
    const bool isMetric = UNITIsMetric();
    EXPECT_EQ(isMetric, system && system->front() == L'0');
    FakeLocale other;
    other.settings[Ports::LocaleSetting::MeasurementSystem] = isMetric ? L"1" : L"0";
    EXPECT_EQ(UNITIsMetric(), isMetric);
}

TEST(ProceduralUnits, Step)
{
    struct Row {
        int unit;
        unsigned level;
        int up;
        double step;
    };
    constexpr Row kRows[] = {{1, 0, 1, 0.01}, {1, 1, 1, 0.05000000074505806}, {1, 2, 0, -0.1}, {12, 0, 5, 0.08333},
        {20, 0, 0, -0.001}, {40, 2, 1, 5.0}, {0, 0, 0, 1.0}, {41, 0, 0, 1.0}, {-3, 0, 0, 1.0}, {1000, 1, 0, 1.0},
        {1, 3, 1, 1.0}};
    for (const auto& [unit, level, up, step] : kRows)
        EXPECT_EQ(UNITGetIncrement(unit, level, up), step) << unit << ' ' << level << ' ' << up;

    double base = 254000.0 * 3.2;
    UNITIncAndConvValue(1, &base, 0, 3, 1, 0.0, 2.0);
    EXPECT_EQ(base, (0.01 * 3 * 2.0 + 254000.0 * 3.2 / 254000.0) * 254000.0);
    UNITIncAndConvValue(1, &base, 0, 6, 0, 0.0, 1.0);
    EXPECT_NEAR(base, 254000.0 * 3.2, 1e-6);
}

TEST(ProceduralUnits, StepByTheSizeOfAValue)
{
    struct Row {
        int from;
        double value;
        int unit;
        unsigned level;
        int up;
        double step;
    };
    constexpr Row kRows[] = {
        {1, 0.3, 2, 0, 1, 10.0},   // 7.62 mm: one digit before the point
        {2, 0.3 * 25.4, 1, 0, 1, 0.2},
        {2, 0.7 * 25.4, 1, 0, 1, 1.0},
        {2, 0.05 * 25.4, 1, 0, 1, 0.05},   // one zero behind the point
        {2, 0.0001 * 25.4, 1, 0, 1, 0.1 / 1000.0 * 0.01 / 0.01},
        {2, 25.4, 1, 0, 0, -1.0},
        {2, 25.4 * 123.0, 1, 0, 1, 0.1 * 1000.0},
        {2, 25.4 * 0.0004, 1, 0, 0, -(0.5 / 1000.0)},
        {2, 25.4 * 37.0, 1, 2, 1, 0.2 * 100.0 * 0.1 / 0.01},
        {2, 45118.7 * 3.0 / 10000.0, 12, 1, 1, 0.2 * 10.0 * 0.5 / 0.08333},
        {2, 1e-7, 8, 0, 1, 0.1 / 1e9},   // as many zeros as there are decimals
        {2, 25.4 * 200.0, 1, 1, 1, 200.0 * 0.05000000074505806 / 0.01},
        {2, 25.4 * 0.3, 1, 3, 1, 0.2},   // no such level
        {2, -7.62, 1, 0, 1, 0.1},        // negative values take the smallest step
        {-1, 0.3, 1, 0, 0, -0.01},       // no known value
        {2, 0.0, 1, 0, 1, 0.01},
        {17, 0.3, 1, 0, 1, 0.01},   // plain numbers do not scale
        {1, 0.3, 20, 0, 1, 0.001},
        {1, 0.3, 0, 0, 0, 1.0},
        {1, 0.3, 1, 0, 0, 0.3},   // the same unit: the value
        {1, 0.3, -1, 0, 0, 0.3},
    };
    for (const auto& [from, value, unit, level, up, step] : kRows)
        EXPECT_EQ(UNITGetAutoIncrement(from, value, unit, level, up), step)
            << from << ' ' << value << ' ' << unit << ' ' << level;
    for (const double odd : {kInfinity, -kInfinity, kNaN, 1e308, 5e-324})
        for (int unit = -2; unit < 45; ++unit)
            UNITGetAutoIncrement(2, odd, unit, 0, 1);
}

TEST(ProceduralUnits, LimitGrids)
{
    struct Row {
        int unit;
        double first;
        double second;
    };
    constexpr Row kRows[] = {{1, 200.0, 0.005}, {2, 254000.0, 0.0254}, {3, 1600.0, 0.0001}, {4, 140.0, 0.0001},
        {5, 25400.0, 0.0025}, {6, 77.0, 1.0}, {7, 200.0, 0.005}, {8, 200.0, 0.005}, {9, 200.0, 0.005},
        {10, 200.0, 0.005}, {12, 1775.0, 0.0001}, {13, 150.0, 0.0001}, {14, 14.285714285714286, 0.00035714285714285714},
        {15, 20.0, 0.0005}, {16, 200.0, 0.005}, {37, 1016000.0, 0.00635}, {38, 1016000.0, 0.00635},
        {41, 3.0, 1.968503937007874e-08}};
    FakeWindowing windowing;
    for (const auto& [unit, expectedFirst, expectedSecond] : kRows) {
        double first = 3.0;
        double second = 1e-9;
        UNITGetGridFreqLimits(unit, &first, &second, 77);
        EXPECT_EQ(first, expectedFirst) << unit;
        EXPECT_EQ(second, expectedSecond) << unit;
    }
    double first = 3.0;
    for (const double kept : {0.0, -1e-9, 1.968503937007874e-08, 4.0}) {
        double second = kept;
        UNITGetGridFreqLimits(41, &first, &second, 77);
        EXPECT_EQ(second, kept);
    }
    EXPECT_TRUE(windowing.boxes.empty());
    for (const int unknown : {-1, 0, 11, 17, 18, 21, 22, 27, 32, 39, 40, 1000}) {
        double second = 1e-9;
        windowing.boxes.clear();
        UNITGetGridFreqLimits(unknown, &first, &second, 77);
        EXPECT_EQ(first, -99.0) << unknown;
        EXPECT_EQ(second, 1.968503937007874e-08) << unknown;
        ASSERT_EQ(windowing.boxes.size(), 1u) << unknown;
        EXPECT_NE(windowing.boxes[0].caption.find(L"5002"), std::wstring::npos);
        EXPECT_NE(windowing.boxes[0].caption.find(L"1886"), std::wstring::npos);
    }
}

}   // namespace

// Value pairs and smart values.
#include "SmartValue.h"
#include "Units.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr int kSmallest = std::numeric_limits<int>::min();
using Entries = std::map<unsigned, double>;

WUnitValuePair Pair(const wchar_t* text)
{
    WUnitValuePair pair;
    pair.LoadFromString(text);
    return pair;
}

WSmartUnitValue Smart(const wchar_t* text)
{
    WSmartUnitValue smart;
    smart.SetValues(Pair(text));
    return smart;
}

TEST(UnitValuePair, LoadsFromText)
{
    struct Row {
        const wchar_t* text;
        Entries entries;
    };
    const Row kRows[] = {
        {L"8.25in;210mm;51,6cc", {{1, 8.25}, {2, 210}, {12, 51.5}}},
        {L"1in;2in", {{1, 1}}},
        {L"5", {{22, 5}}},
        {L"3cm", {{5, 3}}},
        {L"1,6cc", {{12, 1.5}}},
        {L"3cc", {{12, 3}}},
        {L",6cc", {{12, 0.5}}},
        {L"1,cc", {{12, 1}}},
        {L"1,6,7cc", {{12, 1.5}}},
        {L"1,5mm", {{2, 1}}},   // a comma ends a number
        {L"1mm;2cm;3px;4pt;5ft;6ml;7km;8yd;9deg;10cc;11dd;12percent;13pica;14rad;15m;16q;17h;18",
            {{2, 1}, {5, 2}, {6, 3}, {4, 4}, {7, 5}, {8, 6}, {10, 7}, {16, 8}, {11, 9}, {12, 10}, {13, 11}, {39, 12},
                {24, 13}, {32, 14}, {9, 15}, {37, 16}, {38, 17}, {22, 18}}},
        {L" 8.25 IN ; -2 Mm ;; ", {{1, 8.25}, {2, -2}, {22, 0}}},
        {L"2 points", {{1, 2}}},   // "in" is found first
        {L"1e3m", {{9, 1000}}},
        {L"mm7mm", {{2, 7}}},
        {L"inf", {{1, 0}}},
        {L"nanpx", {{6, 0}}},
        {L"1e999mm;-1e999cm;1e-999px", {{2, kInfinity}, {5, -kInfinity}, {6, 0}}},
        {L"", {}},
        {L";;", {}},
    };
    WUnitValuePair pair;
    for (const auto& [text, entries] : kRows) {
        pair.LoadFromString(text);   // what stood there before is gone
        EXPECT_EQ(pair.GetAllEntries(), entries) << testing::PrintToString(std::wstring(text));
    }
}

TEST(UnitValuePair, LoadsFromLongTexts)
{
    constexpr std::size_t kLong = 1 << 20;
    std::wstring entries;
    for (int i = 0; i < 10'000; ++i)
        entries += std::to_wstring(i + 1) + (i % 2 ? L"mm;" : L"in;");
    EXPECT_EQ(Pair(entries.c_str()).GetAllEntries(), (Entries{{1, 1}, {2, 2}}));
    EXPECT_EQ(Pair((L"5mm;" + std::wstring(kLong, L'm')).c_str()).GetAllEntries(), (Entries{{2, 5}}));
    EXPECT_EQ(Pair((std::wstring(kLong, L'9') + L"mm").c_str()).GetAllEntries(), (Entries{{2, kInfinity}}));
    EXPECT_EQ(Pair(std::wstring(kLong, L';').c_str()).GetAllEntries(), Entries());
}

TEST(UnitValuePair, KeepsOneValuePerUnit)
{
    WUnitValuePair pair;
    unsigned unit = 99;
    double value = 77.0;
    EXPECT_TRUE(pair.IsEmpty());
    EXPECT_FALSE(pair.GetValue(1, unit, value));
    EXPECT_FALSE(pair.GetDefaultValue(unit, value));
    EXPECT_FALSE(pair.IsDefaultValue(unit, 0.0, 0.0));

    pair.AddCiceroDidotValue(1.0, 6.0);
    pair.AddValue(12, 3.0);
    EXPECT_TRUE(pair.GetValue(12, value));
    EXPECT_EQ(value, 1.5);
    pair.AddValue(1, 8.25);
    pair.RemoveValue(12);
    pair.RemoveValue(12);
    EXPECT_FALSE(pair.GetValue(12, value));
    EXPECT_EQ(value, 1.5);
    EXPECT_TRUE(pair.GetValue(1, unit, value));
    EXPECT_EQ(unit, 99u);   // an exact hit leaves it alone
    EXPECT_TRUE(pair.GetValue(2, unit, value));
    EXPECT_EQ(unit, 1u);
    EXPECT_EQ(value, 8.25);
    pair.Clear();
    EXPECT_TRUE(pair.IsEmpty());
}

TEST(UnitValuePair, ComparesToTheLastBit)
{
    const WUnitValuePair pair = Pair(L"1in;2mm");
    EXPECT_FALSE(pair != pair);
    EXPECT_FALSE(pair != Pair(L"2mm;1in"));
    for (const wchar_t* const other : {L"1in", L"1in;2cm", L"1in;2.0000000000000004mm", L"1in;2mm;3cm"})
        EXPECT_TRUE(pair != Pair(other)) << testing::PrintToString(std::wstring(other));
    WUnitValuePair notANumber;
    notANumber.AddValue(1, kNaN);
    EXPECT_TRUE(notANumber != notANumber);
    WUnitValuePair copy = pair;
    copy.AddValue(5, 1.0);
    EXPECT_TRUE(copy != pair);   // a copy has its own values
}

TEST(UnitValuePair, KnowsItsDefaults)
{
    struct Row {
        const wchar_t* text;
        double base;
        int unit;   // -1 for none
    };
    constexpr Row kRows[] = {
        {L"8.25in;210mm", 8.25 * 254000.0, 1}, {L"8.25in;210mm", 2100000.0, 2},
        {L"8.25in;210mm", 2100000.0 * 1.00099, 2}, {L"8.25in;210mm", 2100000.0 * 1.00101, -1},
        {L"1in;25.4mm", 254000.0, 1},   // the lowest id of those that fit
        {L"0in", 0.0, 1}, {L"0in", 1e-300, -1}, {L"1in", 0.0, -1}, {L"1in", kNaN, -1}, {L"1in", kInfinity, -1},
        {L"1e999in", kInfinity, 1}, {L"5pica", 0.0, 24},   // not converted here, so 0.0 in base units
    };
    for (const auto& [text, base, expected] : kRows) {
        unsigned unit = 99;
        EXPECT_EQ(Pair(text).IsDefaultValue(unit, base, 0.0), expected >= 0) << base;
        EXPECT_EQ(unit, expected >= 0 ? static_cast<unsigned>(expected) : 99u) << base;
    }
}

TEST(SmartUnitValue, PrefersTheDefaultOfTheUnit)
{
    struct Row {
        const wchar_t* text;
        int unit;
        int from;
        double value;
        double result;
    };
    const double exact = UNITConvertUnitToUnit(1, 2, 0.0, 211.0);
    const double inch = UNITConvertUnitToBase(1, 0.0, 8.25);
    const Row kRows[] = {
        {L"8.25in;210mm", 1, 2, 210.0, 8.25},
        {L"8.25in;210mm", 1, 2, 210.1, 8.25},
        {L"8.25in;210mm", 1, 2, 211.0, exact},
        {L"8.25in;210mm", 2, 2, 211.0, 211.0},
        {L"8.25in;210mm", 5, 2, 210.0, 21.0},   // the unit has no default
        {L"8.25in;210mm", 1, 5, 21.0, 8.25},    // neither has the source, but the value is the millimetres'
        {L"8.25in;210mm", 1, 5, 21.1, UNITConvertUnitToUnit(1, 5, 0.0, 21.1)},
        {L"8.25in;210mm", 1, 22, 210.0, 8.25},   // numbers without a unit are held against every value
        {L"0in;5mm", 2, 1, 0.0, 5.0},
        {L"0in;5mm", 2, 1, 1e-9, UNITConvertUnitToUnit(2, 1, 0.0, 1e-9)},
        {L"8.25in;210mm", 1, -1, 2100000.0, inch},
        {L"8.25in;210mm", 1, -1, inch, inch},
        {L"8.25in;210mm", 1, -1, inch * 1.0005, inch * 1.0005},   // its own default is no other's
        {L"8.25in;210mm", 1, -1, 2110000.0, 2110000.0},
        {L"8.25in;210mm", 5, -1, 2100000.0, 0.0},   // no default to go to
        {L"8.25in;210mm", -1, -1, 3.0, 3.0},
        {L"8.25in;210mm", 1, 2, kInfinity, kInfinity},
    };
    for (const auto& [text, unit, from, value, result] : kRows)
        EXPECT_EQ(Smart(text).GetValueForUnit(unit, from, value, 0.0), result) << unit << ' ' << from << ' ' << value;
    EXPECT_TRUE(std::isnan(Smart(L"8.25in;210mm").GetValueForUnit(1, 2, kNaN, 0.0)));
    EXPECT_TRUE(std::isnan(Smart(L"8.25in;210mm").GetValueForUnit(1, -1, kNaN, 0.0)));
}

TEST(SmartUnitValue, ConvertsBaseUnits)
{
    const WSmartUnitValue smart = Smart(L"8.25in;210mm;1e9cm");
    const double inch = UNITConvertUnitToBase(1, 0.0, 8.25);
    EXPECT_EQ(smart.GetDValueForUnitBase(-1, 2, 5.0, 0.0), 5.0);
    EXPECT_EQ(smart.GetDValueForUnitBase(1, -1, 2100000.0, 0.0), inch);
    EXPECT_EQ(smart.GetDValueForUnitBase(9, -1, 2100000.0, 0.0), 0.0);
    EXPECT_EQ(smart.GetDValueForUnitBase(1, -1, 5.0, 0.0), 5.0);
    EXPECT_EQ(smart.GetDValueForUnitBase(1, 2, 2100000.0, 0.0), inch);
    EXPECT_EQ(smart.GetDValueForUnitBase(2, 2, 2100000.0, 0.0), 2100000.0);

    EXPECT_EQ(smart.GetValueForUnitBase(2, 0), 210);
    EXPECT_EQ(smart.GetValueForUnitBase(2, 1), 2100000);
    EXPECT_EQ(smart.GetValueForUnitBase(1, 0), 8);
    EXPECT_EQ(smart.GetValueForUnitBase(9, 1), 0);
    EXPECT_EQ(smart.GetValueForUnitBase(1, 2, 2100000, 0.0), 2095500);
    EXPECT_EQ(smart.GetValueForUnitBase(-1, 2, -7, 0.0), -6);   // cut off toward zero
}

TEST(SmartUnitValue, CutsWhatIsNoInteger)
{
    struct Row {
        double value;
        int plain;
    };
    constexpr Row kRows[] = {{2147483646.9, 2147483647}, {2147483647.5, kSmallest}, {-2147483649.4, kSmallest},
        {-2147483648.5, kSmallest}, {1e300, kSmallest}, {kNaN, kSmallest}, {-kInfinity, kSmallest}, {-2.5, -2},
        {-0.4, 0}};
    for (const auto& [value, plain] : kRows) {
        WUnitValuePair pair;
        pair.AddValue(2, value);
        WSmartUnitValue smart;
        smart.SetValues(pair);
        EXPECT_EQ(smart.GetValueForUnitBase(2, 0), plain) << value;
    }
}

TEST(SmartUnitValue, KeepsIncrementsBesideValues)
{
    WSmartUnitValue smart;
    smart.SetIncrements(Pair(L"0.25in"));
    smart.SetValues(Pair(L"8in"));
    const WSmartUnitValue copy = smart;
    EXPECT_EQ(copy.GetIncrements().GetAllEntries(), (Entries{{1, 0.25}}));
    EXPECT_EQ(copy.GetValues().GetAllEntries(), (Entries{{1, 8}}));
    const auto* const bytes = reinterpret_cast<const char*>(&copy);
    EXPECT_EQ(static_cast<const void*>(&copy.GetIncrements()), bytes + sizeof(void*));
    EXPECT_EQ(static_cast<const void*>(&copy.GetValues()), bytes + sizeof(void*) + sizeof(WUnitValuePair));
    static_assert(sizeof(WUnitValuePair) == sizeof(void*) + sizeof(Entries));
}

}   // namespace

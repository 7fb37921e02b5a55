// Conversion between measures.
#include "VirtualSlot.h"
#include "WEqParser.h"
#include "WUnit.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

class Custom : public WUntiDef {
public:
    TvlString GetNameText(unsigned form) const override { return form == kUnitTextFirstName ? L"fur" : L""; }
};

TEST(WUnit, ConvertsBetweenBuiltInUnits)
{
    struct Row {
        int from;
        int to;
        double value;
        double expected;
    };
    constexpr Row kRows[] = {{1, 2, 1.0, 25.4}, {7, 1, 1.0, 12.0}, {8, 10, 1.0, 1.609344}, {16, 9, 1.0, 0.9144},
        {11, 32, 180.0, 3.141592653589793}, {11, 26, 1.0, 60.0}, {26, 27, 1.0, 60.0}, {3, 4, 1.5, 18.0},
        {12, 13, 1.0, 12.002}, {14, 1, 14.0, 1.0}, {37, 2, 4.0, 1.0}, {0, 2, 7.0, 7.0}, {1, 17, 7.0, 7.0},
        {22, 1, 7.0, 7.0}, {23, 23, 7.0, 7.0}};
    WUnit& units = WUnit::GetDefaultWUnit();
    for (const auto& [from, to, value, expected] : kRows)
        EXPECT_NEAR(units.ConvertFromUnitToUnit(from, to, value, -1.0), expected,
            std::fabs(expected) * 1e-3 * (from == 12 ? 1 : 1e-12))
            << from << " to " << to;
    // The order of the operations decides the last bits.
    EXPECT_EQ(units.ConvertFromUnitToUnit(1, 2, 3.7, -1.0), (3.7 / 1e-7 * 0.0254 * 1e-7) / 1e-7 / 0.001 * 1e-7);
    EXPECT_EQ(units.ConvertFromUnitTo10thMicron(2, 0.1, 0.0), (0.1 * 10000000.0) * 0.001);
}

TEST(WUnit, TakesPixelsFromTheScreensResolution)
{
    WUnit& units = WUnit::GetDefaultWUnit();
    EXPECT_NEAR(units.ConvertFrom10thMicronToUnit(6, 254000.0, -1.0), 300.0, 1e-3);
    for (const double unset : {1e-06, 0.0, -5.0}) {
        WUnit::SetResolution(unset);
        EXPECT_NEAR(units.ConvertFromUnitToUnit(1, 6, 1.0, 0.0), 299.9999, 1e-3) << unset;
    }
    EXPECT_EQ(WUnit::SetResolution(2e-06), 2e-06);
    EXPECT_LT(units.ConvertFromUnitToUnit(1, 6, 1.0, 0.0), 1e-9);
    WUnit::SetResolution(0.0);

    EXPECT_EQ(units.ConvertResolutionFromUnitToUnit(1, 2, 0.5, -1.0), 0.0);
    EXPECT_NEAR(units.ConvertResolutionFromUnitToUnit(1, 5, 300.0, -1.0), 118.110236, 1e-6);
}

TEST(WUnit, KnowsPlacesAndIncrements)
{
    WUnit& units = WUnit::GetDefaultWUnit();
    EXPECT_EQ(units.GetUnitIncrement(1, 3), -1.0);
    EXPECT_EQ(units.GetUnitIncrement(1, 1), 0.05000000074505806);
    EXPECT_EQ(units.GetUnitDecimalPlaces(3), 3);    // of the point, the last of the chain
    EXPECT_EQ(units.GetUnitDecimalPlaces(17), 0);   // forced
    EXPECT_EQ(units.GetNumberOfUnitInCollection(28), 3);
    EXPECT_EQ(units.GetPrecisionFactor(), 1e-07);
}

TEST(WUnit, AddsOnRequestAndCountsCustomIds)
{
    WUnit units;
    EXPECT_EQ(units.GetMaxUnitRange(), 41);
    EXPECT_EQ(units.AddUnitDefinition(3), -1);   // a display, no definition
    EXPECT_EQ(units.AddUnitDefinition(7), 7);
    EXPECT_EQ(units.AddUnitDefinition(7), 7);
    EXPECT_EQ(units.AddUnitDisplay(18), -1);
    EXPECT_EQ(units.AddUnitDisplay(9), 9);

    const int furlong = units.AddUnitDefinition(new Custom, 2, 1.0, 2.0, 5.0, L"", L"", L"", L"", 201.168);
    EXPECT_EQ(furlong, 42);
    int known[] = {furlong};
    const int display = units.AddUnitDisplay(new WUnitCollection, known, 1, -1, 0);
    EXPECT_EQ(display, 42);
    int unknown[] = {77};
    EXPECT_EQ(units.AddUnitDisplay(new WUnitCollection, unknown, 1, -1, 0), -1);
    EXPECT_EQ(units.GetMaxUnitRange(), 43);   // the id is used up all the same
    EXPECT_NEAR(units.ConvertFromUnitToUnit(display, 9, 2.0, -1.0), 402.336, 1e-9);
    double value = 0.0;
    EXPECT_EQ(units.StringToValue(9, L"2 FUR", value, 256 | 1, DRG::Radians), 1);
    EXPECT_NEAR(value, 402.336, 1e-9);
    EXPECT_EQ(units.DeleteUnitDisplay(display), 1);
    EXPECT_EQ(units.DeleteUnitDisplay(display), 0);

    int list[] = {1, 2, -1, 3};
    EXPECT_EQ(units.LoadDefaults(list, 0), 1);
    int wrong[] = {1, 19, -1};
    EXPECT_EQ(units.LoadDefaults(wrong, 0), 0);
}

TEST(WUnit, FindsDisplaysBehindOnesThatFailedOrWent)
{
    WUnit units;
    int unknown[] = {77};
    EXPECT_EQ(units.AddUnitDisplay(new WUnitCollection, unknown, 1, -1, 0), -1);   // its object stays
    for (int round = 0; round < 2; ++round)
        for (const int id : {1, 2, 5})
            EXPECT_EQ(units.AddUnitDisplay(id), id);
    EXPECT_EQ(units.ConvertFromUnitToUnit(1, 2, 1.0, 0.0), 1.0 * 0.0254 / 0.001);

    // The displays behind one that goes are one place off.
    EXPECT_EQ(units.DeleteUnitDisplay(1), 1);
    EXPECT_EQ(units.GetUnitString(2, 1), L"cm");
    EXPECT_EQ(units.ConvertFromUnitToUnit(2, 2, 3.0, 0.0), 3.0 * 0.01 / 0.01);
}

TEST(WUnit, MatchesNamesAndSymbolsToTheLetter)
{
    struct Row {
        const wchar_t* text;
        bool matches;
    };
    constexpr Row kRows[] = {{L"in", true}, {L"inch", true}, {L"inches", true}, {L"\"", true}, {L"IN", false},
        {L"i", false}, {L"in ", false}, {L"", false}};
    WUnitWithSymbol inch;
    inch.SetId(1);
    inch.Load();
    for (const auto& [text, matches] : kRows)
        EXPECT_EQ(inch.Matches(text), matches) << text;

    WUntiDef millimetre;   // without a symbol
    millimetre.SetId(2);
    WUnitCollection display;
    display.Initialise({&millimetre, &inch}, 0, -1);
    for (const wchar_t* const text : {L"mm", L"\"", L"inches"})
        EXPECT_TRUE(display.Matches(text)) << text;
    EXPECT_FALSE(display.Matches(L"mm in"));
    EXPECT_FALSE(display.Matches(L""));
}

// The parts of a resolution below 1 are all that truncates to 0.
TEST(WUnit, ConvertsResolutionsFromOneUpwardAndDownward)
{
    WUnit& units = WUnit::GetDefaultWUnit();
    for (const double none : {0.0, 0.999, -0.999})
        EXPECT_EQ(units.ConvertResolutionFromUnitToUnit(1, 2, none, 0.0), 0.0) << none;
    for (const double some : {1.0, -1.0, 1e30})
        EXPECT_NEAR(units.ConvertResolutionFromUnitToUnit(1, 2, some, 0.0), some / 25.4, std::fabs(some) * 1e-14);
    EXPECT_TRUE(std::isnan(units.ConvertResolutionFromUnitToUnit(1, 2, std::numeric_limits<double>::quiet_NaN(), 0.0)));
}

TEST(WUnit, TakesPlacesAndAPrecisionForItsTexts)
{
    WUnit units;
    units.LoadDefaults(nullptr, 0);
    EXPECT_EQ(units.SetUnitDecimalPlaces(2, 1), 1);
    EXPECT_EQ(units.GetUnitDecimalPlaces(2), 1);
    EXPECT_STREQ(units.DisplayUnitValueAsString(2, 12.3456, 0, -1).c_str(), L"12.3");
    EXPECT_EQ(units.SetUnitDecimalPlaces(2, -1), -1) << "the definition's own";
    EXPECT_EQ(units.GetUnitDecimalPlaces(2), 3);
    EXPECT_EQ(WUnit::GetDefaultWUnit().GetUnitDecimalPlaces(2), 3);
    EXPECT_EQ(units.SetPrecisionFactor(0.5), 0.5);
    EXPECT_EQ(units.GetPrecisionFactor(), 0.5);
    const double before = WUnit::GetResolution();
    EXPECT_EQ(WUnit::SetResolution(96.0), 96.0);
    EXPECT_EQ(WUnit::GetResolution(), 96.0);
    WUnit::SetResolution(before);
}

TEST(WUnit, CopiesItsSettings)
{
    WUnit source;
    source.SetPrecisionFactor(0.25);
    WUnit copy(source);
    EXPECT_EQ(copy.GetPrecisionFactor(), 0.25);
    EXPECT_EQ(copy.GetMaxUnitRange(), source.GetMaxUnitRange());

    // What it read with before the assignment is not what it reads with afterwards.
    double value = 0.0;
    WUnit used;
    used.LoadDefaults(nullptr, 0);
    EXPECT_EQ(used.StringToValue(2, L"1 in", value, kTokensAll | kTokensUnits, DRG::Degrees), 1);
    WUnit assigned;
    assigned.SetPrecisionFactor(0.75);
    assigned = source;
    EXPECT_EQ(assigned.GetPrecisionFactor(), 0.25);
    EXPECT_EQ(assigned.AddUnitDefinition(2), 2);
    EXPECT_EQ(assigned.AddUnitDisplay(2), 2);
    EXPECT_EQ(assigned.StringToValue(2, L"3 mm", value, kTokensAll | kTokensUnits, DRG::Degrees), 1);
    EXPECT_EQ(value, 3.0);
    EXPECT_EQ(assigned.StringToValue(2, L"3 in", value, kTokensAll | kTokensUnits, DRG::Degrees), 0);
}

TEST(WUnit, KeepsItsSlots)
{
    EXPECT_EQ(Slot(&Framework::IUnit::GetUnitString), 0u);
    EXPECT_EQ(Slot(&Framework::IUnit::StringToValue), 1u);
    EXPECT_EQ(Slot(&WUntiDef::Load), 2u);   // behind the two of the destructor
    EXPECT_EQ(Slot(&WUntiDef::Define), 3u);
    EXPECT_EQ(Slot(&WUntiDef::GetNameText), 5u);
    EXPECT_EQ(Slot(&WUntiDef::FormatValue), 9u);
    EXPECT_EQ(Slot(&WUnitCollection::Matches), 2u);
    EXPECT_EQ(Slot(&WUnitCollection::GetIncrement), 7u);
    EXPECT_EQ(Slot(&WUnitCollection::FormatLastPart), 11u);
}

}   // namespace

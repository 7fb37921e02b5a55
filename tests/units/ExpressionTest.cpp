// Expressions.
#include "WEqParser.h"
#include "WUnit.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <cmath>
#include <gtest/gtest.h>
#include <optional>

namespace {

std::optional<double> Evaluate(
    const wchar_t* text, unsigned flags = kTokensAll & ~kTokensFractions, DRG mode = DRG::Radians)
{
    WEqParser parser(text, flags, mode);
    double value = -77.0;
    return parser.GetValue(value) ? std::optional(value) : std::nullopt;
}

struct Row {
    const wchar_t* text;
    double value;
};

TEST(WEqParser, FollowsPrioritiesAndAssociativity)
{
    constexpr Row kRows[] = {
        {L"", 0},
        {L"   ", 0},
        {L"2+3*4", 14},
        {L"2^3^2", 512},
        {L"(2+3)*4", 20},
        {L"[2+3]*{4}", 20},
        {L"-5", -5},
        {L"2*(-3)", -6},
        {L"-2^2", -4},
        {L"10-4-3", 3},
        {L"100/5/2", 10},
        {L"2^sin 0", 1},
        {L"sqrt 2^2", 2},
        {L"1.5+.5", 2},
        {L".", 0},
        {L"2*(3+4)", 14},
        {L"log 1000", 3},
        {L"[{(1)}]", 1},
    };
    for (const auto& [text, value] : kRows)
        EXPECT_EQ(Evaluate(text), value) << TvlString(text).c_str();
}

TEST(WEqParser, RefusesWhatIsNoExpression)
{
    for (const wchar_t* text : {L"+5", L"2*-3", L"2(3)", L"(2)(3)", L"()", L"(1", L"1)", L"(1]", L"1 2", L"1.2.3",
             L"1/0", L"sin", L"abc", L"1\t+1", L"1e5", L"3 1/2 4", L"--1", L"*", L"(", L")"})
        EXPECT_EQ(Evaluate(text), std::nullopt) << text;
}

TEST(WEqParser, ReadsFractionsAsOneNumber)
{
    constexpr unsigned kFlags = kTokensArithmetic | kTokensFractions;
    constexpr Row kRows[] = {{L"1/2", 0.5}, {L"1 3/4", 1.75}, {L"3 /4", 0.75}, {L"3 1/2+1", 4.5}, {L"1/2/2", 0.25}};
    for (const auto& [text, value] : kRows)
        EXPECT_EQ(Evaluate(text, kFlags), value) << text;
    for (const wchar_t* text : {L"3/ 4", L"1 3/", L"1/0"})
        EXPECT_EQ(Evaluate(text, kFlags), std::nullopt) << text;
    EXPECT_EQ(Evaluate(L"3 1/2", kTokensArithmetic), std::nullopt);
}

TEST(WEqParser, TakesDegreesInDegreeModeAlone)
{
    EXPECT_EQ(Evaluate(L"sin 90", kTokensAll, DRG::Degrees), 1.0);
    EXPECT_EQ(Evaluate(L"sin 90", kTokensAll, DRG::Gradians), std::sin(90.0));
    EXPECT_NEAR(*Evaluate(L"asin 1", kTokensAll, DRG::Degrees), 90.0, 1e-12);
    EXPECT_EQ(Evaluate(L"sin 90", kTokensArithmetic, DRG::Degrees), std::nullopt);
    EXPECT_TRUE(std::isnan(*Evaluate(L"sqrt(0-1)")));
}

struct FieldRow {
    int display;
    const wchar_t* text;
    double value;
};

TEST(WUnit, EvaluatesFieldTextsWithUnits)
{
    constexpr FieldRow kRows[] = {
        {2, L"1in", 25.4},
        {2, L"5in + 3mm", 130.0},
        {2, L"1,000", 1000.0},
        {7, L"5' 3 1/2\"", 5.0 + 3.5 / 12.0},
        {31, L"5' 3 1/2\"", 5.0 + 3.5 / 12.0},
        {1, L"2 inches", 2.0},
        {2, L"1 INCH", 25.4},
        {2, L"5", 5.0},
        {3, L"1,6", 1.5},
        {3, L"1 pc 6 pt", 1.5},
        {11, L"asin 1", 90.0},
        {7, L"1ft 6in", 1.5},
        {3, L"-1,6", -1.5},
    };
    for (const auto& [display, text, expected] : kRows) {
        double value = -77;
        EXPECT_EQ(WUnit::GetDefaultWUnit().StringToValue(display, text, value, 256 | 31, DRG::Radians), 1) << text;
        EXPECT_NEAR(value, expected, 1e-9) << text;
    }
    double value = 0;
    EXPECT_EQ(WUnit::GetDefaultWUnit().StringToValue(2, L"1 in in", value, 256 | 31, DRG::Radians), 0);
    EXPECT_EQ(WUnit::GetDefaultWUnit().StringToValue(2, L"1 furlong", value, 256 | 31, DRG::Radians), 0);
}

// A unit word that an operator or a function hides would be read as that, or not at all.
TEST(WUnit, ReadsEveryNameOfEveryUnit)
{
    constexpr int kAngleSeconds = 27;
    WUnit& units = WUnit::GetDefaultWUnit();
    for (const int id :
        {1, 2, 4, 5, 6, 7, 8, 9, 10, 11, 13, 14, 15, 16, 24, 25, 26, kAngleSeconds, 30, 32, 35, 36, 37, 38, 39})
        for (unsigned form = kUnitTextFirstName; form <= kUnitTextSymbol; ++form) {
            const TvlString name = units.GetUnitString(id, form);
            EXPECT_FALSE(name.IsEmpty()) << id << " form " << form;
            for (const wchar_t* before : {L"3", L"3 ", L"1+2 ", L"(3)"}) {
                double value = 0.0;
                EXPECT_EQ(units.StringToValue(id, before + name, value, 256 | 31, DRG::Radians), 1)
                    << id << " " << TvlPlatform::ToUtf8(before + name);
                EXPECT_NEAR(value, 3.0, 1e-12) << id << " " << TvlPlatform::ToUtf8(before + name);
            }
        }
}

}   // namespace

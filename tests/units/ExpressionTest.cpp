// Expressions.
#include "FakeLocale.h"
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

TEST(WUnit, TakesAnglesByTheUnitOfTheField)
{
    struct AngleRow {
        int display;
        const wchar_t* text;
        DRG mode;
        double value;
    };
    const AngleRow kRows[] = {
        {11, L"sin 90", DRG::Radians, std::sin(90 * 3.141592653589793 / 180.0)},
        {26, L"sin 5400", DRG::Radians, std::sin(5400 * 3.141592653589793 / 180.0 / 60.0)},
        {27, L"sin 7", DRG::Degrees, std::sin(7 * 3.141592653589793 / 180.0 / 60.0 / 60.0)},
        {32, L"sin 7", DRG::Degrees, std::sin(7.0)},
        {2, L"sin 7", DRG::Degrees, std::sin(7 * 3.141592653589793 / 180.0)},
        {2, L"sin 7", DRG::Radians, std::sin(7.0)},
        {11, L"atan 7", DRG::Radians, std::atan(7.0) / 0.017453292519943295},
        {26, L"atan 7", DRG::Degrees, std::atan(7.0) / 0.0002908882086657216},
        {27, L"atan 7", DRG::Radians, std::atan(7.0) / 4.84813681109536e-06},
        {32, L"atan 7", DRG::Degrees, std::atan(7.0)},
        {2, L"atan 7", DRG::Degrees, std::atan(7.0) / 0.017453292519943295},
        {2, L"atan 7", DRG::Gradians, std::atan(7.0)},
        {27, L"sinh 7", DRG::Degrees, std::sinh(7.0)},
    };
    for (const auto& [display, text, mode, expected] : kRows) {
        double value = -77;
        EXPECT_EQ(WUnit::GetDefaultWUnit().StringToValue(display, text, value, 256 | 31, mode), 1) << text;
        EXPECT_EQ(value, expected) << display << " " << text;
    }
}

TEST(WUnit, JoinsPartsThatStandSideBySide)
{
    constexpr FieldRow kRows[] = {
        {2, L"(2)(3)", 5.0},
        {2, L"1cm(3)", 13.0},
        {2, L"-1cm 2", -12.0},   // the sign of the first part rules
        {2, L"(1)2", 3.0},
        {3, L"-1 pc 6 pt", -1.5},
        {3, L"3,6*2", 4.0},
        {3, L"1 pica 1 2", 13.0},   // no blanks behind the word
        {12, L"2 cc 1 /2", 2.5},
        {40, L"2+3", 3.0},   // the last number that was read
        {40, L"", 0.0},
    };
    for (const auto& [display, text, expected] : kRows) {
        double value = -77;
        EXPECT_EQ(WUnit::GetDefaultWUnit().StringToValue(display, text, value, 256 | 31, DRG::Radians), 1) << text;
        EXPECT_NEAR(value, expected, 1e-12) << display << " " << text;
    }
    double value = -77;
    for (const wchar_t* text : {L"2(3)", L"1in 2mm mm", L"1 2", L"mm", L"2 mm 3.5.2"})
        EXPECT_EQ(WUnit::GetDefaultWUnit().StringToValue(2, text, value, 256 | 31, DRG::Radians), 0) << text;
    // Without the words there is no token that joins.
    value = -77;
    EXPECT_EQ(WUnit::GetDefaultWUnit().StringToValue(2, L"(2)(3)", value, 31, DRG::Radians), 0);
    EXPECT_EQ(value, -77);
    EXPECT_EQ(WUnit::GetDefaultWUnit().StringToValue(2, L"1/0", value, 256 | 1, DRG::Radians), 0);
    EXPECT_EQ(value, 0.0);
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

struct Wrong {
    int unit;
    const wchar_t* text;
    WParseProblem problem;
    std::size_t position;
};

constexpr Wrong kWrongTexts[] = {
    {2, L"5in + 3mm", WParseProblem::None, 0},
    {2, L"5 furlongs", WParseProblem::UnknownText, 2},
    {2, L"3.5.2", WParseProblem::OperatorExpected, 3},
    {2, L"2*(3+4", WParseProblem::BracketNotClosed, 6},
    {2, L"2*(3+4]", WParseProblem::BracketNotOpened, 6},
    {2, L"3)", WParseProblem::BracketNotOpened, 1},
    {2, L"2*", WParseProblem::ValueExpected, 2},
    {2, L"3 mm in", WParseProblem::TwoUnits, 5},
    {2, L"1/0", WParseProblem::OutOfRange, 3},
    // Places count in the text as it was typed, with what was left away on the way.
    {2, L"1,234*(", WParseProblem::BracketNotClosed, 7},
    {2, L"1,234x", WParseProblem::UnknownText, 5},
    {3, L"1 pc 6 x", WParseProblem::UnknownText, 7},
    {3, L"1 pc x", WParseProblem::UnknownText, 5},
};

TEST(WUnit, TellsWhereATextGoesWrong)
{
    const FakeLocale english;
    for (const auto& [unit, text, problem, position] : kWrongTexts) {
        const WParseDiagnosis wrong =
            WUnit::GetDefaultWUnit().DiagnoseText(unit, text, kTokensAll | kTokensUnits, DRG::Degrees);
        EXPECT_EQ(static_cast<int>(wrong.problem), static_cast<int>(problem)) << text;
        EXPECT_EQ(wrong.position, position) << text;
        EXPECT_EQ(DescribeParseProblem(wrong.problem).IsEmpty(), problem == WParseProblem::None) << text;
    }
}

TEST(WParseProblem, HasNoTextBeyondThoseThatThereAre)
{
    EXPECT_FALSE(DescribeParseProblem(WParseProblem::OutOfRange).IsEmpty());
    EXPECT_TRUE(DescribeParseProblem(static_cast<WParseProblem>(8)).IsEmpty());
    EXPECT_TRUE(DescribeParseProblem(static_cast<WParseProblem>(-1)).IsEmpty());
}

}   // namespace

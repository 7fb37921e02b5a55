// Texts of every size, tables without texts, and tokens that callers bring along.
#include "FakeLocale.h"
#include "ScratchTexts.h"
#include "WEqParser.h"
#include "WUnit.h"

#include <gtest/gtest.h>
#include <string>

namespace {

constexpr int kMegabyte = 1 << 20;
constexpr unsigned kFieldFlags = kTokensUnits | kTokensAll;

std::wstring Repeated(const std::wstring& piece, int count)
{
    std::wstring text;
    for (int i = 0; i < count; ++i)
        text += piece;
    return text;
}

struct LongText {
    const char* name;
    std::wstring text;
    int success;
    double value;
};

std::vector<LongText> LongTexts()
{
    constexpr int kNesting = 100000;
    return {
        {"blanks", std::wstring(kMegabyte, L' '), 1, 0.0},
        {"digits", std::wstring(kMegabyte, L'1'), 0, 0.0},
        {"decimals", L"0." + std::wstring(kMegabyte, L'0') + L"1", 1, 0.0},
        {"sum", Repeated(L"1+", kMegabyte / 2) + L"1", 1, kMegabyte / 2 + 1},
        {"powers", Repeated(L"1^", kMegabyte / 2) + L"1", 1, 1.0},
        {"functions", Repeated(L"tanh ", kMegabyte / 5) + L"0", 1, 0.0},
        {"brackets", std::wstring(kNesting, L'(') + L"7" + std::wstring(kNesting, L')'), 1, 7.0},
        {"openings", std::wstring(kNesting, L'('), 0, 0.0},
        {"closings", std::wstring(kNesting, L')'), 0, 0.0},
        {"kinds of brackets", Repeated(L"([{", kNesting / 3) + L"7" + Repeated(L"}])", kNesting / 3), 1, 7.0},
        {"letters", std::wstring(kMegabyte, L'x'), 0, 0.0},
        {"fractions", Repeated(L"1/2+", kMegabyte / 4) + L"0", 1, kMegabyte / 8},
    };
}

TEST(WEqParser, ReadsTextsOfEverySize)
{
    for (const auto& [name, text, success, expected] : LongTexts()) {
        double value = 0.0;
        WEqParser parser(text, kTokensAll, DRG::Radians);
        EXPECT_EQ(parser.GetValue(value), success) << name;
        EXPECT_EQ(value, expected) << name;
    }
}

TEST(WUnit, ReadsFieldTextsOfEverySize)
{
    WUnit& units = WUnit::GetDefaultWUnit();
    for (const auto& [name, text, success, expected] : LongTexts()) {
        double value = 0.0;
        EXPECT_EQ(units.StringToValue(2, text, value, kFieldFlags, DRG::Radians), success) << name;
    }
    double value = 0.0;
    EXPECT_EQ(units.StringToValue(2, Repeated(L"1mm+", kMegabyte / 4) + L"0", value, kFieldFlags, DRG::Radians), 1);
    EXPECT_NEAR(value, kMegabyte / 4, 1e-6);
    units.StringToValue(3, L"1 pc " + Repeated(L"6 ", kMegabyte / 2), value, kFieldFlags, DRG::Radians);
}

TEST(WEqParser, KeepsOnlyNumbersWhenTheTextsAreMissing)
{
    const ScratchTexts none(R"({"version": 1, "texts": {}})");
    for (const auto& [text, success] : {std::pair(L"12.5", 1), {L"", 1}, {L"1+1", 0}, {L"(1)", 0}, {L"sin 1", 0}}) {
        double value = 0.0;
        WEqParser parser(text, kTokensAll, DRG::Radians);
        EXPECT_EQ(parser.GetValue(value), success) << text;
    }
    WUnit units;
    units.LoadDefaults(nullptr, 0);
    double value = 0.0;
    EXPECT_EQ(units.StringToValue(2, L"12", value, kFieldFlags, DRG::Radians), 1);
    EXPECT_EQ(units.StringToValue(2, L"12 mm", value, kFieldFlags, DRG::Radians), 0);
}

TEST(WEqParser, ReadsNumbersWhereTheLocaleHasNoSeparators)
{
    FakeLocale locale(0x20001);
    locale.settings.clear();
    double value = 0.0;
    WEqParser parser(L"12", kTokensAll, DRG::Radians);
    EXPECT_EQ(parser.GetValue(value), 1);
    EXPECT_EQ(value, 12.0);
    WEqParser broken(L"1.5", kTokensAll, DRG::Radians);
    EXPECT_EQ(broken.GetValue(value), 0);
}

/// A constant with a name, which tells of its end.
class Constant : public WTokenValue {
public:
    Constant(const wchar_t* name, double value, int& ended)
        : WTokenValue(0, 0, name), m_value(value), m_ended(ended) { }
    ~Constant() override { ++m_ended; }
    int Match(const TvlString& text, int& length, int& valueBefore) override
    {
        return WToken::Match(text, length, valueBefore);
    }
    double Evaluate(const TvlString&) override { return m_value; }

private:
    double m_value;
    int& m_ended;
};

/// Halves the number before it.
class Half : public WToken {
public:
    Half() : WToken(8, 8, L"half") { }
    int Execute(WValueStack& values) override
    {
        if (values.empty())
            return 0;
        values.front() /= 2;
        return 1;
    }
};

TEST(WEqParser, TakesTokensOfItsCallers)
{
    int ended = 0;
    for (const auto& [text, expected] :
        {std::pair(L"pi*2", 6.0), {L"e+pi", 5.0}, {L"10 half+1", 6.0}, {L"pi^e", 9.0}}) {
        WToken* const own[] = {new Constant(L"pi", 3.0, ended), new Constant(L"e", 2.0, ended), new Half};
        double value = 0.0;
        WEqParser parser(text, own, 3, kTokensAll, DRG::Radians);
        EXPECT_EQ(parser.GetValue(value), 1) << text;
        EXPECT_EQ(value, expected) << text;
    }
    EXPECT_EQ(ended, 8) << "the parser owns its callers' tokens";
}

TEST(WEqParser, CopiesShareTheTokensAndReadOnTheirOwn)
{
    int ended = 0;
    {
        WToken* const own[] = {new Constant(L"pi", 3.0, ended)};
        WEqParser source(L"pi*sqrt(4+5)", own, 1, kTokensAll, DRG::Radians);
        WEqParser copy(source);
        copy.LoadTokens(kTokensAll);   // its own, tried behind those that it shares
        WEqParser assigned(L"sqrt 7", kTokensLogarithms, DRG::Degrees);
        assigned = source;
        for (WEqParser* const parser : {&copy, &assigned, &source}) {
            double value = 0.0;
            EXPECT_EQ(parser->GetValue(value), 1);
            EXPECT_EQ(value, 9.0);
        }
    }
    EXPECT_EQ(ended, 1);
}

}   // namespace

// Tokens one by one, as a parser of a caller's own asks them: the parser here takes a shorter way to the same answers.
#include "FakeLocale.h"
#include "TokenPrototypes.h"
#include "Tokens.h"
#include "UnitParser.h"
#include "WUnit.h"

#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <random>

namespace {

using Token = std::unique_ptr<WToken, void (*)(WToken*)>;

/// Every token of `flags`, made as a table of a caller's own holds them.
std::vector<Token> TableOf(unsigned flags)
{
    const TokenPrototypeSet& set = TokenPrototypesFor(flags);
    std::vector<Token> table;
    for (std::size_t i = 0; i < set.Count(); ++i)
        table.emplace_back(set.Make(i, ::operator new(set.Stride())), [](WToken* token) {
            token->~WToken();
            ::operator delete(token);
        });
    return table;
}

struct Matched {
    int length = 0;
    int valueBefore = 0;
};

Matched Match(WToken& token, const wchar_t* text, int valueBefore)
{
    Matched matched{-1, valueBefore};
    const int isMatch = token.Match(text, matched.length, matched.valueBefore);
    EXPECT_EQ(isMatch, matched.length > 0 ? 1 : 0) << text;
    return matched;
}

TEST(Tokens, TellWhetherTheyBeginAText)
{
    const FakeLocale english;
    WToken plain(1, 2, L"sin");
    WToken silent(1, 2, L"");
    WTokenValue value(0, 0, L"");
    WTokenFraction fraction(0, 0, L"");
    WTokenCParen closed(0, 99, L")");
    WTokenUnaryMinus unary(10, 9, L"-");
    WTokenOpMinus binary(1, 2, L"-");
    const struct {
        WToken& token;
        const wchar_t* text;
        int before;
        int length;
        int after;   // what the tokens behind are told of a value that stands before
    } kCases[] = {
        {plain, L"sin 30", 1, 3, 0},
        {plain, L"Sin 30", 1, 0, 1},
        {plain, L"si", 1, 0, 1},
        {silent, L"sin", 1, 0, 1},
        {value, L"1.5.2", 0, 3, 1},
        {value, L".", 0, 1, 1},
        {value, L"x", 0, 0, 1},
        {value, L"1e5", 0, 1, 1},
        {fraction, L"1/2", 0, 3, 0},
        {fraction, L"3 1/2 x", 0, 5, 0},
        {fraction, L"1/ 2", 0, 4, 0},
        {fraction, L"1/x", 1, 0, 1},
        {fraction, L"12", 1, 0, 1},
        {fraction, L"3 1", 1, 0, 1},
        {fraction, L"3 1+", 1, 0, 1},
        {fraction, L"/2", 1, 0, 1},
        {closed, L")", 0, 1, 1},
        {closed, L"]", 0, 0, 0},
        {unary, L"-", 0, 1, 0},
        {unary, L"-", 1, 0, 1},
        {binary, L"-", 1, 1, 0},
        {binary, L"-", 0, 0, 0},
    };
    for (const auto& [token, text, before, length, after] : kCases) {
        const Matched matched = Match(token, text, before);
        EXPECT_EQ(matched.length, length) << text << " " << before;
        EXPECT_EQ(matched.valueBefore, after) << text << " " << before;
    }
}

TEST(Tokens, TellTheNumberOfWhatTheyMatched)
{
    FakeLocale locale;
    locale.settings[Ports::LocaleSetting::DecimalSeparator] = L",";
    EXPECT_EQ(WTokenValue(0, 0, L"").Evaluate(L"1,5"), 1.5);
    EXPECT_EQ(WTokenValue(0, 0, L"").Evaluate(L","), 0.0);
    EXPECT_EQ(WTokenFraction(0, 0, L"").Evaluate(L"3 1/2"), 3.5);
    EXPECT_EQ(WTokenFraction(0, 0, L"").Evaluate(L"3 1+2"), -1.0);
    EXPECT_EQ(WTokenFraction(0, 0, L"").Evaluate(L"3 1"), -1.0);
    EXPECT_EQ(WTokenFraction(0, 0, L"").Evaluate(L"31"), -1.0);
    EXPECT_EQ(WTokenFraction(0, 0, L"").Evaluate(L"1/ 2"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(WToken(1, 2, L"sin").Evaluate(L"sin"), 0.0);
}

TEST(Tokens, TakeTheirOperandsFromTheValues)
{
    WTokenUnit unit(25.4, nullptr);
    WTokenUnaryMinus negation(10, 9, L"-");
    WTokenOpMinus minus(1, 2, L"-");
    WTokenOpPlus plus(1, 2, L"+");
    WTokenOpExp power(6, 5, L"^");
    WTokenSqrt root(6, 5, L"sqrt");
    WTokenOParen open(100, 0, L"(");
    WTokenSeparator separator(L";");
    const struct {
        WToken& token;
        WValueStack values;   // the latest first
        int isDone;
        WValueStack left;
    } kCases[] = {
        {unit, {2.0, 7.0}, 1, {50.8, 7.0}},
        {unit, {}, 0, {}},
        {separator, {0.5, -1.0}, 1, {-1.5}},
        {separator, {-0.5, 1.0}, 1, {1.5}},
        {separator, {0.5}, 1, {0.5}},
        {separator, {}, 0, {}},
        {negation, {3.0}, 1, {-3.0}},
        {negation, {}, 0, {}},
        {minus, {3.0, 5.0}, 1, {2.0}},
        {minus, {3.0}, 1, {-3.0}},   // a text may begin with a minus
        {minus, {}, 0, {}},
        {plus, {3.0}, 0, {}},   // what was there is lost
        {plus, {}, 0, {}},
        {power, {3.0, 2.0}, 1, {8.0}},
        {power, {3.0}, 0, {}},
        {root, {9.0}, 1, {3.0}},
        {root, {}, 0, {}},
        {open, {1.0}, 1, {1.0}},
        {open, {}, 1, {}},
    };
    for (auto [token, values, isDone, left] : kCases) {
        EXPECT_EQ(token.Execute(values), isDone);
        EXPECT_EQ(values, left);
    }
}

class Furlong : public WUntiDef {
public:
    TvlString GetNameText(unsigned form) const override
    {
        constexpr const wchar_t* kNames[] = {L"", L"fur", L"furlong", L"furlongs", L"'"};
        return form < std::size(kNames) ? kNames[form] : L"";
    }
};

TEST(Tokens, OfUnitsTakeTheLongestNameBehindAValue)
{
    const Furlong furlong;
    WTokenUnit unit(1.0, &furlong);
    const struct {
        const wchar_t* text;
        int length;
    } kCases[] = {{L"fur", 3}, {L"Furlong 3", 7}, {L"FURLONGS", 8}, {L"furl", 3}, {L"'", 1}, {L"fu", 0}, {L"", 0}};
    for (const auto& [text, length] : kCases) {
        const Matched behind = Match(unit, text, 1);
        EXPECT_EQ(behind.length, length) << text;
        EXPECT_EQ(behind.valueBefore, 1) << text;
        EXPECT_EQ(Match(unit, text, 0).length, 0) << text;
    }
}

/// The longest of all matches, the first of equal ones: what a walk over the table finds.
TokenMatch Walk(const std::vector<Token>& table, const TvlString& text, int& valueBefore)
{
    TokenMatch best;
    for (std::size_t i = 0; i < table.size(); ++i) {
        int length = 0;
        if (table[i]->Match(text, length, valueBefore) != 0 && length > best.length)
            best = {length, i};
    }
    return best;
}

TEST(Tokens, AreFoundAsAWalkOverTheTableFindsThem)
{
    const FakeLocale english;
    constexpr std::wstring_view kPieces[] = {L"1", L"23", L".", L" ", L"/", L"+", L"-", L"*", L"^", L"(", L")", L"[",
        L"]", L"{", L"}", L"sin", L"sinh", L"asin", L"sqrt", L"ln", L"log", L"co", L"t", L"x", L"\u00e9", L"\u4e00"};
    std::mt19937 random(11);
    for (const unsigned flags : {0u, unsigned{kTokensArithmetic}, unsigned{kTokensFractions}, unsigned{kTokensAll}}) {
        const std::vector<Token> table = TableOf(flags);
        for (int round = 0; round < 5000; ++round) {
            std::wstring text;
            for (unsigned i = 1 + random() % 5; i > 0; --i)
                text += kPieces[random() % std::size(kPieces)];
            int before = static_cast<int>(random() % 2), walkBefore = before;
            const TokenMatch found = TokenPrototypesFor(flags).Match(text, L'.', before);
            const TokenMatch walked = Walk(table, text, walkBefore);
            ASSERT_EQ(found.length, walked.length) << testing::PrintToString(text);
            ASSERT_EQ(before, walkBefore) << testing::PrintToString(text);
            if (found.length == 0)
                continue;
            ASSERT_EQ(found.token, walked.token) << testing::PrintToString(text);
        }
    }
}

}   // namespace

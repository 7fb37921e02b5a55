// Expressions and ranges of pages: texts that people type.
#include "FakeLocale.h"
#include "HeapOperation.h"
#include "PaperTypes.h"
#include "WEqParser.h"

#include <gtest/gtest.h>

namespace {
/// A token of a caller's own, counted.
class Constant : public WTokenValue {
public:
    Constant() : WTokenValue(0, 0, L"answer") { ++alive; }
    ~Constant() override { --alive; }
    Constant(const Constant&) = delete;
    Constant& operator=(const Constant&) = delete;
    int Match(const TvlString& text, int& length, int& valueBefore) override
    {
        length = text.Find(L"answer") == 0 ? 6 : 0;
        valueBefore = length > 0 ? 1 : valueBefore;
        return length > 0;
    }
    double Evaluate(const TvlString&) override { return 42.0; }

    static inline int alive = 0;
};

struct Expression {
    FakeLocale locale;
    double value = 0.0;
    int result = 0;
    std::vector<unsigned> pages;
    TvlString text;

    void Expect(double wanted, const HeapRun& outcome)
    {
        EXPECT_TRUE((result == 1 && value == wanted) || outcome.hasFailed) << value;
        result = 0;
    }
};

/// More than a parser has room for by itself.
const TvlString& LongText()
{
    static const TvlString text = [] {
        std::wstring sum = L"0";
        for (int i = 0; i < 40; ++i)
            sum = L"(1+" + sum + L")";
        return TvlString(sum);
    }();
    return text;
}
}   // namespace

HeapOperations ParserOperations()
{
    return {
        Row<Expression>(
            "GetValue",
            [](Expression& expression) {
                WEqParser parser(L"2 + 3*sqrt(16) - 1 1/2", kTokensAll, DRG::Radians);
                expression.result = parser.GetValue(expression.value);
            },
            [](Expression& expression, const HeapRun& outcome) { expression.Expect(12.5, outcome); }),
        Row<Expression>(
            "GetValue_of_a_long_text",
            [](Expression& expression) {
                WEqParser parser(LongText(), kTokensArithmetic, DRG::Radians);
                expression.result = parser.GetValue(expression.value);
            },
            [](Expression& expression, const HeapRun& outcome) { expression.Expect(40.0, outcome); }),
        Row<Expression>(
            "tokens_of_the_callers_own",
            [](Expression& expression) {
                TvlString equation = L"answer + 1";
                // The token is the parser's from the constructor on, whatever comes of it.
                WToken* const token = new Constant;
                WEqParser parser(std::move(equation), &token, 1, kTokensArithmetic, DRG::Radians);
                expression.result = parser.GetValue(expression.value);
            },
            [](Expression& expression, const HeapRun& outcome) {
                EXPECT_EQ(Constant::alive, 0);
                expression.Expect(43.0, outcome);
            }),
        Row<Expression>(
            "copy_of_a_parser",
            [](Expression& expression) {
                WEqParser parser(L"1+2", kTokensAll, DRG::Radians);
                WEqParser copy(parser);
                copy = parser;
                expression.result = copy.GetValue(expression.value);
            },
            [](Expression& expression, const HeapRun& outcome) { expression.Expect(3.0, outcome); }),
        Row<Expression>(
            "DescribeParseProblem",
            [](Expression& expression) { expression.text = DescribeParseProblem(WParseProblem::BracketNotClosed); },
            [](Expression& expression, const HeapRun& outcome) {
                EXPECT_TRUE(!expression.text.IsEmpty() || outcome.hasFailed);
                expression.text = L"";
            }),
        Row<Expression>(
            "MakePageRangeFromString",
            [](Expression& expression) {
                expression.pages.clear();
                TvlUtl::MakePageRangeFromString(1, 100, L"1,3-50,60~", expression.pages);
            },
            [](Expression& expression, const HeapRun& outcome) {
                EXPECT_TRUE(expression.pages.size() == 1 + 48 + 21 || outcome.hasFailed) << expression.pages.size();
            }),
    };
}

// Texts of fields beside muParser: tokens and parser made anew for each text, as a field does it.
#include "WEqParser.h"
#include "WUnit.h"

#include <benchmark/benchmark.h>
#include <muParser.h>

namespace {

constexpr const wchar_t* kTexts[] = {
    L"12.5", L"2*(3+4)", L"sin(30)", L"(1.5+2.25)*(3.75-1)/2+sqrt(16)*cos(0)-7*(2+3)^2+12.5*4"};
constexpr const char* kNarrowTexts[] = {
    "12.5", "2*(3+4)", "sin(30)", "(1.5+2.25)*(3.75-1)/2+sqrt(16)*cos(0)-7*(2+3)^2+12.5*4"};

/// A sum of so many terms, or half as many pairs of them.
template <class Text>
Text Sum(Text term, std::int64_t count)
{
    Text sum = term;
    for (std::int64_t i = 1; i < count; ++i)
        sum += Text({' ', '+', ' '}) + term;
    return sum;
}

void FieldText_Fresh(benchmark::State& state)
{
    WUnit& units = WUnit::GetDefaultWUnit();
    const TvlString text = Sum<std::wstring>(L"5in + 3mm", state.range(0) / 2);
    for (auto _ : state) {
        double value = 0.0;
        benchmark::DoNotOptimize(units.StringToValue(2, text, value, kTokensUnits | kTokensAll, DRG::Degrees));
        benchmark::DoNotOptimize(value);
    }
}

double Inches(double value) { return value * 25.4; }
double Millimetres(double value) { return value; }

void FieldText_MuParser(benchmark::State& state)
{
    const auto text = Sum<std::string>("5in + 3mm", state.range(0) / 2);
    for (auto _ : state) {
        mu::Parser parser;
        parser.DefinePostfixOprt("in", Inches);
        parser.DefinePostfixOprt("mm", Millimetres);
        parser.SetExpr(text);
        benchmark::DoNotOptimize(parser.Eval());
    }
}

void Expression_Fresh(benchmark::State& state)
{
    const TvlString text = kTexts[state.range(0)];
    for (auto _ : state) {
        double value = 0.0;
        WEqParser parser(text, kTokensAll, DRG::Radians);
        benchmark::DoNotOptimize(parser.GetValue(value));
        benchmark::DoNotOptimize(value);
    }
}

void Expression_MuParser(benchmark::State& state)
{
    const std::string text = kNarrowTexts[state.range(0)];
    for (auto _ : state) {
        mu::Parser parser;
        parser.SetExpr(text);
        benchmark::DoNotOptimize(parser.Eval());
    }
}

void ExpressionTerms_Own(benchmark::State& state)
{
    const TvlString text = Sum<std::wstring>(L"(1.5 - 2.25)*sqrt(16)", state.range(0));
    for (auto _ : state) {
        double value = 0.0;
        WEqParser parser(text, kTokensAll, DRG::Radians);
        if (!parser.GetValue(value))
            state.SkipWithError("no value");
        benchmark::DoNotOptimize(value);
    }
}

void ExpressionTerms_MuParser(benchmark::State& state)
{
    const auto text = Sum<std::string>("(1.5 - 2.25)*sqrt(16)", state.range(0));
    for (auto _ : state) {
        mu::Parser parser;
        parser.SetExpr(text);
        benchmark::DoNotOptimize(parser.Eval());
    }
}

BENCHMARK(FieldText_Fresh)->ArgName("terms")->Arg(2)->Arg(8)->Arg(32)->Arg(128);
BENCHMARK(FieldText_MuParser)->ArgName("terms")->Arg(2)->Arg(8)->Arg(32)->Arg(128);
BENCHMARK(ExpressionTerms_Own)->ArgName("terms")->RangeMultiplier(4)->Range(1, 64);
BENCHMARK(ExpressionTerms_MuParser)->ArgName("terms")->RangeMultiplier(4)->Range(1, 64);
BENCHMARK(Expression_Fresh)->DenseRange(0, 3);
BENCHMARK(Expression_MuParser)->DenseRange(0, 3);

}   // namespace

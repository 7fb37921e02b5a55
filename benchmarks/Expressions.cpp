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

void FieldText_Fresh(benchmark::State& state)
{
    WUnit& units = WUnit::GetDefaultWUnit();
    const TvlString text = L"5in + 3mm";
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
    const std::string text = "5in + 3mm";
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

BENCHMARK(FieldText_Fresh);
BENCHMARK(FieldText_MuParser);
BENCHMARK(Expression_Fresh)->DenseRange(0, 3);
BENCHMARK(Expression_MuParser)->DenseRange(0, 3);

}   // namespace

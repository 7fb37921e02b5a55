// Measures as text beside ICU's number formatter, which is made once and used again.
#include "Units.h"
#include "WRegionalSupportFormat.h"

#include <array>
#include <benchmark/benchmark.h>
#include <cmath>
#include <memory>
#include <unicode/numberformatter.h>
#include <unicode/unistr.h>

namespace {

constexpr std::size_t kCount = 1024;   // a power of two
constexpr double kMillimetre = 10000.0;

/// Millimetres of both signs with so many digits before the point: drawings, page sizes, and land.
std::array<double, kCount> Values(std::int64_t digits)
{
    std::array<double, kCount> values;
    const double least = std::pow(10.0, static_cast<double>(digits - 1));
    for (std::size_t i = 0; i < kCount; ++i)
        values[i] = (i % 5 == 0 ? -1.0 : 1.0) * least * (1.0125 + 8.987 * static_cast<double>(i) / kCount);
    return values;
}

icu::number::LocalizedNumberFormatter PeerFormatter()
{
    return icu::number::NumberFormatter::withLocale(icu::Locale("en", "US"))
        .precision(icu::number::Precision::fixedFraction(3));
}

void MeasureText(benchmark::State& state)
{
    const auto values = Values(state.range(0));
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(UNITConvToUnitAndString(values[i++ % kCount] * kMillimetre, 2, 0.0, 3));
}

void MeasureText_Icu(benchmark::State& state)
{
    const auto values = Values(state.range(0));
    const auto formatter = PeerFormatter();
    std::size_t i = 0;
    for (auto _ : state) {
        UErrorCode status = U_ZERO_ERROR;
        benchmark::DoNotOptimize(formatter.formatDouble(values[i++ % kCount], status).toString(status));
    }
}

// Texts that are ready take the regional form; the peer reads its number from text too.

template <class Text>
std::array<Text, kCount> ReadyTexts(std::int64_t digits)
{
    std::array<Text, kCount> texts;
    const auto values = Values(digits);
    for (std::size_t i = 0; i < kCount; ++i) {
        const std::string bytes = std::to_string(values[i]);
        texts[i] = Text(bytes.substr(0, bytes.size() - 3).c_str());
    }
    return texts;
}

struct WideText : TvlString {
    WideText() = default;
    explicit WideText(const char* bytes) : TvlString(std::wstring(bytes, bytes + std::char_traits<char>::length(bytes)))
    {
    }
};

void RegionalText(benchmark::State& state)
{
    const auto texts = ReadyTexts<WideText>(state.range(0));
    WRegionalSupportFormat format;
    TvlString out;
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(format.GetValueInLocaleFormat(texts[i++ % kCount], out));
}

void RegionalText_Icu(benchmark::State& state)
{
    const auto texts = ReadyTexts<std::string>(state.range(0));
    const auto formatter = PeerFormatter();
    std::size_t i = 0;
    for (auto _ : state) {
        UErrorCode status = U_ZERO_ERROR;
        benchmark::DoNotOptimize(formatter.formatDecimal(texts[i++ % kCount], status).toString(status));
    }
}

void Digits(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgName("digits")->RangeMultiplier(2)->Range(1, 8);
}

BENCHMARK(MeasureText)->Apply(Digits);
BENCHMARK(MeasureText_Icu)->Apply(Digits);
BENCHMARK(RegionalText)->Apply(Digits);
BENCHMARK(RegionalText_Icu)->Apply(Digits);

}   // namespace

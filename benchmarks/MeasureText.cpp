// Measures as text beside ICU's number formatter, which is made once and used again.
#include "Units.h"
#include "WRegionalSupportFormat.h"

#include <array>
#include <benchmark/benchmark.h>
#include <memory>
#include <unicode/numberformatter.h>
#include <unicode/unistr.h>

namespace {

constexpr std::size_t kCount = 1024;   // a power of two
constexpr double kMillimetre = 10000.0;

/// Millimetres of page sizes and drawings, of both signs.
std::array<double, kCount> Values()
{
    std::array<double, kCount> values;
    for (std::size_t i = 0; i < kCount; ++i)
        values[i] = (i % 5 == 0 ? -1.0 : 1.0) * (0.125 + 11.377 * static_cast<double>(i));
    return values;
}

icu::number::LocalizedNumberFormatter PeerFormatter()
{
    return icu::number::NumberFormatter::withLocale(icu::Locale("en", "US"))
        .precision(icu::number::Precision::fixedFraction(3));
}

void MeasureText(benchmark::State& state)
{
    const auto values = Values();
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(UNITConvToUnitAndString(values[i++ % kCount] * kMillimetre, 2, 0.0, 3));
}

void MeasureText_Icu(benchmark::State& state)
{
    const auto values = Values();
    const auto formatter = PeerFormatter();
    std::size_t i = 0;
    for (auto _ : state) {
        UErrorCode status = U_ZERO_ERROR;
        benchmark::DoNotOptimize(formatter.formatDouble(values[i++ % kCount], status).toString(status));
    }
}

// Texts that are ready take the regional form; the peer reads its number from text too.

template <class Text>
std::array<Text, kCount> ReadyTexts()
{
    std::array<Text, kCount> texts;
    const auto values = Values();
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
    const auto texts = ReadyTexts<WideText>();
    WRegionalSupportFormat format;
    TvlString out;
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(format.GetValueInLocaleFormat(texts[i++ % kCount], out));
}

void RegionalText_Icu(benchmark::State& state)
{
    const auto texts = ReadyTexts<std::string>();
    const auto formatter = PeerFormatter();
    std::size_t i = 0;
    for (auto _ : state) {
        UErrorCode status = U_ZERO_ERROR;
        benchmark::DoNotOptimize(formatter.formatDecimal(texts[i++ % kCount], status).toString(status));
    }
}

BENCHMARK(MeasureText);
BENCHMARK(MeasureText_Icu);
BENCHMARK(RegionalText);
BENCHMARK(RegionalText_Icu);

}   // namespace

// Conversion between units by their ids beside udunits2 with its converters ready in a table by id.
#include "WUnit.h"

#include <array>
#include <benchmark/benchmark.h>
#include <udunits2.h>

namespace {

struct Peer {
    int id;
    const char* name;
};

constexpr Peer kUnits[] = {
    {1, "inch"}, {2, "mm"}, {5, "cm"}, {7, "foot"}, {8, "mile"}, {9, "m"}, {10, "km"}, {16, "yard"}};
constexpr std::size_t kCount = std::size(kUnits);
constexpr std::size_t kIds = 41;

std::array<double, 1024> Values()
{
    std::array<double, 1024> values;
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = 0.1 + 0.37 * static_cast<double>(i);
    return values;
}

void UnitConversion_ById(benchmark::State& state)
{
    WUnit& units = WUnit::GetDefaultWUnit();
    for (const Peer& unit : kUnits)
        units.GetUnitDecimalPlaces(unit.id);
    const auto values = Values();
    std::size_t i = 0;
    for (auto _ : state) {
        const int from = kUnits[i % kCount].id;
        const int to = kUnits[i / kCount % kCount].id;
        benchmark::DoNotOptimize(units.ConvertFromUnitToUnit(from, to, values[i % values.size()], -1.0));
        ++i;
    }
}

void UnitConversion_Udunits(benchmark::State& state)
{
    ut_set_error_message_handler(ut_ignore);
    ut_system* const system = ut_read_xml(nullptr);
    static cv_converter* converters[kIds][kIds];
    for (const Peer& from : kUnits)
        for (const Peer& to : kUnits)
            converters[from.id][to.id] =
                ut_get_converter(ut_parse(system, from.name, UT_ASCII), ut_parse(system, to.name, UT_ASCII));
    const auto values = Values();
    std::size_t i = 0;
    for (auto _ : state) {
        const int from = kUnits[i % kCount].id;
        const int to = kUnits[i / kCount % kCount].id;
        benchmark::DoNotOptimize(cv_convert_double(converters[from][to], values[i % values.size()]));
        ++i;
    }
}

BENCHMARK(UnitConversion_ById);
BENCHMARK(UnitConversion_Udunits);

}   // namespace

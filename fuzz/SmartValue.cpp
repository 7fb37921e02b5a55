// Texts of value pairs, and what smart values make of them.
#include "SmartValue.h"
#include "Units.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <cmath>
#include <cstdint>

namespace {
constexpr std::size_t kMostEntries = 19;   // units that a text can name
constexpr int kUnits[] = {-1, 0, 1, 2, 3, 5, 6, 12, 22, 24, 39, 41, 42, 43};

/// What holds for every pair that a text gives.
void Check(const WUnitValuePair& pair)
{
    if (pair.GetAllEntries().size() > kMostEntries)
        __builtin_trap();
    for (const auto& [unit, value] : pair.GetAllEntries()) {
        unsigned found = 0;
        double stored = 0.0;
        if (std::isnan(value) || !pair.GetValue(unit, stored) || stored != value
            || !pair.IsDefaultValue(found, UNITConvertUnitToBase(unit, 0.0, value), 0.0) || found > unit)
            __builtin_trap();
    }
}
}   // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const TvlString text = TvlPlatform::FromUtf8({reinterpret_cast<const char*>(data), size});
    WUnitValuePair pair;
    pair.LoadFromString(text);
    Check(pair);
    WUnitValuePair again = pair;
    again.LoadFromString(text);
    if (pair != again)
        __builtin_trap();

    WSmartUnitValue smart;
    smart.SetValues(pair);
    double value = 0.0;
    unsigned lowest = 0;
    pair.GetDefaultValue(lowest, value);
    for (const int unit : kUnits)
        for (const int from : kUnits) {
            smart.GetValueForUnit(unit, from, value, 0.0);
            smart.GetValueForUnitBase(unit, from);
            smart.GetValueForUnitBase(unit, from, static_cast<int>(size), 0.0);
        }
    return 0;
}

// Field texts with units, on every display.
#include "WEqParser.h"
#include "WUnit.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static constexpr int kDisplays[] = {0, 1, 2, 3, 6, 7, 11, 12, 17, 26, 27, 28, 31, 32, 33, 39, 40};
    if (size < 2)
        return 0;
    const int id = kDisplays[data[0] % std::size(kDisplays)];
    const unsigned flags = data[1] | kTokensUnits;
    const TvlString text = TvlPlatform::FromUtf8({reinterpret_cast<const char*>(data) + 2, size - 2});
    WUnit& units = WUnit::GetDefaultWUnit();
    units.GetUnitString(id, kUnitTextFirstName);   // loads every part of a chain
    double value = 0.0;
    const int result = units.StringToValue(id, text, value, flags, DRG::Degrees);
    const WParseDiagnosis diagnosis = units.DiagnoseText(id, text, flags, DRG::Degrees);
    if ((result == 1) != (diagnosis.problem == WParseProblem::None)
        || diagnosis.position > static_cast<std::size_t>(text.GetLength()))
        __builtin_trap();
    if (result == 1)
        units.DisplayUnitValueAsString(id, value, data[1] % 5, -1);
    return 0;
}

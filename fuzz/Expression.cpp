// Plain expressions with every kind of token.
#include "WEqParser.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const unsigned flags = data[0] & kTokensAll;
    const auto mode = data[0] & 0x80 ? DRG::Degrees : DRG::Radians;
    double value = 0.0;
    WEqParser parser(TvlPlatform::FromUtf8({reinterpret_cast<const char*>(data) + 1, size - 1}), flags, mode);
    const int result = parser.GetValue(value);
    if ((result == 1) != (parser.GetDiagnosis().problem == WParseProblem::None))
        __builtin_trap();
    return 0;
}

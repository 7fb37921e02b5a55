#include "UnitSteps.h"

#include "ProceduralUnits.h"
#include "Units.h"

#include <charconv>
#include <cmath>
#include <iterator>

namespace {
constexpr int kInchUnit = 1;
constexpr int kSentinelUnit = 41;
constexpr std::size_t kMostDigits = 320;   // of a double's whole part

/// Digits of a whole number that is at least 1.
unsigned CountDigits(double whole)
{
    char digits[kMostDigits];
    const auto end = std::to_chars(digits, std::end(digits), whole, std::chars_format::fixed, 0).ptr;
    return static_cast<unsigned>(end - digits);
}

/// Zeros between the point and the first other digit, of `decimals` places.
unsigned CountZeros(double fraction, unsigned decimals)
{
    unsigned zeros = 0;
    for (; fraction > 0.0 && decimals != 0; --decimals, ++zeros) {
        fraction *= 10.0;
        if (fraction >= 1.0)
            break;
    }
    return zeros;
}

/// A power of ten by multiplication, whose last bits the steps have.
double ScaleOf(unsigned power)
{
    double scale = 1.0;
    for (; power > 0; --power)
        scale *= 10.0;
    return scale;
}

double RoundStep(double value)
{
    if (value < 0.17)
        return 0.1;
    if (value < 0.375)
        return 0.2;
    return value < 0.625 ? 0.5 : 1.0;
}
}   // namespace

double ScaledStep(double value, int unit, unsigned level, int up)
{
    const double whole = std::floor(std::fabs(value));
    const unsigned places = UNITGetDefDecimalPrecision(unit);
    const unsigned digits = whole >= 1.0 ? CountDigits(whole) : 0;
    const unsigned zeros = CountZeros(std::fabs(value) - whole, places);
    // The inch's row serves every unit here: spin controls of all applications are tuned to it.
    if (digits == 0 && zeros > places)
        return UNITGetIncrement(kInchUnit, level, up);

    const double scale = ScaleOf(digits == 0 ? zeros : digits);
    double step = digits == 0 ? RoundStep(value * scale) / scale : RoundStep(value / scale) * scale;
    const ProceduralUnit* const row = FindProceduralUnit(unit);
    if (row && unit < kSentinelUnit && level < kStepLevels)
        step = step * row->steps.byLevel[level] / row->steps.byLevel[0];
    return up ? step : step * -1.0;
}

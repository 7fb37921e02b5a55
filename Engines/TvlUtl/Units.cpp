// Measures, procedural form, and defaults that have a value for each unit.
#include "Units.h"

#include "CustomUnits.h"
#include "FatalError.h"
#include "LocaleCache.h"
#include "MeasureText.h"
#include "ProceduralUnits.h"
#include "UnitNames.h"
#include "X64Integers.h"
#include "siblings/TvlFeatureManagement/Features.h"
#include "windows/Locale.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

namespace {
constexpr int kUnknownUnit = 5002;   // the error box's code
constexpr const char* kSourceName = "../../Engines/TvlUtl/Units";
constexpr int kLineOfText = 469;
constexpr int kLineOfLimits = 1886;
constexpr unsigned kPixelDecimals = 2;
constexpr unsigned kLevels = 3;
constexpr std::size_t kMostDigits = 320;   // of a double's whole part
constexpr double kGridOfUnknown = -99.0;
constexpr double kLeastGrid = 1.968503937007874e-08;

const ProceduralUnit* BuiltIn(int unit) { return FindProceduralUnit(static_cast<unsigned>(unit)); }

// Conversion.

/// Along the chain of bases, which must end.
double CustomToBase(unsigned unit, double res, double value)
{
    if (const ProceduralUnit* const row = FindProceduralUnit(unit))
        return UnitToBase(*row, res, value);
    if (!UNITIsValidCustomUnit(static_cast<int>(unit)))
        return 0.0;
    const CustomUnitRecord& record = CustomUnit(static_cast<int>(unit));
    return CustomToBase(static_cast<unsigned>(record.baseUnit), res, value) * record.factor;
}

double BaseToCustom(unsigned unit, double res, double value)
{
    if (const ProceduralUnit* const row = FindProceduralUnit(unit))
        return BaseToUnit(*row, res, value);
    if (!UNITIsValidCustomUnit(static_cast<int>(unit)))
        return 0.0;
    const CustomUnitRecord& record = CustomUnit(static_cast<int>(unit));
    return BaseToCustom(static_cast<unsigned>(record.baseUnit), res, value) / record.factor;
}

// Measure text.

/// What the two families of measure text share up to the number: the decimals, and the value as it is shown.
struct ShownMeasure {
    double value;
    unsigned decimals;
    MeasureForm form;
};

/// A negative value that the decimals would lose becomes 0.0.
double DropSmallNegative(double value, unsigned decimals)
{
    return value < 0.0 && -1.0 / PowerOfTen(decimals) < value ? 0.0 : value;
}

unsigned ShownDecimals(int unit, unsigned decimals)
{
    if (decimals == kUnitNoDecimals)
        return 0;
    if (const ProceduralUnit* const row = BuiltIn(unit); row && row->form == MeasureForm::Pixels)
        return kPixelDecimals;
    return decimals == 0 ? UNITGetDefDecimalPrecision(unit) : decimals;
}

void RoundPixels(ShownMeasure& measure)
{
    using namespace FeatureManagement;
    measure.value = DropSmallNegative(measure.value, measure.decimals);
    if (!FeatureSet().IsEnabled(Features::PixelEnableDecimalPrecision_func())) {
        measure.decimals = 0;
        measure.value = std::floor(measure.value + 0.5);
        return;
    }
    const double power = PowerOfTen(measure.decimals);
    const double half = measure.value < 0.0 ? -0.5 : 0.5;
    measure.value = ToInt32AsX64(measure.value * power + half) / power;
}

MeasureForm FormOf(int unit)
{
    if (const ProceduralUnit* const row = BuiltIn(unit))
        return row->form;
    return UNITIsValidCustomUnit(unit) ? MeasureForm::Number : MeasureForm::Refused;
}

/// @param isPrecise the value keeps small digits, and whole numbers are rounded before anything else
ShownMeasure Measure(double base, int unit, double res, unsigned decimals, bool isPrecise)
{
    ShownMeasure measure{UNITConvertBaseToUnit(static_cast<unsigned>(unit), res, base), ShownDecimals(unit, decimals),
        FormOf(unit)};
    switch (measure.form) {
    case MeasureForm::Pixels:
        RoundPixels(measure);
        break;
    case MeasureForm::WholeNumber:
        if (!isPrecise)
            measure.value = DropSmallNegative(measure.value, measure.decimals);
        measure.value = std::floor(measure.value + 0.5);
        measure.decimals = 0;
        break;
    case MeasureForm::Number:
        measure.value = DropSmallNegative(measure.value, measure.decimals);
        break;
    case MeasureForm::Refused:
        UIMSG_FatalError(kUnknownUnit, kSourceName, kLineOfText, nullptr, 0);
        break;
    case MeasureForm::Chain:
    case MeasureForm::Empty:
        break;
    }
    return measure;
}

/// The text of a measure, its number written by `write` of a value and its decimals.
template <class Write>
TvlString MeasureText(const ShownMeasure& measure, const LocaleCache& locale, const Write& write)
{
    switch (measure.form) {
    case MeasureForm::Chain:
        return ChainText(measure.value, measure.decimals, locale);
    case MeasureForm::Empty:
    case MeasureForm::Refused:
        return TvlString();
    default:
        return write(measure.value, measure.decimals);
    }
}

// Steps.

bool IsScalable(int unit) { return unit != 0 && (unit < 17 || unit > 23); }

double Signed(double step, int up) { return up ? step : step * -1.0; }

/// Digits of a whole number that is at least 1.
int CountDigits(double whole)
{
    char digits[kMostDigits];
    return static_cast<int>(
        std::to_chars(digits, std::end(digits), whole, std::chars_format::fixed, 0).ptr - digits);
}

/// Zeros behind the point before the first other digit, of `decimals` places.
unsigned CountZeros(double fraction, unsigned decimals)
{
    unsigned zeros = 0;
    if (fraction > 0.0)
        for (; decimals != 0; --decimals, ++zeros) {
            fraction *= 10.0;
            if (fraction >= 1.0)
                break;
        }
    return zeros;
}

double RoundStep(double value)
{
    if (value < 0.17)
        return 0.1;
    if (value < 0.375)
        return 0.2;
    return value < 0.625 ? 0.5 : 1.0;
}

/// 10 to a power, as callers' documents have it: by multiplication.
double ScaleOf(unsigned power)
{
    double scale = 1.0;
    for (; power > 0; --power)
        scale *= 10.0;
    return scale;
}

// Arrays of ids, each ended by -1.
constexpr int kTypographic[] = {1, 2, 3, 4, 12, 13, -1};
constexpr int kPage[] = {1, 2, 3, 4, 5, 6, 12, 13, -1};
constexpr int kPlain[] = {22, -1};
constexpr int kLengths[] = {1, 2, 3, 4, 12, 13, 7, 16, 8, 5, 9, 10, -1};
constexpr int kDrawing[] = {1, 2, 3, 4, 6, 12, 13, 7, 16, 8, 5, 9, 10, 37, 38, -1};
}   // namespace

#include "UnitMeasureText.h"

#include "FatalError.h"
#include "ProceduralUnits.h"
#include "Units.h"
#include "X64Integers.h"
#include "siblings/TvlFeatureManagement/Features.h"

#include <cmath>

namespace {
constexpr unsigned kPixelDecimals = 2;
constexpr int kLineOfText = 469;

struct ShownMeasure {
    double value;
    unsigned decimals;
    MeasureForm form;
};

MeasureForm FormOf(int unit)
{
    if (const ProceduralUnit* const row = FindProceduralUnit(unit))
        return row->form;
    return UNITIsValidCustomUnit(unit) ? MeasureForm::Number : MeasureForm::Refused;
}

unsigned ShownDecimals(int unit, MeasureForm form, unsigned decimals)
{
    if (decimals == kUnitNoDecimals)
        return 0;
    if (form == MeasureForm::Pixels)
        return kPixelDecimals;
    return decimals == 0 ? UNITGetDefDecimalPrecision(unit) : decimals;
}

/// A negative value that the decimals would lose becomes 0.0.
double DropSmallNegative(const ShownMeasure& measure)
{
    return measure.value < 0.0 && -1.0 / PowerOfTen(measure.decimals) < measure.value ? 0.0 : measure.value;
}

void RoundPixels(ShownMeasure& measure)
{
    using namespace FeatureManagement;
    measure.value = DropSmallNegative(measure);
    if (!FeatureSet().IsEnabled(Features::PixelEnableDecimalPrecision_func())) {
        measure.decimals = 0;
        measure.value = std::floor(measure.value + 0.5);
        return;
    }
    const double power = PowerOfTen(measure.decimals);
    const double half = measure.value < 0.0 ? -0.5 : 0.5;
    measure.value = ToInt32AsX64(measure.value * power + half) / power;
}

void RoundWhole(ShownMeasure& measure)
{
    measure.decimals = 0;
    measure.value = std::floor(measure.value + 0.5);
}

struct Ending {
    bool dropsSmallWhole;   // whether a small negative becomes 0.0 before it is rounded to a whole number
    TvlString (*write)(double value, const NumberStyle& style, const LocaleCache& locale);
};

TvlString Show(double base, int unit, double res, NumberStyle style, const Ending& ending)
{
    if (!FillLocaleCache())
        return TvlString();
    const LocaleCache& locale = CurrentLocaleCache();
    const MeasureForm form = FormOf(unit);
    ShownMeasure measure{
        UNITConvertBaseToUnit(static_cast<unsigned>(unit), res, base), ShownDecimals(unit, form, style.decimals), form};
    switch (form) {
    case MeasureForm::Chain:
        return ChainText(measure.value, measure.decimals, locale);
    case MeasureForm::Refused:
        UIMSG_FatalError(kUnknownUnit, kUnitsSource, kLineOfText, nullptr, 0);
        return TvlString();
    case MeasureForm::Empty:
        return TvlString();
    case MeasureForm::Pixels:
        RoundPixels(measure);
        break;
    case MeasureForm::WholeNumber:
        if (ending.dropsSmallWhole)
            measure.value = DropSmallNegative(measure);
        RoundWhole(measure);
        break;
    case MeasureForm::Number:
        measure.value = DropSmallNegative(measure);
        break;
    }
    style.decimals = measure.decimals;
    return ending.write(measure.value, style, locale);
}
}   // namespace

TvlString UnitMeasureText(double base, int unit, double res, NumberStyle style)
{
    return Show(base, unit, res, style, {true, NumberText});
}

TvlString PreciseUnitMeasureText(double base, int unit, double res, NumberStyle style)
{
    return Show(base, unit, res, style, {false, PreciseNumberText});
}

// Measures, procedural form.
#include "Units.h"

#include "CustomUnits.h"
#include "FatalError.h"
#include "LocaleCache.h"
#include "ProceduralUnits.h"
#include "UnitMeasureText.h"
#include "UnitNames.h"
#include "UnitSteps.h"
#include "windows/Locale.h"

#include <algorithm>

namespace {
constexpr unsigned kUnknownDecimals = 1;
constexpr double kUnknownStep = 1.0;
constexpr double kInch = 254000.0;   // tenths of a micron
constexpr double kMillimetre = 10000.0;
constexpr double kMillimetresPerKilometre = 1000000.0;
constexpr int kLongestComposedName = 16;   // characters of a name whose comma follows the system
constexpr std::size_t kMeasurementCapacity = 4;

// Limits of grids.
constexpr double kCustomGridFirst = 200.0;
constexpr double kCustomGridSecond = 0.005;
constexpr double kPixelGridSecond = 1.0;
constexpr double kUnknownGridFirst = -99.0;
constexpr double kLeastGridSecond = 1.968503937007874e-08;
constexpr int kLineOfGridLimits = 1886;

// Arrays of ids, each ended by -1.
constexpr int kTypographic[] = {1, 2, 3, 4, 12, 13, -1};
constexpr int kPage[] = {1, 2, 3, 4, 5, 6, 12, 13, -1};
constexpr int kPlain[] = {22, -1};
constexpr int kLengths[] = {1, 2, 3, 4, 12, 13, 7, 16, 8, 5, 9, 10, -1};
constexpr int kDrawing[] = {1, 2, 3, 4, 6, 12, 13, 7, 16, 8, 5, 9, 10, 37, 38, -1};

struct FlaggedArray {
    int flag;
    const int* ids;
};

// The first whose flag is set decides.
constexpr FlaggedArray kArrays[] = {{kUnitArrayTypographic, kTypographic}, {kUnitArrayPage, kPage},
    {kUnitArrayPlain, kPlain}, {kUnitArrayLengths, kLengths}, {kUnitArrayDrawing, kDrawing}};

struct FlaggedName {
    int flag;
    UnitNameForm form;
};

constexpr FlaggedName kNames[] = {{kUnitNameSecond, UnitNameForm::Second}, {kUnitNameThird, UnitNameForm::Third},
    {kUnitNameFirst, UnitNameForm::First}};

SeparatorKind SeparatorOf(int unit)
{
    if (const ProceduralUnit* const row = FindProceduralUnit(unit))
        return row->separator;
    return UNITIsValidCustomUnit(unit) ? SeparatorKind::Decimal : SeparatorKind::None;
}

bool ReadIsMetric()
{
    return Ports::Locale::Get()
        .Setting(Ports::LocaleSetting::MeasurementSystem, kMeasurementCapacity)
        .value_or(std::wstring())
        .starts_with(L'0');
}

void RaiseGridSecond(double& second)
{
    if (second > 0.0 && second < kLeastGridSecond)
        second = kLeastGridSecond;
}
}   // namespace

// Conversion.

double UNITConvertUnitToBase(unsigned unit, double res, double value) noexcept
{
    if (const ProceduralUnit* const row = FindProceduralUnit(static_cast<int>(unit)))
        return UnitToBase(*row, res, value);
    return CustomUnitToBase(static_cast<int>(unit), res, value);
}

double UNITConvertBaseToUnit(unsigned unit, double res, double value) noexcept
{
    if (const ProceduralUnit* const row = FindProceduralUnit(static_cast<int>(unit)))
        return BaseToUnit(*row, res, value);
    return BaseToCustomUnit(static_cast<int>(unit), res, value);
}

double UNITConvertUnitToUnit(unsigned to, unsigned from, double res, double value) noexcept
{
    if (IsUnitless(to) || IsUnitless(from))
        return value;
    return UNITConvertBaseToUnit(to, res, UNITConvertUnitToBase(from, res, value));
}

double UNITConvertResUnitToUnit(unsigned to, unsigned from, double value) noexcept
{
    if (value > -1.0 && value < 1.0)
        return 0.0;
    // A resolution is the reciprocal of a length.
    return 1.0 / UNITConvertUnitToUnit(to, from, 0.0, 1.0 / value);
}

double UNITConvertResToBase(unsigned dotsPerInch) noexcept
{
    return dotsPerInch == 0 ? 0.0 : 1.0 / (1.0 / dotsPerInch * kInch / kMillimetre / kMillimetresPerKilometre);
}

// Measure text.

TvlString UNITConvToUnitString(double base, int unit, double res) noexcept
{
    return UNITConvToUnitAndString(base, unit, res, 0);
}

TvlString UNITConvToUnitAndString(double base, int unit, double res, unsigned decimals) noexcept
{
    return UNITConvToUnitAndStringEx(base, unit, res, decimals, 0, 1);
}

TvlString UNITConvToUnitAndStringEx(
    double base, int unit, double res, unsigned decimals, int trim, int regional) noexcept
try {
    return UnitMeasureText(base, unit, res, {decimals, trim != 0, regional != 0});
} catch (...) {
    return TvlString();
}

TvlString UNITPreciseConvToUnitAndString(double base, int unit, double res, unsigned decimals, int trim) noexcept
try {
    return PreciseUnitMeasureText(base, unit, res, {decimals, trim != 0, true});
} catch (...) {
    return TvlString();
}

// What a unit is like.

const int* UNITGetUnitArray(int flags) noexcept
{
    for (const FlaggedArray& array : kArrays)
        if (flags & array.flag)
            return array.ids;
    return flags & kUnitArrayAll ? CustomUnitArray() : nullptr;
}

TvlString UNITGetUnitAsString(int unit, int which) noexcept
try {
    const auto* const found = std::find_if(
        std::begin(kNames), std::end(kNames), [which](const FlaggedName& name) { return (which & name.flag) != 0; });
    if (found == std::end(kNames))
        return TvlString();
    const TvlString name = UnitName(unit, found->form);
    const int comma = name.Find(L',');
    if (comma < 0 || name.GetLength() > kLongestComposedName)
        return name;
    FillLocaleCache();
    return name.Left(comma) + TvlString(CurrentLocaleCache().listSeparator.View()) + name.Mid(comma + 1);
} catch (...) {
    return TvlString();
}

unsigned UNITGetDefDecimalPrecision(int unit) noexcept
{
    if (const ProceduralUnit* const row = FindProceduralUnit(unit))
        return row->decimals;
    return UNITIsValidCustomUnit(unit) ? static_cast<unsigned>(CustomUnit(unit).decimals) : kUnknownDecimals;
}

unsigned long long UNITGetSeparatorString(int unit, wchar_t* out) noexcept
try {
    *out = 0;
    const SeparatorKind kind = SeparatorOf(unit);
    if (!FillLocaleCache() || kind == SeparatorKind::None)
        return 0;
    const LocaleCache& locale = CurrentLocaleCache();
    const auto text = (kind == SeparatorKind::List ? locale.listSeparator : locale.decimalSeparator).View();
    *std::copy(text.begin(), text.end(), out) = 0;
    return text.size();
} catch (...) {
    return 0;
}

bool UNITIsMetric() noexcept
try {
    static const bool isMetric = ReadIsMetric();
    return isMetric;
} catch (...) {
    return false;
}

// Steps and grids.

double UNITGetIncrement(int unit, unsigned level, int up) noexcept
{
    if (level >= kStepLevels)
        return kUnknownStep;
    if (const ProceduralUnit* const row = FindProceduralUnit(unit))
        return row->HasSteps() ? row->steps.byLevel[level] * (up ? 1.0 : -1.0) : kUnknownStep;
    return UNITIsValidCustomUnit(unit) ? CustomUnit(unit).increments[level] : kUnknownStep;
}

double UNITGetAutoIncrement(int fromUnit, double value, int unit, unsigned level, int up) noexcept
{
    if (fromUnit == -1 || value == 0.0 || !IsScalable(unit) || !IsScalable(fromUnit))
        return UNITGetIncrement(unit, level, up);
    if (fromUnit == unit || unit == -1)
        return value;
    if (UNITIsValidCustomUnit(unit))
        return UNITGetIncrement(unit, level, up);
    const double known =
        UNITConvertUnitToUnit(static_cast<unsigned>(unit), static_cast<unsigned>(fromUnit), 0.0, value);
    return ScaledStep(known, unit, level, up);
}

void UNITIncAndConvValue(int unit, double* baseValue, int level, int count, int up, double res, double factor) noexcept
{
    const auto id = static_cast<unsigned>(unit);
    const double increment = UNITGetIncrement(unit, static_cast<unsigned>(level), up);
    const double measure = UNITConvertBaseToUnit(id, res, *baseValue);
    *baseValue = UNITConvertUnitToBase(id, res, increment * count * factor + measure);
}

void UNITGetGridFreqLimits(int unit, double* first, double* second, int pixelLimit) noexcept
{
    const ProceduralUnit* const row = FindProceduralUnit(unit);
    if (row && row->gridFirst != 0.0) {
        *first = row->gridFirst;
        *second = row->gridSecond;
    } else if (row && row->form == MeasureForm::Pixels) {
        *first = pixelLimit;
        *second = kPixelGridSecond;
    } else if (UNITIsValidCustomUnit(unit)) {
        *first = kCustomGridFirst;
        *second = kCustomGridSecond;
    } else {
        if (!row || row->rule != ConversionRule::Sentinel) {
            UIMSG_FatalError(kUnknownUnit, kUnitsSource, kLineOfGridLimits, nullptr, 0);
            *first = kUnknownGridFirst;
        }
        RaiseGridSecond(*second);
    }
}

#include "ProceduralUnits.h"

#include <iterator>

namespace {
using Rule = ConversionRule;
using Form = MeasureForm;
using Separator = SeparatorKind;

constexpr double kInch = 254000.0;   // tenths of a micron
constexpr double kMillimetre = 10000.0;
constexpr double kQuarter = 0.25;
constexpr double kDefaultResolution = 11811024.0;   // pixels per kilometre, 300 per inch
constexpr double kLeastResolution = 1e-06;
constexpr double kTenthMicronsPerKilometre = 1e10;
// A single-precision 0.05, widened: documents hold steps that were made with it.
constexpr double kSingleTwentieth = 0.05000000074505806;

constexpr StepSizes kNone{};
constexpr StepSizes kTenths{{0.1, 0.5, 1.0}};
constexpr StepSizes kWhole{{1.0, 2.0, 5.0}};

constexpr ProceduralUnit kUnits[] = {
    {0, Rule::Unchanged, 1.0, 1.0, 3, kNone, Form::Number, Separator::Decimal, 0.0, 0.0},
    {1, Rule::Factor, kInch, 1.0, 5, {{0.01, kSingleTwentieth, 0.1}}, Form::Number, Separator::Decimal, 200.0, 0.005},
    {2, Rule::Factor, kMillimetre, 1.0, 3, kTenths, Form::Number, Separator::Decimal, 254000.0, 0.0254},
    {3, Rule::Factor, 42333.333333333336, 1.0, 0, kTenths, Form::Chain, Separator::List, 1600.0, 0.0001},
    {4, Rule::Factor, 3527.777777777778, 1.0, 3, kTenths, Form::Number, Separator::Decimal, 140.0, 0.0001},
    {5, Rule::TwoFactors, kMillimetre, 10.0, 4, kTenths, Form::Number, Separator::Decimal, 25400.0, 0.0025},
    {6, Rule::Pixels, 1.0, 1.0, 0, kWhole, Form::Pixels, Separator::None, 0.0, 0.0},
    {7, Rule::Factor, 3048000.0, 1.0, 6, kTenths, Form::Number, Separator::Decimal, 200.0, 0.005},
    {8, Rule::Factor, 16093440000.0, 1.0, 9, kTenths, Form::Number, Separator::Decimal, 200.0, 0.005},
    {9, Rule::TwoFactors, kMillimetre, 1000.0, 6, kTenths, Form::Number, Separator::Decimal, 200.0, 0.005},
    {10, Rule::TwoFactors, kMillimetre, 1000000.0, 9, kWhole, Form::Number, Separator::Decimal, 200.0, 0.005},
    {11, Rule::Unchanged, 1.0, 1.0, 0, kWhole, Form::Number, Separator::Decimal, 0.0, 0.0},
    {12, Rule::Factor, 45118.7, 1.0, 0, {{0.08333, 0.5, 1.0}}, Form::Chain, Separator::List, 1775.0, 0.0001},
    {13, Rule::Factor, 3759.2, 1.0, 3, kTenths, Form::Number, Separator::Decimal, 150.0, 0.0001},
    {14, Rule::PartOfInch, kInch, 14.0, 3, kWhole, Form::Number, Separator::Decimal, 14.285714285714286,
        0.00035714285714285714},
    {15, Rule::PartOfInch, kInch, 10.0, 1, kWhole, Form::Number, Separator::Decimal, 20.0, 0.0005},
    {16, Rule::Factor, 9144000.0, 1.0, 6, kTenths, Form::Number, Separator::Decimal, 200.0, 0.005},
    {17, Rule::Unchanged, 1.0, 1.0, 0, kWhole, Form::WholeNumber, Separator::None, 0.0, 0.0},
    {18, Rule::PartOfInch, kInch, 10.0, 0, kTenths, Form::Number, Separator::None, 0.0, 0.0},
    {19, Rule::PartOfInch, kInch, 100.0, 0, {{0.01, 0.1, 1.0}}, Form::Number, Separator::None, 0.0, 0.0},
    {20, Rule::PartOfInch, kInch, 1000.0, 0, {{0.001, 0.1, 1.0}}, Form::Number, Separator::None, 0.0, 0.0},
    {21, Rule::None, 1.0, 1.0, 0, {{0.001, 0.1, 1.0}}, Form::Number, Separator::None, 0.0, 0.0},
    {22, Rule::Unchanged, 1.0, 1.0, 0, kWhole, Form::Number, Separator::Decimal, 0.0, 0.0},
    {23, Rule::Unchanged, 1.0, 1.0, 0, kWhole, Form::WholeNumber, Separator::None, 0.0, 0.0},
    {24, Rule::None, 1.0, 1.0, 0, kWhole, Form::Refused, Separator::None, 0.0, 0.0},
    {25, Rule::None, 1.0, 1.0, 0, kWhole, Form::Refused, Separator::None, 0.0, 0.0},
    {26, Rule::None, 1.0, 1.0, 0, kWhole, Form::Refused, Separator::None, 0.0, 0.0},
    {27, Rule::Unchanged, 1.0, 1.0, 0, kWhole, Form::Number, Separator::Decimal, 0.0, 0.0},
    {28, Rule::None, 1.0, 1.0, 0, kWhole, Form::Refused, Separator::None, 0.0, 0.0},
    {29, Rule::None, 1.0, 1.0, 0, kWhole, Form::Refused, Separator::None, 0.0, 0.0},
    {30, Rule::None, 1.0, 1.0, 0, kWhole, Form::Refused, Separator::None, 0.0, 0.0},
    {31, Rule::None, 1.0, 1.0, 0, kWhole, Form::Refused, Separator::None, 0.0, 0.0},
    {32, Rule::None, 1.0, 1.0, 0, kWhole, Form::Refused, Separator::None, 0.0, 0.0},
    {33, Rule::None, 1.0, 1.0, 0, kWhole, Form::Refused, Separator::None, 0.0, 0.0},
    {34, Rule::None, 1.0, 1.0, 0, kWhole, Form::Refused, Separator::None, 0.0, 0.0},
    {35, Rule::None, 1.0, 1.0, 0, kWhole, Form::Refused, Separator::None, 0.0, 0.0},
    {36, Rule::None, 1.0, 1.0, 0, kWhole, Form::Refused, Separator::None, 0.0, 0.0},
    {37, Rule::QuarterMetric, kMillimetre, 1.0, 0, kTenths, Form::Number, Separator::Decimal, 1016000.0, 0.00635},
    {38, Rule::QuarterMetric, kMillimetre, 1.0, 0, kTenths, Form::Number, Separator::Decimal, 1016000.0, 0.00635},
    {39, Rule::Unchanged, 1.0, 1.0, 0, kWhole, Form::Number, Separator::Decimal, 0.0, 0.0},
    {40, Rule::Unchanged, 1.0, 1.0, 0, kWhole, Form::Number, Separator::Decimal, 0.0, 0.0},
    {41, Rule::Sentinel, 1.0, 1.0, 1, kNone, Form::Empty, Separator::Decimal, 0.0, 0.0},
};

consteval bool StandAtTheirIds()
{
    for (std::size_t i = 0; i < std::size(kUnits); ++i)
        if (kUnits[i].id != static_cast<int>(i))
            return false;
    return std::size(kUnits) == kFirstCustomUnit;
}
static_assert(StandAtTheirIds());

/// Pixels per tenth of a micron.
double PixelsPerBase(double resolution)
{
    return (resolution <= kLeastResolution ? kDefaultResolution : resolution) / kTenthMicronsPerKilometre;
}
}   // namespace

const ProceduralUnit* FindProceduralUnit(int id)
{
    const auto place = static_cast<unsigned>(id);
    return place < std::size(kUnits) ? &kUnits[place] : nullptr;
}

double UnitToBase(const ProceduralUnit& unit, double resolution, double value)
{
    switch (unit.rule) {
    case Rule::None:
        return 0.0;
    case Rule::Unchanged:
        return value;
    case Rule::Factor:
        return value * unit.first;
    case Rule::TwoFactors:
        return value * unit.first * unit.second;
    case Rule::PartOfInch:
        return value / unit.second * unit.first;
    case Rule::QuarterMetric:
        return value * unit.first * kQuarter;
    case Rule::Pixels:
        return value / PixelsPerBase(resolution);
    case Rule::Sentinel:
        return -1.0;
    }
    return 0.0;
}

double BaseToUnit(const ProceduralUnit& unit, double resolution, double value)
{
    switch (unit.rule) {
    case Rule::None:
        return 0.0;
    case Rule::Unchanged:
        return value;
    case Rule::Factor:
        return value / unit.first;
    case Rule::TwoFactors:
        return value / unit.first / unit.second;
    case Rule::PartOfInch:
        return value / unit.first * unit.second;
    case Rule::QuarterMetric:
        return value * 4.0 / unit.first;
    case Rule::Pixels:
        return PixelsPerBase(resolution) * value;
    case Rule::Sentinel:
        return -1.0;
    }
    return 0.0;
}

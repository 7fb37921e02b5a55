// The measures of the procedural interface, in a table by id.
#pragma once

#include <cstdint>

/// How a value becomes its base value, tenths of a micron. The order of the operations decides the last bits, and
/// documents store the results.
enum class ConversionRule : unsigned char {
    None,            // 0.0: WUnit alone converts it
    Unchanged,       // a plain number or an angle
    Factor,          // * first; back: / first
    TwoFactors,      // * first * second; back: / first / second
    PartOfInch,      // / second * first; back: / first * second
    QuarterMetric,   // * first * 0.25; back: * 4.0 / first
    Pixels,          // by the resolution
    Sentinel,        // -1.0
};

/// How a measure is written.
enum class MeasureForm : unsigned char { Number, WholeNumber, Pixels, Chain, Empty, Refused };

enum class SeparatorKind : unsigned char { None, Decimal, List };

constexpr unsigned kStepLevels = 3;

/// Increments by level: small, medium, large.
struct StepSizes {
    double byLevel[kStepLevels];
};

struct ProceduralUnit {
    int id;
    ConversionRule rule;
    double first;
    double second;
    unsigned decimals;   // default decimal places
    StepSizes steps;
    MeasureForm form;
    SeparatorKind separator;
    double gridFirst;   // limits of a grid, 0.0 for none
    double gridSecond;

    /// Whether a step has a direction: the unit that is none and the sentinel have a step of 1.0 either way.
    constexpr bool HasSteps() const { return steps.byLevel[0] != 0.0; }
};

constexpr int kFirstCustomUnit = 42;

/// The row of a built-in id; null for every other.
const ProceduralUnit* FindProceduralUnit(int id);

/// Whether an id is a number without a unit, which conversions between units pass on unchanged.
constexpr bool IsUnitless(unsigned id)
{
    return id <= 39 && (0x8000C20801 >> id & 1) != 0;   // ids 0, 11, 17, 22, 23 and 39
}

double UnitToBase(const ProceduralUnit& unit, double resolution, double value);
double BaseToUnit(const ProceduralUnit& unit, double resolution, double value);

#include "SmartValue.h"

#include "NearValues.h"
#include "Units.h"
#include "X64Integers.h"

#include <algorithm>

namespace {
constexpr int kBaseUnit = -1;   // values without a unit of their own
constexpr double kHalf = 0.5;

double ToBase(int unit, double res, double value)
{
    return UNITConvertUnitToBase(static_cast<unsigned>(unit), res, value);
}

double Convert(int unit, int fromUnit, double res, double value)
{
    return UNITConvertUnitToUnit(static_cast<unsigned>(unit), static_cast<unsigned>(fromUnit), res, value);
}
}   // namespace

WSmartUnitValue::WSmartUnitValue() = default;
WSmartUnitValue::WSmartUnitValue(const WSmartUnitValue&) = default;
WSmartUnitValue& WSmartUnitValue::operator=(const WSmartUnitValue&) = default;
WSmartUnitValue::~WSmartUnitValue() = default;

void WSmartUnitValue::SetIncrements(const WUnitValuePair& increments) { m_increments = increments; }
const WUnitValuePair& WSmartUnitValue::GetIncrements() const { return m_increments; }
void WSmartUnitValue::SetValues(const WUnitValuePair& values) { m_values = values; }
const WUnitValuePair& WSmartUnitValue::GetValues() const { return m_values; }

double WSmartUnitValue::StoredValue(int unit) const
{
    double value = 0.0;
    m_values.GetValue(static_cast<unsigned>(unit), value);
    return value;
}

/// The default of `unit` for a default of another unit, both in base units; any other value unchanged.
double WSmartUnitValue::DefaultInBase(int unit, double value, double res) const
{
    unsigned hit = 0;
    const bool isOthers = m_values.IsDefaultValue(hit, value, res) && hit != static_cast<unsigned>(unit);
    return isOthers ? ToBase(unit, res, StoredValue(unit)) : value;
}

double WSmartUnitValue::GetValueForUnit(int unit, int fromUnit, double value, double res) const
{
    if (unit == fromUnit)
        return value;
    if (fromUnit == kBaseUnit)
        return DefaultInBase(unit, value, res);

    double stored = 0.0;
    if (!m_values.GetValue(static_cast<unsigned>(unit), stored))
        return Convert(unit, fromUnit, res, value);
    double source = 0.0;
    if (m_values.GetValue(static_cast<unsigned>(fromUnit), source))
        return IsNear(source, value) ? stored : Convert(unit, fromUnit, res, value);

    const auto& entries = m_values.GetAllEntries();
    const bool isAny = std::any_of(entries.begin(), entries.end(), [&](const auto& entry) {
        return IsNear(entry.second, Convert(static_cast<int>(entry.first), fromUnit, res, value));
    });
    return isAny ? stored : Convert(unit, fromUnit, res, value);
}

int WSmartUnitValue::GetValueForUnitBase(int unit, int toBase) const
{
    const double value = StoredValue(unit);
    return ToInt32AsX64((toBase ? ToBase(unit, 0.0, value) : value) + kHalf);
}

int WSmartUnitValue::GetValueForUnitBase(int unit, int fromUnit, int value, double res) const
{
    return ToInt32AsX64(GetDValueForUnitBase(unit, fromUnit, static_cast<double>(value), res) + kHalf);
}

double WSmartUnitValue::GetDValueForUnitBase(int unit, int fromUnit, double value, double res) const
{
    if (unit == kBaseUnit)
        return value;
    if (fromUnit == kBaseUnit)
        return DefaultInBase(unit, value, res);
    const double source = UNITConvertBaseToUnit(static_cast<unsigned>(fromUnit), res, value);
    return ToBase(unit, res, GetValueForUnit(unit, fromUnit, source, res));
}

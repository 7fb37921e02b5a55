// Defaults that are round in every unit. A sensible margin in inches is not the exact conversion of a sensible margin in
// millimetres: a pair holds one value per unit, and a smart value goes from one unit's default to the other's.
//
// Units are the ids of the procedural interface (Units.h), the base unit is the tenth of a micron, and `res` is a
// resolution in pixels per kilometre as there. Two values are near each other when they differ by less than a thousandth.
// For the user interface thread.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <map>

/// One value for each of some units.
class TVLUTL_API WUnitValuePair {
public:
    /// Without values.
    WUnitValuePair();
    /// @{
    /// Copies are objects of their own.
    WUnitValuePair(const WUnitValuePair&);
    WUnitValuePair& operator=(const WUnitValuePair&);
    /// @}
    virtual ~WUnitValuePair();

    /// Adds a value; a unit that has one keeps it.
    void AddValue(unsigned unit, double value);
    /// Adds a value in ciceros (unit 12), twelve didots to one.
    void AddCiceroDidotValue(double ciceros, double didots);
    /// Removes a unit's value, if there is one.
    void RemoveValue(unsigned unit);
    /// Takes the values of a text such as "8.25in;210mm;51,6cc" in place of all others. Numbers have a point in every
    /// locale; ciceros may be followed by a comma and didots. A unit is known by letters that stand anywhere in its entry,
    /// and the first value of a unit counts. An entry without such letters is a number without a unit (22), one without a
    /// number is 0.0.
    void LoadFromString(const TvlString& text);

    /// The value of a unit; false, with `value` as it was, when there is none.
    bool GetValue(unsigned unit, double& value) const;
    /// The value of a unit, with `foundUnit` as it was, or else the value of the lowest id, which `foundUnit` becomes.
    /// False when there are no values at all.
    bool GetValue(unsigned unit, unsigned& foundUnit, double& value) const;
    /// Id and value of the lowest id; false when there are no values.
    bool GetDefaultValue(unsigned& unit, double& value) const;
    /// Whether a value in base units is near one of these; `unit` becomes the lowest id for which it is.
    bool IsDefaultValue(unsigned& unit, double value, double res) const;
    /// Whether there is no value at all.
    bool IsEmpty() const;
    /// Removes all values.
    void Clear();
    /// Values by id. The map belongs to this object.
    const std::map<unsigned, double>& GetAllEntries() const;

    /// Whether an id or a value differs, to the last bit; a value that is not a number differs from all.
    bool operator!=(const WUnitValuePair& other) const;

private:
    std::map<unsigned, double> m_values;   // by unit id
};

/// A default in several units, with the increments that go with it.
class TVLUTL_API WSmartUnitValue {
public:
    /// Without values and increments.
    WSmartUnitValue();
    /// @{
    /// Copies are objects of their own.
    WSmartUnitValue(const WSmartUnitValue&);
    WSmartUnitValue& operator=(const WSmartUnitValue&);
    /// @}
    virtual ~WSmartUnitValue();

    /// Takes a copy of the increments, one for each unit.
    void SetIncrements(const WUnitValuePair& increments);
    /// The increments, which belong to this object.
    const WUnitValuePair& GetIncrements() const;
    /// Takes a copy of the default's values.
    void SetValues(const WUnitValuePair& values);
    /// The default's values, which belong to this object.
    const WUnitValuePair& GetValues() const;

    /// `value`, in `fromUnit`, in `unit`: the stored value of `unit` when `value` is near a stored one, else the exact
    /// conversion. With a `fromUnit` of -1 `value` and the result are in base units, and what is near no stored value
    /// comes back unchanged; so does a stored value of `unit` itself.
    double GetValueForUnit(int unit, int fromUnit, double value, double res) const;
    /// The stored value of `unit`, 0.0 without one, in base units when `toBase` is not 0. Rounded: 0.5 is added and the
    /// fraction cut off, and what does not fit is the smallest integer.
    int GetValueForUnitBase(int unit, int toBase) const;
    /// GetDValueForUnitBase for integers, rounded in the same way.
    int GetValueForUnitBase(int unit, int fromUnit, int value, double res) const;
    /// `value`, in base units, as the default of `unit` in base units. `fromUnit` is the unit that the value was meant in,
    /// or -1 when that is unknown: then only what is near a stored value changes. A `unit` of -1 changes nothing.
    double GetDValueForUnitBase(int unit, int fromUnit, double value, double res) const;

private:
    double StoredValue(int unit) const;
    double DefaultInBase(int unit, double value, double res) const;

    WUnitValuePair m_increments;
    WUnitValuePair m_values;
};

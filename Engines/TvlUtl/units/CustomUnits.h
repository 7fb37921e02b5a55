// Units that users and deployments define, with ids from 42 on.
#pragma once

#include "siblings/TvlPlatform/TvlString.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

constexpr std::size_t kCustomRecordSize = 256;   // characters of a record's text, end mark included

/// One custom unit. A name that fills its array has no end mark.
struct CustomUnitRecord {
    wchar_t firstName[20];
    wchar_t secondName[22];
    wchar_t thirdName[20];
    wchar_t fourthName[20];
    double factor;   // base units to the unit
    std::int32_t baseUnit;
    double increments[3];
    std::int32_t decimals;
};

/// The unit of a record's text; empty for a text of fewer than five fields and for a factor of 0.0.
std::optional<CustomUnitRecord> ReadCustomUnitRecord(std::wstring_view text);

/// The record's text. Numbers have six decimals, so that a very small factor is lost; what is longer than a record's
/// buffer is cut. Files written so are out in the world.
TvlString WriteCustomUnitRecord(const CustomUnitRecord& record);

/// The name in an array, up to its end mark or its end.
template <std::size_t size>
std::wstring_view NameOf(const wchar_t (&name)[size])
{
    return std::wstring_view(name, size).substr(0, std::wstring_view(name, size).find(L'\0'));
}

/// The unit of an id of which UNITIsValidCustomUnit answers 1. One place past the last unit, which that test admits,
/// there is a unit of zeros.
const CustomUnitRecord& CustomUnit(int id);

/// Tenths of a micron, by way of the base unit, which may be a custom one too; 0.0 for an id that is none, and for bases
/// that lead round in a circle: no honest chain of them is longer than there are units.
double CustomUnitToBase(int id, double resolution, double value);
/// The inverse.
double BaseToCustomUnit(int id, double resolution, double value);

/// Built-in ids, then the custom ones, then -1; null as long as no units were read.
const int* CustomUnitArray();

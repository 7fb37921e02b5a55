// Custom units as the configuration keeps them: one line of text each, fields between commas.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

constexpr std::size_t kCustomUnitRecordSize = 256;   ///< characters of a record's text, end mark included

/// One custom unit. A name that fills its array has no end mark.
struct CustomUnitRecord {
    wchar_t firstName[20];    // the abbreviation, as the names of UNITName
    wchar_t secondName[22];   // in the singular
    wchar_t thirdName[20];    // in the plural; UNITGetUnitAsString gives 2 characters of it
    wchar_t fourthName[20];   // for the configuration alone
    double factor;            // base units to the unit
    std::int32_t baseUnit;    // id, of a built-in or a custom unit
    double increments[3];     // small, medium, large
    std::int32_t decimals;    // default decimal places
};

/// The unit of a record's text, which ends at an end mark or behind 255 characters: four names, the factor, and what may be
/// missing from the end on: base unit (1, the inch), three increments (0.0) and decimals (0). Empty fields do not count.
/// Nothing for a text of fewer than five fields and for a factor of 0.0.
TVLUTL_API std::optional<CustomUnitRecord> ReadCustomUnitRecord(std::wstring_view text);

/// The record's text, at most 255 characters. Its numbers have six decimals, so that a very small factor is lost: files
/// written so are out in the world.
TVLUTL_API TvlString WriteCustomUnitRecord(const CustomUnitRecord& record);

/// The name in an array of a record, up to its end mark or the array's end.
template <std::size_t size>
std::wstring_view CustomUnitName(const wchar_t (&name)[size])
{
    const std::wstring_view all(name, size);
    return all.substr(0, all.find(L'\0'));
}

// Measures, procedural form: conversion, steps, names and measure text by unit id. The ids are those of WUnit, 0 to 41
// built in and from 42 custom; the factors are this interface's own, in tenths of a micron, the base unit. Ids that WUnit
// alone converts (21, 24 to 26, 28 to 36) are 0.0 here.
//
// `res` is a resolution in pixels per kilometre; 1e-06 or less stands for 11811024.0, which is 300 pixels per inch.
// Everything here is for the user interface thread.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlPlatform/TvlString.h"

/// Which array UNITGetUnitArray gives: the lowest of these bits decides.
enum UNITArray : int {
    kUnitArrayTypographic = 1,   ///< inch, millimetre, picas, point, ciceros, didot
    kUnitArrayPage = 2,          ///< these with centimetre and pixel
    kUnitArrayPlain = 4,         ///< numbers without a unit
    kUnitArrayLengths = 8,       ///< the typographic ones, then foot to kilometre
    kUnitArrayDrawing = 16,      ///< these with pixel and the quarter millimetres
    kUnitArrayAll = 64,          ///< these, then the custom units
};

/// Which name UNITGetUnitAsString gives. Of several bits the order of this list decides.
enum UNITName : int {
    kUnitNameSecond = 1,   ///< in the singular
    kUnitNameThird = 4,    ///< in the plural
    kUnitNameFirst = 2,    ///< the abbreviation
};

/// Decimals that stand for none at all, where 0 stands for a unit's own.
constexpr unsigned kUnitNoDecimals = 10000;

extern "C" {

/// Reads the user's separators once; 1, or 0 when a setting can't be read. Before that the decimal separator is "." and
/// the list separator ",". The measure texts follow a later change.
TVLUTL_API int UNITInitialize() noexcept;

// Conversion. The order of multiplications is part of the contract: documents store the results.

/// Tenths of a micron of a measure; 0.0 for ids that are not converted here and for custom units whose bases lead round
/// in a circle, -1.0 for the sentinel 41. Numbers without a unit and angles pass unchanged.
TVLUTL_API double UNITConvertUnitToBase(unsigned unit, double res, double value) noexcept;
/// The inverse.
TVLUTL_API double UNITConvertBaseToUnit(unsigned unit, double res, double value) noexcept;
/// From unit to unit, the target first. A number without a unit (0, 11, 17, 22, 23, 39) on either side passes the value
/// unchanged.
TVLUTL_API double UNITConvertUnitToUnit(unsigned to, unsigned from, double res, double value) noexcept;
/// Dots per `to` of dots per `from`; 0.0 for less than one.
TVLUTL_API double UNITConvertResUnitToUnit(unsigned to, unsigned from, double value) noexcept;
/// Pixels per kilometre; 300 gives 11811023.622047244, a little less than the default's rounded number.
TVLUTL_API double UNITConvertResToBase(unsigned dotsPerInch) noexcept;

}   // extern "C"

// Measure text, at most 49 characters before the regional form groups the digits. Empty for the sentinel, when a setting
// of the locale can't be read, and, with an error box, for an id that has no text here (24 to 26, 28 to 36, unknown).
// Picas and ciceros (3, 12) are written as two parts with the list separator between them.

/// A base value in a unit with the unit's own decimals.
TVLUTL_API TvlString UNITConvToUnitString(double base, int unit, double res) noexcept;
/// @param decimals 0 for the unit's own, kUnitNoDecimals for none; pixels have two or none, whatever is given
TVLUTL_API TvlString UNITConvToUnitAndString(double base, int unit, double res, unsigned decimals) noexcept;
/// @param trim     not 0 to leave zeros at the end away, down to one decimal
/// @param regional not 0 for the digits' grouping and the sign's place of the user's region
TVLUTL_API TvlString UNITConvToUnitAndStringEx(
    double base, int unit, double res, unsigned decimals, int trim, int regional) noexcept;
/// As UNITConvToUnitAndStringEx in the regional form, but a value below 1 that the decimals would lose keeps its first
/// two digits.
TVLUTL_API TvlString UNITPreciseConvToUnitAndString(
    double base, int unit, double res, unsigned decimals, int trim) noexcept;

/// A name of a unit, up to 20 characters; of a custom unit the third name has 2. A comma in it becomes the list separator.
/// @param which bits of UNITName; without one the name is empty
TVLUTL_API TvlString UNITGetUnitAsString(int unit, int which) noexcept;

extern "C" {

// What a unit is like.

/// Ids ended by -1; null without a bit of UNITArray. They last, but for those with the custom units: these come with
/// UNITCustomInitialize, go with the last UNITCustomUnInitialize, and are null before and after.
TVLUTL_API const int* UNITGetUnitArray(int flags) noexcept;
/// Default decimals; 1 for an unknown id.
TVLUTL_API unsigned UNITGetDefDecimalPrecision(int unit) noexcept;
/// Copies the separator inside a measure of the unit, the decimal or (3, 12) the list separator, to a buffer of at least 4
/// characters, and returns its length; 0 with an empty text where there is none.
TVLUTL_API unsigned long long UNITGetSeparatorString(int unit, wchar_t* out) noexcept;
/// Whether the user measures in metric units. Asked once in a process.
TVLUTL_API bool UNITIsMetric() noexcept;

// Steps of spin controls, and grids.

/// Step of `level` 0, 1 or 2 (small, medium, large), negative when `up` is 0. 1.0 for unit 0 and what is unknown; a custom
/// unit's step does not ask for `up`.
TVLUTL_API double UNITGetIncrement(int unit, unsigned level, int up) noexcept;
/// A round step for a value that is known in `fromUnit`, scaled to the value's size. Falls back on UNITGetIncrement for a
/// `fromUnit` of -1, a value of 0.0, custom units and units that don't scale (0, 17 to 23); gives the value itself when the
/// units are the same or `unit` is -1.
TVLUTL_API double UNITGetAutoIncrement(int fromUnit, double value, int unit, unsigned level, int up) noexcept;
/// Steps a base value `count` times `factor`, in the unit and not in the base: steps in inches land on round inches.
TVLUTL_API void UNITIncAndConvValue(
    int unit, double* baseValue, int level, int count, int up, double res, double factor) noexcept;
/// Limits of a grid's frequency in the unit. For the sentinel `first` stays as it is, and `second` is kept from being too
/// small; an unknown id shows an error box and sets `first` to -99.0.
/// @param pixelLimit `first` for pixels
TVLUTL_API void UNITGetGridFreqLimits(int unit, double* first, double* second, int pixelLimit) noexcept;

// Custom units, kept by the configuration. Several clients may initialise; the last end writes the units back.

/// Reads the custom units; 1, also for every further client, or 0 without memory.
TVLUTL_API int UNITCustomInitialize() noexcept;
/// Ends a client; the last one writes the units back, and there are none from then on. Always 1.
TVLUTL_API int UNITCustomUnInitialize() noexcept;
/// 1 for a custom unit's id, and for the id one past the last, which callers count on: a unit of zeros answers there.
TVLUTL_API int UNITIsValidCustomUnit(int id) noexcept;
/// The base unit of a custom id; ids 1 to 39 stand for themselves; else 0.
TVLUTL_API int UNITCustomUnitMappedUsing(int id) noexcept;

}   // extern "C"

// Measures as text, by unit.
#pragma once

#include "MeasureText.h"

// What the error box shows for a unit that has no text or no grid.
constexpr int kUnknownUnit = 5002;
constexpr const char* kUnitsSource = "../../Engines/TvlUtl/Units";

/// UNITConvToUnitAndStringEx; `style.decimals` as callers give them.
TvlString UnitMeasureText(double base, int unit, double res, NumberStyle style);

/// UNITPreciseConvToUnitAndString.
TvlString PreciseUnitMeasureText(double base, int unit, double res, NumberStyle style);

// Round steps for values of any size.
#pragma once

/// Whether a step of the unit may follow the size of a value: no plain numbers, no parts of an inch beyond the tenth.
constexpr bool IsScalable(int unit) { return unit != 0 && (unit < 17 || unit > 23); }

/// UNITGetAutoIncrement for a value known in `unit`.
double ScaledStep(double value, int unit, unsigned level, int up);

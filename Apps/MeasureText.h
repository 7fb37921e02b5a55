// What the programs show of measures.
#pragma once

#include "siblings/TvlPlatform/TvlString.h"

class WUnit;

/// A value as text in the user's region: on displays of one part grouped and with the user's separators.
TvlString RegionalText(WUnit& units, int id, double value, unsigned form, int decimals);

/// The id under which the procedural functions (Units.h) know a display's measure: its own for most. They convert not
/// every one.
int ProceduralUnit(int display);

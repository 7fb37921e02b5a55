// Names of the measures of the procedural interface.
#pragma once

#include "siblings/TvlPlatform/TvlString.h"

enum class UnitNameForm { First, Second, Third };

/// A name in the user's language, up to 20 characters; empty for an id without names.
TvlString UnitName(int unit, UnitNameForm form);

// The settings of a workspace as preferences.
#pragma once

#include "siblings/TvlPlatform/TvlString.h"

/// IniUpdateRegistry, which tells whether the preferences are those of the file now. When they are not, its mark stays as far
/// as it can be made.
bool ApplySettings(const TvlString& path);

// The process-wide key context, and what the machine's form allows.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlWin/KeyContext.h"

/// What keys are down. One object for the process, made by the first call.
TVLUTL_API Framework::UI::IKeyContext& GetKeyContext();
/// Whether the user can switch between desktop and tablet mode. Always true.
TVLUTL_API bool HasTabletModeToggling();

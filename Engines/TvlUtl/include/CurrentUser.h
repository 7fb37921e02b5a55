// The user of the running program.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlPlatform/TvlString.h"

namespace TvlUtl {

/// The user's display name, or the name that the user logs in with where there is none; empty when the system tells neither.
TVLUTL_API TvlString GetCurrentUserName();

}   // namespace TvlUtl

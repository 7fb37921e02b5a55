// The managed runtime that parts of the applications need.
#pragma once

#include "TvlUtlApi.h"

namespace TvlUtl {

/// Whether a .NET runtime of 4.0.30319 or later is installed and the .NET Framework is 4.7 or later. Found out by the first
/// call; any thread may call. False on linux.
TVLUTL_API bool IsDotNetInstalled();
/// The same.
TVLUTL_API bool IsNewDotNetInstalled();

}   // namespace TvlUtl

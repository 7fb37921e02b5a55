// Identifiers of the engines and of the applications, each for the other.
#pragma once

#include "TvlUtlApi.h"

extern "C" {

/// Maps an engine's GUID to the application's. 1 and the partner in `to`, or 0 with `to` left alone. The pairs come
/// from "guidmap.dat" in the data folder, read once; without it every look-up is a miss.
TVLUTL_API int UTLMapEng2AppGUID(const GUID* from, GUID* to) noexcept;
/// Maps an application's GUID to the engine's, in the same way.
TVLUTL_API int UTLMapApp2EngGUID(const GUID* from, GUID* to) noexcept;
}

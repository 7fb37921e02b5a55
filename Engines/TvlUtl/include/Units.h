// Measures, procedural form.
#pragma once

#include "TvlUtlApi.h"

/// Reads the user's separators once; 1, or 0 when a setting can't be read. Before that the decimal separator is "." and
/// the list separator ",". For the user interface thread.
TVLUTL_API int UNITInitialize();

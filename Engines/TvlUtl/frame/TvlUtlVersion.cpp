#include "TvlUtlVersion.h"

extern "C" const char* TvlUtlVersion() noexcept { return TVLUTL_VERSION; }

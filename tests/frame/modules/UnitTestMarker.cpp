// Its presence in a process is all that it is for.
#include "windows/Types.h"

extern "C" TVL_EXPORT int unitTestMarker;
int unitTestMarker = 1;

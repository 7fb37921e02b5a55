// An application that includes the system's header before ours.
#include <windows.h>

#include "AllHeaders.h"

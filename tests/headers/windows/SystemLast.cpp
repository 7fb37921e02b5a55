// An application that includes the system's header after ours.
#include "AllHeaders.h"

#include <windows.h>

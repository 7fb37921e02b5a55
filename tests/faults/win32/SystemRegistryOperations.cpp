// Calls of the registry go straight to the system, which has no memory of this process's in them.
#include "HeapOperation.h"

HeapOperations SystemRegistryOperations() { return {}; }

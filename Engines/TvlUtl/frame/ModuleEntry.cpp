#include "windows/ModuleEntry.h"
#include "InjectedServices.h"

TVL_MODULE_ENTRY(ExposeDynamicEntryPointsToOtherLibraries)

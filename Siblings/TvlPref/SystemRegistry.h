// The process-wide registry of each target.
#pragma once

#include "siblings/TvlPref/IRegistry.h"

namespace PREFUTILS {

IRegistry& SystemRegistry();

}   // namespace PREFUTILS

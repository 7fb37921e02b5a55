// The test kit's, for the tests of this tree.
#pragma once

#include "TvlTestKit/MemoryRegistry.h"

using TvlTestKit::MemoryRegistry;

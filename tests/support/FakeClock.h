// The test kit's, for the tests of this tree.
#pragma once

#include "TvlTestKit/FakeClock.h"

using TvlTestKit::FakeClock;

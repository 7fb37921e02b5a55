// The test kit's, for the tests of this tree.
#pragma once

#include "TvlTestKit/FakeWindowing.h"

using TvlTestKit::FakeWindowing;

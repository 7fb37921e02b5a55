// The test kit's, for the tests of this tree.
#pragma once

#include "TvlTestKit/FakeEnvironment.h"

using TvlTestKit::FakeEnvironment;

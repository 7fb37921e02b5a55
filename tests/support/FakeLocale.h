// The test kit's, for the tests of this tree.
#pragma once

#include "TvlTestKit/FakeLocale.h"

using TvlTestKit::FakeLocale;

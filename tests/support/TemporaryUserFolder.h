// The test kit's, for the tests of this tree.
#pragma once

#include "TvlTestKit/TemporaryUserFolder.h"
#include "ChildProcess.h"

using TvlTestKit::TemporaryUserFolder;

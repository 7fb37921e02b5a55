// The test kit's, for the tests of this tree.
#pragma once

#include "ChildProcess.h"
#include "TvlTestKit/TemporaryUserFolder.h"

using TvlTestKit::TemporaryUserFolder;

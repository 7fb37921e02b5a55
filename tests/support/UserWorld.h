// The test kit's, for the tests of this tree.
#pragma once

#include "ChildProcess.h"
#include "TvlTestKit/UserWorld.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <fstream>
#include <map>

using TvlTestKit::FakeEnvironment;
using TvlTestKit::MemoryRegistry;
using TvlTestKit::UserWorld;

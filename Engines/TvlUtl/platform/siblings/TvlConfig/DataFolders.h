// Folders of the program and of the data that are installed with it. No path has a separator at its end.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

/// The folder of the running program's file.
TVLSIBLINGS_API TvlString INIGetAppDir();
/// "Data" in the suite's folder.
TVLSIBLINGS_API TvlString INIGetDataDir();
/// "TestData" beside the program: data of a unit test process that brings its own along.
TVLSIBLINGS_API TvlString INIGetDataDirForUnitTests();

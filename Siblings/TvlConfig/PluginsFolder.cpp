#include "siblings/TvlConfig/PluginsFolder.h"

#include "siblings/TvlConfig/SuiteFolders.h"
#include "siblings/TvlUtils/SystemIO.h"

TvlString INIGetPluginsDir() { return TvlUtils::SystemIO::Path::Combine(TvlConfig::GetSuiteDir(), L"Plugins"); }

#include "siblings/TvlConfig/DataFolders.h"

#include "siblings/TvlConfig/SuiteFolders.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "windows/Modules.h"

namespace SystemIO = TvlUtils::SystemIO;

TvlString INIGetAppDir()
{
    return SystemIO::FromFilePath(SystemIO::ToFilePath(Ports::Modules::Get().ProgramPath()).parent_path());
}

TvlString INIGetDataDir() { return SystemIO::Path::Combine(TvlConfig::GetSuiteDir(), L"Data"); }
TvlString INIGetDataDirForUnitTests() { return SystemIO::Path::Combine(INIGetAppDir(), L"TestData"); }

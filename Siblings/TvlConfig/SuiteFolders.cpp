#include "siblings/TvlConfig/SuiteFolders.h"

#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "windows/Environment.h"
#include "windows/Modules.h"

namespace TvlConfig {

TvlString GetSuiteDir()
{
    if (const auto folder = Ports::Environment::Get().Variable(L"TVL_SUITE_DIR"); folder && !folder->empty())
        return *folder;
    const auto program = TvlUtils::SystemIO::ToFilePath(Ports::Modules::Get().ProgramPath());
    return TvlUtils::SystemIO::FromFilePath(program.parent_path() / "Suite");
}

}   // namespace TvlConfig

TvlString INIGetConfigDir() { return TvlUtils::SystemIO::Path::Combine(TvlConfig::GetSuiteDir(), L"Config"); }

TvlString INIGetBootDefaultWorkspaceDir()
{
    return TvlUtils::SystemIO::Path::Combine(TvlConfig::GetSuiteDir(), L"Workspaces");
}

#include "siblings/TvlConfig/SuiteFolders.h"

#include "siblings/TvlConfig/DataFolders.h"
#include "siblings/TvlConfig/Dependencies.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "windows/Environment.h"
#include "windows/Modules.h"

#include <mutex>

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

TvlString INIGetLanguageDir()
{
    const TvlString folder = TvlUtils::SystemIO::Path::Combine(TvlConfig::GetSuiteDir(), L"Languages");
    return TvlUtils::SystemIO::Folder::Exists(folder) ? folder : TvlString();
}

namespace {
std::mutex programFolderLock;
TvlString programFolder;   // of the chosen language; empty when it is not known
}   // namespace

TvlString INIGetLangRelProgDir()
{
    using TvlUtils::SystemIO::Path::Combine;
    const std::lock_guard hold(programFolderLock);
    TvlString name;
    if (programFolder.IsEmpty() && TvlConfig::GetDependencies().GetLanguageDirName(name) && !name.IsEmpty())
        programFolder = Combine(Combine(INIGetAppDir(), L"Languages"), name);
    return programFolder;
}

void INIClearLangRelProgDirCache()
{
    const std::lock_guard hold(programFolderLock);
    programFolder.Empty();
}

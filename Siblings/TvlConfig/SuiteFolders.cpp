#include "siblings/TvlConfig/SuiteFolders.h"

#include "siblings/TvlConfig/DataFolders.h"
#include "siblings/TvlConfig/Dependencies.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "windows/Environment.h"
#include "windows/Modules.h"

#include <filesystem>
#include <mutex>

namespace TvlConfig {

namespace fs = std::filesystem;

TvlString GetSuiteDir()
{
    if (const auto folder = Ports::Environment::Get().Variable(L"TVL_SUITE_DIR"); folder && !folder->empty())
        return *folder;
    // Any address of this library tells where it lies.
    static const char inThisLibrary = 0;
    const Ports::Modules& modules = Ports::Modules::Get();
    const fs::path program = TvlUtils::SystemIO::ToFilePath(modules.ProgramPath()).parent_path();
    const fs::path library = TvlUtils::SystemIO::ToFilePath(modules.PathOf(&inThisLibrary)).parent_path();
    const fs::path places[] = {program / "Suite", library / "Suite", library / TVL_SUITE_FROM_LIBRARY};
    std::error_code ignored;
    for (const fs::path& place : places)
        if (fs::is_directory(place, ignored))
            return TvlUtils::SystemIO::FromFilePath(place.lexically_normal());
    return TvlUtils::SystemIO::FromFilePath(places[0]);
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

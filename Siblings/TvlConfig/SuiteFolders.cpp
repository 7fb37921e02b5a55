#include "siblings/TvlConfig/SuiteFolders.h"

#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "windows/Environment.h"
#include "windows/Modules.h"

#include <filesystem>

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

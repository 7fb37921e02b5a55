#include "siblings/TvlConfig/SuiteFolders.h"

#include "windows/Environment.h"
#include "windows/Modules.h"

#include <filesystem>

namespace TvlConfig {

TvlString GetSuiteDir()
{
    if (const auto folder = Ports::Environment::Get().Variable(L"TVL_SUITE_DIR"); folder && !folder->empty())
        return *folder;
    const std::filesystem::path program = Ports::Modules::Get().ProgramPath();
    return (program.parent_path() / L"Suite").wstring();
}

}   // namespace TvlConfig

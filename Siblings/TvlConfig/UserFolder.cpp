#include "siblings/TvlConfig/UserFolder.h"

#include "windows/Environment.h"
#include "windows/UserFolders.h"

#include <filesystem>

namespace TvlConfig {

TvlString GetUserDir()
{
    if (const auto folder = Ports::Environment::Get().Variable(L"TVL_USER_DIR"); folder && !folder->empty())
        return *folder;
    const std::wstring data = Ports::UserFolders::Get().ApplicationData();
    return data.empty() ? TvlString() : TvlString((std::filesystem::path(data) / L"Tovel" / L"Suite").wstring());
}

}   // namespace TvlConfig

#include "siblings/TvlConfig/UserFolder.h"

#include "siblings/TvlUtils/SystemIO.h"
#include "windows/Environment.h"
#include "windows/UserFolders.h"

namespace TvlConfig {

TvlString GetUserDir()
{
    if (const auto folder = Ports::Environment::Get().Variable(L"TVL_USER_DIR"); folder && !folder->empty())
        return *folder;
    using TvlUtils::SystemIO::Path::Combine;
    const std::wstring data = Ports::UserFolders::Get().ApplicationData();
    return data.empty() ? TvlString() : Combine(Combine(data, L"Tovel"), L"Suite");
}

}   // namespace TvlConfig

TvlString GetUserProfileConfigDir()
{
    const TvlString folder = TvlUtils::SystemIO::Path::Combine(TvlConfig::GetUserDir(), L"Config");
    static_cast<void>(TvlUtils::SystemIO::Folder::EnsureExists(folder));
    return folder;
}

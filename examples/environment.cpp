// Where the user's content lies, values of the registry, the policy, and names of the cloud.
#include "CFileLocations.h"
#include "CloudHelpers.h"
#include "DataSize.h"
#include "Policy.h"
#include "WUTLRegistry.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/FilePath.h"

#include <iostream>

int main()
{
    const TvlString fills = CFileLocations::GetFileLocationsFillsDir();   // made when it is missing
    const auto path = TvlUtils::SystemIO::ToFilePath(fills).parent_path();
    std::cout << "fills: " << path.parent_path().filename().string() << '/' << path.filename().string()
              << (std::filesystem::is_directory(path) ? "" : ", missing") << '\n';

    // Results are Win32 status codes, 0 for success.
    constexpr const wchar_t* kKey = L"HKEY_CURRENT_USER\\Software\\Tovel\\Example";
    {
        WUTLRegistry key(kKey, WUTLRegistry::kReadWriteAccess, 1);
        key.SetValue(L"Columns", 3u);
        ULONG columns = 0;
        std::cout << "status " << key.GetValue(L"Columns", columns) << ", columns " << columns << '\n';
        std::cout << "status " << key.GetValue(L"Rows", columns) << " for a value that is not there\n";
    }
    WUTLRegistry::DeleteRegistryKey(kKey);

    std::cout << "internet " << (TvlUtl::IsUserAllowedToUseInternet() ? "allowed" : "switched off") << '\n';
    const TvlString name = TvlUtl::CloudHelpers::EscapeFileName(L"100%: done?");
    std::cout << TvlPlatform::ToUtf8(name) << " is "
              << TvlPlatform::ToUtf8(TvlUtl::CloudHelpers::UnescapeFileName(name)) << '\n';
    std::cout << TvlPlatform::ToUtf8(TvlUtl::FormatDataSize(1536)) << '\n';
}

// The user's known folders.
#include "Windows/SystemPorts.h"

#include <memory>
#include <windows.h>

#include <knownfolders.h>
#include <shlobj.h>

namespace Ports {

namespace {
class Win32UserFolders final : public UserFolders {
public:
    std::wstring ApplicationData() const override
    {
        wchar_t* path = nullptr;
        const HRESULT result = SHGetKnownFolderPath(FOLDERID_RoamingAppData, 0, nullptr, &path);
        const std::unique_ptr<wchar_t, decltype(&CoTaskMemFree)> owned(path, CoTaskMemFree);
        return SUCCEEDED(result) && owned ? std::wstring(owned.get()) : std::wstring();
    }
};
}   // namespace

template <>
UserFolders& SystemPort<UserFolders>()
{
    static Win32UserFolders folders;
    return folders;
}

}   // namespace Ports

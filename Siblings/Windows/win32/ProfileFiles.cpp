// Private profile files by the Windows calls.
#include "Windows/SystemPorts.h"

#include <windows.h>

namespace Ports {

namespace {
class Win32ProfileFiles final : public ProfileFiles {
public:
    DWORD GetText(const wchar_t* section, const wchar_t* key, const wchar_t* defaultText, wchar_t* buffer, DWORD size,
        const wchar_t* file) const override
    {
        return GetPrivateProfileStringW(section, key, defaultText, buffer, size, file);
    }

    bool SetText(const wchar_t* section, const wchar_t* key, const wchar_t* text, const wchar_t* file) override
    {
        return WritePrivateProfileStringW(section, key, text, file);
    }
};
}   // namespace

template <>
ProfileFiles& SystemPort<ProfileFiles>()
{
    static Win32ProfileFiles files;
    return files;
}

}   // namespace Ports

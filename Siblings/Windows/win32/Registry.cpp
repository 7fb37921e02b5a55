// The system's registry.
#include "TvlPref/SystemRegistry.h"

#include <windows.h>

namespace PREFUTILS {

namespace {
class Win32Registry final : public IRegistry {
public:
    LONG RegOpenKeyExW(HKEY key, const wchar_t* path, DWORD options, DWORD access, HKEY* opened) override
    {
        return ::RegOpenKeyExW(key, path, options, access, opened);
    }

    LONG RegCloseKey(HKEY key) override { return ::RegCloseKey(key); }

    LONG RegCreateKeyExW(HKEY key, const wchar_t* path, DWORD reserved, wchar_t* className, DWORD options, DWORD access,
        const void*, HKEY* opened, DWORD* disposition) override
    {
        return ::RegCreateKeyExW(key, path, reserved, className, options, access, nullptr, opened, disposition);
    }

    LONG RegDeleteKeyW(HKEY key, const wchar_t* path) override
    {
        // An empty path would empty the key itself, which may be a root.
        if (!path || !*path)
            return ERROR_ACCESS_DENIED;
        return ::RegDeleteTreeW(key, path);
    }

    LONG RegEnumKeyExW(HKEY key, DWORD index, wchar_t* name, DWORD* nameLength, DWORD* reserved, wchar_t* className,
        DWORD* classLength, void* lastWriteTime) override
    {
        return ::RegEnumKeyExW(
            key, index, name, nameLength, reserved, className, classLength, static_cast<FILETIME*>(lastWriteTime));
    }

    LONG RegEnumValueW(HKEY key, DWORD index, wchar_t* name, DWORD* nameLength, DWORD* reserved, DWORD* type,
        BYTE* data, DWORD* size) override
    {
        return ::RegEnumValueW(key, index, name, nameLength, reserved, type, data, size);
    }

    LONG RegSetValueExW(
        HKEY key, const wchar_t* name, DWORD reserved, DWORD type, const BYTE* data, DWORD size) override
    {
        return ::RegSetValueExW(key, name, reserved, type, data, size);
    }

    LONG RegQueryValueExW(HKEY key, const wchar_t* name, DWORD* reserved, DWORD* type, BYTE* data, DWORD* size) override
    {
        return ::RegQueryValueExW(key, name, reserved, type, data, size);
    }

    LONG RegDeleteValueW(HKEY key, const wchar_t* name) override { return ::RegDeleteValueW(key, name); }
    LONG BeginBatch() override { return ERROR_SUCCESS; }
    LONG EndBatch(bool) override { return ERROR_SUCCESS; }
};
}   // namespace

IRegistry& SystemRegistry()
{
    static Win32Registry registry;
    return registry;
}

}   // namespace PREFUTILS

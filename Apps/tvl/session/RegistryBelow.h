// The registry of a session on systems where all processes of the user share one.
#pragma once

#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlPref/IRegistry.h"

/// Puts a key of the user's registry in the place of its root. The other roots stay what they are.
class RegistryBelow final : public PREFUTILS::IRegistry {
public:
    /// Makes the key when it is missing.
    /// @param path below HKEY_CURRENT_USER
    RegistryBelow(IRegistry& system, const TvlString& path);
    ~RegistryBelow() override;
    RegistryBelow(const RegistryBelow&) = delete;
    RegistryBelow& operator=(const RegistryBelow&) = delete;

    /// Whether the key could be made.
    bool IsOpen() const { return m_root != nullptr; }

    LONG RegOpenKeyExW(HKEY key, const wchar_t* path, DWORD options, DWORD access, HKEY* opened) override;
    LONG RegCloseKey(HKEY key) override;
    LONG RegCreateKeyExW(HKEY key, const wchar_t* path, DWORD reserved, wchar_t* className, DWORD options, DWORD access,
        const void* securityAttributes, HKEY* opened, DWORD* disposition) override;
    LONG RegDeleteKeyW(HKEY key, const wchar_t* path) override;
    LONG RegEnumKeyExW(HKEY key, DWORD index, wchar_t* name, DWORD* nameLength, DWORD* reserved, wchar_t* className,
        DWORD* classLength, void* lastWriteTime) override;
    LONG RegEnumValueW(HKEY key, DWORD index, wchar_t* name, DWORD* nameLength, DWORD* reserved, DWORD* type,
        BYTE* data, DWORD* size) override;
    LONG RegSetValueExW(
        HKEY key, const wchar_t* name, DWORD reserved, DWORD type, const BYTE* data, DWORD size) override;
    LONG RegQueryValueExW(
        HKEY key, const wchar_t* name, DWORD* reserved, DWORD* type, BYTE* data, DWORD* size) override;
    LONG RegDeleteValueW(HKEY key, const wchar_t* name) override;
    LONG BeginBatch() override;
    LONG EndBatch(bool keep) override;

private:
    HKEY Place(HKEY key) const;

    IRegistry& m_system;
    HKEY m_root = nullptr;
};

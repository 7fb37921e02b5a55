#include "RegistryBelow.h"

namespace {
const HKEY kUser = PREFUTILS::RegistryRoot(0x80000001);
}

RegistryBelow::RegistryBelow(IRegistry& system, const TvlString& path) : m_system(system)
{
    if (m_system.RegCreateKeyExW(
            kUser, path.c_str(), 0, nullptr, 0, PREFUTILS::kRegistryReadWrite, nullptr, &m_root, nullptr)
        != PREFUTILS::kRegistryOk)
        m_root = nullptr;
}

RegistryBelow::~RegistryBelow()
{
    if (m_root)
        m_system.RegCloseKey(m_root);
}

HKEY RegistryBelow::Place(HKEY key) const { return key == kUser ? m_root : key; }

LONG RegistryBelow::RegOpenKeyExW(HKEY key, const wchar_t* path, DWORD options, DWORD access, HKEY* opened)
{
    return m_system.RegOpenKeyExW(Place(key), path, options, access, opened);
}

LONG RegistryBelow::RegCloseKey(HKEY key)
{
    return key == kUser ? LONG{PREFUTILS::kRegistryOk} : m_system.RegCloseKey(key);
}

LONG RegistryBelow::RegCreateKeyExW(HKEY key, const wchar_t* path, DWORD reserved, wchar_t* className, DWORD options,
    DWORD access, const void* securityAttributes, HKEY* opened, DWORD* disposition)
{
    return m_system.RegCreateKeyExW(
        Place(key), path, reserved, className, options, access, securityAttributes, opened, disposition);
}

LONG RegistryBelow::RegDeleteKeyW(HKEY key, const wchar_t* path) { return m_system.RegDeleteKeyW(Place(key), path); }

LONG RegistryBelow::RegEnumKeyExW(HKEY key, DWORD index, wchar_t* name, DWORD* nameLength, DWORD* reserved,
    wchar_t* className, DWORD* classLength, void* lastWriteTime)
{
    return m_system.RegEnumKeyExW(Place(key), index, name, nameLength, reserved, className, classLength, lastWriteTime);
}

LONG RegistryBelow::RegEnumValueW(
    HKEY key, DWORD index, wchar_t* name, DWORD* nameLength, DWORD* reserved, DWORD* type, BYTE* data, DWORD* size)
{
    return m_system.RegEnumValueW(Place(key), index, name, nameLength, reserved, type, data, size);
}

LONG RegistryBelow::RegSetValueExW(
    HKEY key, const wchar_t* name, DWORD reserved, DWORD type, const BYTE* data, DWORD size)
{
    return m_system.RegSetValueExW(Place(key), name, reserved, type, data, size);
}

LONG RegistryBelow::RegQueryValueExW(
    HKEY key, const wchar_t* name, DWORD* reserved, DWORD* type, BYTE* data, DWORD* size)
{
    return m_system.RegQueryValueExW(Place(key), name, reserved, type, data, size);
}

LONG RegistryBelow::RegDeleteValueW(HKEY key, const wchar_t* name)
{
    return m_system.RegDeleteValueW(Place(key), name);
}

LONG RegistryBelow::BeginBatch() { return m_system.BeginBatch(); }

LONG RegistryBelow::EndBatch(bool keep) { return m_system.EndBatch(keep); }

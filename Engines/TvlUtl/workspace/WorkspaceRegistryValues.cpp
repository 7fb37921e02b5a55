// What a manager keeps in the registry: texts under its key.
#include "WorkspaceManagerCore.h"
#include "siblings/TvlPref/IRegistry.h"

#include <array>

namespace {
using PREFUTILS::IRegistry;

constexpr DWORD kCurrentUser = 0x80000001;
constexpr std::size_t kCapacity = 260;   // characters of a value; longer ones are not read

class OpenKey {
public:
    OpenKey() = default;
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;
    ~OpenKey()
    {
        if (handle)
            IRegistry::GetInstance().RegCloseKey(handle);
    }
    HKEY handle = nullptr;
};
}   // namespace

bool WorkspaceManagerCore::ReadKey(const TvlString& name, TvlString& text) const
{
    text.Empty();
    IRegistry& registry = IRegistry::GetInstance();
    OpenKey key;
    if (registry.RegOpenKeyExW(
            PREFUTILS::RegistryRoot(kCurrentUser), m_registryKey.c_str(), 0, PREFUTILS::kRegistryReadWrite, &key.handle)
        != PREFUTILS::kRegistryOk)
        return false;
    std::array<wchar_t, kCapacity> buffer{};
    DWORD size = sizeof buffer, type = 0;
    if (registry.RegQueryValueExW(
            key.handle, name.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(buffer.data()), &size)
        != PREFUTILS::kRegistryOk)
        return false;
    const bool isText = type == PREFUTILS::kRegistryText || type == PREFUTILS::kRegistryExpandableText;
    const std::size_t length = size / sizeof(wchar_t);
    if (!isText || size % sizeof(wchar_t) != 0 || (length > 0 && buffer[length - 1] != L'\0'))
        return false;
    if (length > 0)
        text = buffer.data();
    return true;
}

bool WorkspaceManagerCore::WriteKey(const TvlString& name, const TvlString& text) const
{
    IRegistry& registry = IRegistry::GetInstance();
    OpenKey key;
    if (registry.RegCreateKeyExW(PREFUTILS::RegistryRoot(kCurrentUser), m_registryKey.c_str(), 0, nullptr, 0,
            PREFUTILS::kRegistryReadWrite, nullptr, &key.handle, nullptr)
        != PREFUTILS::kRegistryOk)
        return false;
    const auto bytes = static_cast<DWORD>((static_cast<std::size_t>(text.GetLength()) + 1) * sizeof(wchar_t));
    registry.RegSetValueExW(
        key.handle, name.c_str(), 0, PREFUTILS::kRegistryText, reinterpret_cast<const BYTE*>(text.c_str()), bytes);
    return true;
}

#include "RegistryKey.h"

#include "Commands.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

using PREFUTILS::IRegistry;

namespace {
constexpr DWORD kLongestKeyName = 255;   // characters, of the registry's own limits
constexpr DWORD kLongestValueName = 16383;

struct Root {
    const wchar_t* name;
    const wchar_t* shortName;
    DWORD number;
};

constexpr Root kRoots[] = {
    {L"HKEY_CLASSES_ROOT", L"HKCR", 0x80000000},
    {L"HKEY_CURRENT_USER", L"HKCU", 0x80000001},
    {L"HKEY_LOCAL_MACHINE", L"HKLM", 0x80000002},
    {L"HKEY_USERS", L"HKU", 0x80000003},
    {L"HKEY_CURRENT_CONFIG", L"HKCC", 0x80000005},
};

struct Reason {
    LONG status;
    const char* words;
};

constexpr Reason kReasons[] = {
    {PREFUTILS::kRegistryNotFound, "there is no such key or value"},
    {PREFUTILS::kRegistryAccessDenied, "access is denied"},
    {PREFUTILS::kRegistryDiskFull, "the disk is full"},
    {PREFUTILS::kRegistryBadPath, "no key can have this path"},
    {PREFUTILS::kRegistryInvalidParameter, "no key or value can have this name"},
    {PREFUTILS::kRegistryBusy, "another program holds the registry"},
    {PREFUTILS::kRegistryCorrupt, "the registry is damaged"},
    {PREFUTILS::kRegistryKeyDeleted, "the key has just been deleted"},
};

/// The root of a path, and what stands behind it.
std::pair<const Root*, std::wstring> SplitPath(const std::string& path)
{
    const TvlString whole = TvlPlatform::FromUtf8(path);
    const int separator = whole.Find(L'\\');
    const TvlString name = separator < 0 ? whole : whole.Left(separator);
    const auto* const root = std::find_if(std::begin(kRoots), std::end(kRoots),
        [&](const Root& row) { return name.CompareNoCase(row.name) == 0 || name.CompareNoCase(row.shortName) == 0; });
    if (root == std::end(kRoots))
        EndWithBadInput("\"" + path + "\" does not begin with a root such as HKEY_CURRENT_USER");
    return {root, separator < 0 ? std::wstring() : whole.Mid(separator + 1).Std()};
}

std::wstring FullPath(const Root& root, const std::wstring& rest)
{
    return rest.empty() ? root.name : root.name + (L"\\" + rest);
}

/// Calls `enumerate(index)` until it gives no status of success.
template <class Enumerate>
void ForEachIndex(const std::wstring& path, Enumerate enumerate)
{
    LONG status = PREFUTILS::kRegistryOk;
    for (DWORD index = 0; status == PREFUTILS::kRegistryOk; ++index)
        status = enumerate(index);
    if (status != PREFUTILS::kRegistryNoMoreItems)
        EndWithRegistryStatus(path, status);
}
}   // namespace

void EndWithRegistryStatus(const std::wstring& path, LONG status)
{
    const auto* const reason =
        std::find_if(std::begin(kReasons), std::end(kReasons), [&](const Reason& row) { return row.status == status; });
    EndWithBadInput(TvlPlatform::ToUtf8(path) + ": "
        + (reason == std::end(kReasons) ? "error " + std::to_string(status) : std::string(reason->words)));
}

std::wstring FullRegistryPath(const std::string& path)
{
    const auto [root, rest] = SplitPath(path);
    return FullPath(*root, rest);
}

bool RegistryEntry::IsText() const
{
    return type == PREFUTILS::kRegistryText || type == PREFUTILS::kRegistryExpandableText
        || type == PREFUTILS::kRegistryTextList;
}

std::wstring RegistryEntry::Text() const
{
    std::wstring text(data.size() / sizeof(wchar_t), L'\0');
    if (!text.empty())
        std::memcpy(text.data(), data.data(), text.size() * sizeof(wchar_t));
    while (!text.empty() && text.back() == L'\0')
        text.pop_back();
    return text;
}

std::optional<DWORD> RegistryEntry::Number() const
{
    DWORD number = 0;
    if (type != PREFUTILS::kRegistryDword || data.size() != sizeof number)
        return std::nullopt;
    std::memcpy(&number, data.data(), sizeof number);
    return number;
}

RegistryKey RegistryKey::Open(const std::string& path, PREFUTILS::RegistryAccess access, bool create)
{
    const auto [root, rest] = SplitPath(path);
    IRegistry& registry = IRegistry::GetInstance();
    const HKEY rootKey = PREFUTILS::RegistryRoot(root->number);
    HKEY key = nullptr;
    const LONG status = create
        ? registry.RegCreateKeyExW(rootKey, rest.c_str(), 0, nullptr, 0, access, nullptr, &key, nullptr)
        : registry.RegOpenKeyExW(rootKey, rest.c_str(), 0, access, &key);
    if (status != PREFUTILS::kRegistryOk)
        EndWithRegistryStatus(FullPath(*root, rest), status);
    return {key, FullPath(*root, rest)};
}

RegistryKey::RegistryKey(RegistryKey&& other) noexcept
    : m_key(std::exchange(other.m_key, nullptr)), m_path(std::move(other.m_path))
{
}

RegistryKey::~RegistryKey()
{
    if (m_key)
        IRegistry::GetInstance().RegCloseKey(m_key);
}

std::vector<std::wstring> RegistryKey::Subkeys() const
{
    std::vector<std::wstring> names;
    ForEachIndex(m_path, [&](DWORD index) {
        wchar_t name[kLongestKeyName + 1];
        DWORD length = kLongestKeyName + 1;
        const LONG status =
            IRegistry::GetInstance().RegEnumKeyExW(m_key, index, name, &length, nullptr, nullptr, nullptr, nullptr);
        if (status == PREFUTILS::kRegistryOk)
            names.emplace_back(name, length);
        return status;
    });
    return names;
}

std::vector<RegistryEntry> RegistryKey::Values() const
{
    std::vector<RegistryEntry> values;
    std::vector<wchar_t> name(kLongestValueName + 1);
    ForEachIndex(m_path, [&](DWORD index) {
        auto length = static_cast<DWORD>(name.size());
        const LONG status = IRegistry::GetInstance().RegEnumValueW(
            m_key, index, name.data(), &length, nullptr, nullptr, nullptr, nullptr);
        if (status == PREFUTILS::kRegistryOk)
            if (auto value = Value({name.data(), length}))   // unless it has just been deleted
                values.push_back(std::move(*value));
        return status;
    });
    return values;
}

std::optional<RegistryEntry> RegistryKey::Value(const std::wstring& name) const
{
    RegistryEntry value{name, 0, {}};
    LONG status = PREFUTILS::kRegistryMoreData;
    for (DWORD size = 0; status == PREFUTILS::kRegistryMoreData;) {
        value.data.resize(size);
        status = IRegistry::GetInstance().RegQueryValueExW(
            m_key, name.c_str(), nullptr, &value.type, value.data.data(), &size);
        if (status == PREFUTILS::kRegistryOk && size > value.data.size())
            status = PREFUTILS::kRegistryMoreData;   // without a buffer the size alone is told
        else if (status == PREFUTILS::kRegistryOk)
            value.data.resize(size);
    }
    if (status == PREFUTILS::kRegistryNotFound)
        return std::nullopt;
    if (status != PREFUTILS::kRegistryOk)
        EndWithRegistryStatus(m_path, status);
    return value;
}

void RegistryKey::SetValue(const RegistryEntry& value) const
{
    const LONG status = IRegistry::GetInstance().RegSetValueExW(
        m_key, value.name.c_str(), 0, value.type, value.data.data(), static_cast<DWORD>(value.data.size()));
    if (status != PREFUTILS::kRegistryOk)
        EndWithRegistryStatus(m_path, status);
}

void RegistryKey::DeleteValue(const std::wstring& name) const
{
    if (const LONG status = IRegistry::GetInstance().RegDeleteValueW(m_key, name.c_str()); status != 0)
        EndWithRegistryStatus(m_path, status);
}

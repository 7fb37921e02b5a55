#include "WUTLRegistry.h"

#include "siblings/TvlPref/IRegistry.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <cwchar>
#include <string>

using PREFUTILS::IRegistry;

namespace {
constexpr std::size_t kTextCapacity = 260;   // characters of every name and text that is read
constexpr ULONG kTextBytes = kTextCapacity * sizeof(wchar_t);

struct RootName {
    const wchar_t* name;
    DWORD number;
};

// In the order in which they are tried.
constexpr RootName kRoots[] = {
    {L"HKEY_CLASSES_ROOT", 0x80000000},
    {L"HKEY_CURRENT_USER", 0x80000001},
    {L"HKEY_LOCAL_MACHINE", 0x80000002},
    {L"HKEY_USERS", 0x80000003},
    {L"HKEY_CURRENT_CONFIG", 0x80000005},
    {L"HKEY_PERFORMANCE_DATA", 0x80000004},
};

/// Room for a name or text: cleared, and two places longer than what is asked for, so that a value without an end mark
/// ends all the same.
class TextBuffer {
public:
    wchar_t* Characters() { return m_characters.data(); }
    TvlString Text() const { return TvlString(m_characters.data()); }
    /// The text in the first `bytes` bytes, up to its first zero; an odd rest of a character is left away.
    TvlString Text(ULONG bytes)
    {
        m_characters[std::min<std::size_t>(bytes / sizeof(wchar_t), kTextCapacity)] = L'\0';
        return Text();
    }

private:
    std::array<wchar_t, kTextCapacity + 2> m_characters{};
};

TvlString KeyPath(const wchar_t* base, const wchar_t* section) { return TvlString(base) + TvlString(section); }

ULONG TextBytes(const wchar_t* text) { return static_cast<ULONG>(std::wcslen(text) * sizeof(wchar_t)); }
}   // namespace

WUTLRegistry::WUTLRegistry(const wchar_t* path, ULONG access, int create) : m_access(access)
{
    if (path)
        OpenKey(path, create, access);
}

WUTLRegistry::~WUTLRegistry()
{
    if (m_key)
        HelperCloseKey();
}

int WUTLRegistry::HelperGetHKeyConstant(const wchar_t* rootName, HKEY& root)
{
    const auto* const found = std::find_if(
        std::begin(kRoots), std::end(kRoots), [&](const RootName& row) { return !std::wcscmp(row.name, rootName); });
    root = found == std::end(kRoots) ? nullptr : PREFUTILS::RegistryRoot(found->number);
    return root ? 1 : 0;
}

const wchar_t* WUTLRegistry::HelperGetString(HKEY root)
{
    const auto* const found = std::find_if(std::begin(kRoots), std::end(kRoots),
        [&](const RootName& row) { return PREFUTILS::RegistryRoot(row.number) == root; });
    return found == std::end(kRoots) ? nullptr : found->name;
}

int WUTLRegistry::HelperParseRootFromSubKey(wchar_t* subKey, HKEY& root)
{
    if (!subKey)
        return 0;
    wchar_t* const separator = std::wcschr(subKey, L'\\');
    const std::wstring rootName(subKey, separator ? static_cast<std::size_t>(separator - subKey) : std::wcslen(subKey));
    const wchar_t* const rest = separator ? separator + 1 : subKey + rootName.size();
    std::wmemmove(subKey, rest, std::wcslen(rest) + 1);
    return HelperGetHKeyConstant(rootName.c_str(), root);
}

LONG WUTLRegistry::HelperCloseKey()
{
    IRegistry::GetInstance().RegCloseKey(m_key);
    m_key = nullptr;
    m_location.Empty();
    m_access = kReadAccess;
    return 0;
}

LONG WUTLRegistry::HelperOpenKey(HKEY& out, const wchar_t* path, ULONG access, int create)
{
    if (!path)
        return m_lastResult;
    std::wstring subKey = path;
    TvlString location = path;   // behind the opening of a key nothing may fail that would lose it
    HKEY root = nullptr;
    if (!HelperParseRootFromSubKey(subKey.data(), root))
        return m_lastResult = PREFUTILS::kRegistryOpenFailed;
    m_lastResult = IRegistry::GetInstance().RegOpenKeyExW(root, subKey.c_str(), 0, access, &out);
    // The access asked for stands in the place of the create flag, and the new key is opened for reading and writing
    // into this object's own key: an outer call that holds a key replaces it by its own empty handle.
    if (m_lastResult != 0 && create && CreateKey(path, access, 0) == 0)
        OpenKey(path, static_cast<int>(access), kReadWriteAccess);
    if (m_lastResult == 0) {
        m_location = std::move(location);
        m_access = access;
    }
    return m_lastResult;
}

LONG WUTLRegistry::OpenKey(const wchar_t* path, int create, ULONG access)
{
    if (!m_key)
        return HelperOpenKey(m_key, path, access, create);
    if (!path)
        return m_lastResult;
    HKEY opened = nullptr;
    if (HelperOpenKey(opened, path, access, create) == 0) {
        IRegistry::GetInstance().RegCloseKey(m_key);
        m_key = opened;
    }
    return m_lastResult;
}

LONG WUTLRegistry::IsValid()
{
    if (IsValid(m_location.c_str()) != 0)
        return PREFUTILS::kRegistryOpenFailed;
    const TvlString location = m_location;
    return OpenKey(location.c_str(), 0, m_access);
}

int WUTLRegistry::GetCurrentKeyLocation(TvlString& out) const
{
    out = m_location;
    return 1;
}

LONG WUTLRegistry::HelperGetValue(const wchar_t* name, void* data, ULONG& size) const
{
    DWORD type = 0;
    DWORD bytes = size;
    const LONG status =
        IRegistry::GetInstance().RegQueryValueExW(m_key, name, nullptr, &type, static_cast<BYTE*>(data), &bytes);
    size = bytes;
    return status;
}

LONG WUTLRegistry::HelperSetValue(const wchar_t* name, const void* data, ULONG& size, ULONG type)
{
    return IRegistry::GetInstance().RegSetValueExW(m_key, name, 0, type, static_cast<const BYTE*>(data), size);
}

LONG WUTLRegistry::HelperGetNextValue(
    wchar_t* name, void* data, ULONG nameChars, ULONG dataBytes, ULONG type, ULONG index) const
{
    DWORD nameLength = nameChars;
    DWORD size = dataBytes;
    DWORD valueType = type;
    auto* const bytes = static_cast<BYTE*>(data);
    const LONG status = IRegistry::GetInstance().RegEnumValueW(
        m_key, index, name, &nameLength, nullptr, &valueType, bytes, data ? &size : nullptr);
    // The bytes behind a text's last whole character are none of it.
    if (status == 0 && type == PREFUTILS::kRegistryText && data && size <= dataBytes)
        std::fill_n(bytes + size - size % sizeof(wchar_t), size % sizeof(wchar_t), BYTE());
    return status;
}

LONG WUTLRegistry::GetValue(const wchar_t* name, ULONG& value) const
{
    ULONG size = sizeof value;
    return HelperGetValue(name, &value, size);
}

LONG WUTLRegistry::GetValue(const wchar_t* name, TvlString& value) const
{
    TextBuffer buffer;
    ULONG size = kTextBytes;
    const LONG status = HelperGetValue(name, buffer.Characters(), size);
    if (status == 0)
        value = buffer.Text(size);
    return status;
}

LONG WUTLRegistry::SetValue(const wchar_t* name, ULONG value)
{
    ULONG size = sizeof value;
    return HelperSetValue(name, &value, size, PREFUTILS::kRegistryDword);
}

LONG WUTLRegistry::SetValue(const wchar_t* name, const wchar_t* value)
{
    ULONG size = TextBytes(value);
    return HelperSetValue(name, value, size, PREFUTILS::kRegistryText);
}

LONG WUTLRegistry::GetNextValue(TvlString& name, TvlString& data, ULONG index) const
{
    TextBuffer nameBuffer;
    TextBuffer dataBuffer;
    const LONG status = HelperGetNextValue(
        nameBuffer.Characters(), dataBuffer.Characters(), kTextCapacity, kTextBytes, PREFUTILS::kRegistryText, index);
    name = nameBuffer.Text();
    data = dataBuffer.Text();
    return status;
}

LONG WUTLRegistry::GetNextValue(TvlString& name, ULONG& data, ULONG index) const
{
    TextBuffer buffer;
    const LONG status =
        HelperGetNextValue(buffer.Characters(), &data, kTextCapacity, sizeof data, PREFUTILS::kRegistryDword, index);
    name = buffer.Text();
    return status;
}

LONG WUTLRegistry::GetNextValue(TvlString& name, ULONG index) const
{
    TextBuffer buffer;
    const LONG status =
        HelperGetNextValue(buffer.Characters(), nullptr, kTextCapacity, 0, PREFUTILS::kRegistryText, index);
    name = buffer.Text();
    return status;
}

LONG WUTLRegistry::GetNextSubkey(TvlString& name, ULONG index) const
{
    TextBuffer buffer;
    DWORD length = kTextCapacity;
    const LONG status = IRegistry::GetInstance().RegEnumKeyExW(
        m_key, index, buffer.Characters(), &length, nullptr, nullptr, nullptr, nullptr);
    name = buffer.Text();
    return status;
}

namespace {
/// Writes the names that `next` gives, each with its end mark. The empty name of the round that fails ends the list.
template <class Next>
void ListNames(wchar_t* buffer, ULONG size, Next next)
{
    std::size_t used = 0;
    for (ULONG index = 0;; ++index) {
        TvlString name;
        const LONG status = next(name, index);
        const auto length = static_cast<std::size_t>(name.GetLength());
        if (length + 2 + used >= size) {
            // No room for fewer than the two end marks: nothing can be written then.
            if (size < 2)
                return;
            std::wcsncpy(buffer + used, name.c_str(), size - used - 2);
            buffer[size - 2] = buffer[size - 1] = L'\0';
            return;
        }
        std::wmemcpy(buffer + used, name.c_str(), length + 1);
        used += length + 1;
        if (status != 0)
            return;
    }
}
}   // namespace

void WUTLRegistry::GetSubkeyList(wchar_t* buffer, ULONG size) const
{
    ListNames(buffer, size, [this](TvlString& name, ULONG index) { return GetNextSubkey(name, index); });
}

void WUTLRegistry::GetValueNameList(wchar_t* buffer, ULONG size) const
{
    ListNames(buffer, size, [this](TvlString& name, ULONG index) {
        TvlString data;
        return GetNextValue(name, data, index);
    });
}

LONG WUTLRegistry::DeleteRegistryValue(const wchar_t* name)
{
    if (!m_key)
        return -1;
    const LONG status = IRegistry::GetInstance().RegDeleteValueW(m_key, name);
    HelperCloseKey();
    return status;
}

LONG WUTLRegistry::IsValid(const wchar_t* path)
{
    if (!path)
        return 0;
    const WUTLRegistry key(path, kReadAccess);
    return key.m_lastResult;
}

LONG WUTLRegistry::CreateKey(const wchar_t* path, ULONG access, ULONG options)
{
    if (!path)
        return -1;
    std::wstring subKey = path;
    HKEY root = nullptr;
    if (!HelperParseRootFromSubKey(subKey.data(), root))
        return -1;
    HKEY key = nullptr;
    IRegistry& registry = IRegistry::GetInstance();
    const LONG status =
        registry.RegCreateKeyExW(root, subKey.c_str(), 0, nullptr, options, access, nullptr, &key, nullptr);
    if (key)
        registry.RegCloseKey(key);
    return status;
}

LONG WUTLRegistry::DeleteRegistryKey(const wchar_t* path)
{
    if (!path)
        return PREFUTILS::kRegistryOpenFailed;
    std::wstring subKey = path;
    HKEY root = nullptr;
    if (!HelperParseRootFromSubKey(subKey.data(), root))
        return PREFUTILS::kRegistryOpenFailed;
    // An empty sub path, or one of backslashes alone, would take the whole tree of the root.
    if (subKey[std::wcsspn(subKey.c_str(), L"\\")] == L'\0')
        return PREFUTILS::kRegistryAccessDenied;
    const WUTLRegistry key(path, kReadAccess);
    return IRegistry::GetInstance().RegDeleteKeyW(root, subKey.c_str());
}

namespace {
/// Whether a value may well be there and only could not be read: a default would take its place then.
bool LacksMemory(LONG status)
{
    constexpr LONG kLacking[] = {8, 14, 1450};   // ERROR_NOT_ENOUGH_MEMORY, _OUTOFMEMORY, _NO_SYSTEM_RESOURCES
    return std::find(std::begin(kLacking), std::end(kLacking), status) != std::end(kLacking);
}

/// The number that a text begins with, as the C runtime of Windows reads it: blanks, a sign, digits; what is beyond 32
/// bits gives the nearest that fits, and a text without digits 0.
int LeadingNumber(const TvlString& text)
{
    const wchar_t* c = text.c_str();
    while (*c == L' ' || (*c >= L'\t' && *c <= L'\r'))
        ++c;
    const bool negative = *c == L'-';
    c += *c == L'-' || *c == L'+';
    long long number = 0;
    for (; *c >= L'0' && *c <= L'9'; ++c)
        number = std::min(number * 10 + (*c - L'0'), 0x80000000LL);
    return static_cast<int>(negative ? -number : std::min(number, 0x7FFFFFFFLL));
}
}   // namespace

int WUTLRegistry::RegReadInt(const wchar_t* section, const wchar_t* entry, int defaultValue, const wchar_t* base)
{
    const TvlString path = KeyPath(base, section);
    const WUTLRegistry key(path.c_str(), kReadAccess);
    TvlString text;
    const LONG status = key.m_lastResult == 0 ? key.GetValue(entry, text) : key.m_lastResult;
    if (status == 0)
        return LeadingNumber(text);
    if (!LacksMemory(status))
        WUTLRegistry(path.c_str(), kWriteAccess, 1).SetValue(entry, TvlString().Format(L"%d", defaultValue).c_str());
    return defaultValue;
}

long long WUTLRegistry::RegReadString(const wchar_t* section, const wchar_t* entry, const wchar_t* defaultText,
    wchar_t* buffer, ULONG size, const wchar_t* base)
{
    const TvlString path = KeyPath(base, section);
    const WUTLRegistry key(path.c_str(), kReadAccess);
    LONG status = key.m_lastResult;
    bool found = false;
    if (status == 0 && !section) {
        key.GetSubkeyList(buffer, size);
    } else if (status == 0 && !entry) {
        key.GetValueNameList(buffer, size);
    } else if (TvlString text; status == 0 && (status = key.GetValue(entry, text)) == 0) {
        const auto length = static_cast<ULONG>(text.GetLength());
        const bool fits = length < size;
        std::wmemcpy(buffer, text.c_str(), fits ? length : size - std::min<ULONG>(size, 1));
        buffer[fits ? length : size] = L'\0';
        found = true;
    }
    if (!found && section && entry && defaultText) {
        if (!LacksMemory(status))
            WUTLRegistry(path.c_str(), kWriteAccess, 1).SetValue(entry, defaultText);
        const std::size_t length = std::wcslen(defaultText);
        // A default that does not fit is left without an end mark.
        std::wmemcpy(buffer, defaultText, length < size ? length + 1 : size);
    }
    return static_cast<long long>(std::wcslen(buffer));
}

int WUTLRegistry::RegReadBinary(
    const wchar_t* section, const wchar_t* entry, unsigned char* data, ULONG size, const wchar_t* base)
{
    const TvlString path = KeyPath(base, section);
    const WUTLRegistry key(path.c_str(), kReadAccess);
    if (key.m_lastResult != 0 || !section || !entry)
        return -1;
    return key.HelperGetValue(entry, data, size) == 0 ? static_cast<int>(size) : -1;
}

int WUTLRegistry::WriteProfileEntry(
    const TvlString& path, const wchar_t* section, const wchar_t* entry, const void* data, ULONG size, ULONG type)
{
    WUTLRegistry key(path.c_str(), kWriteAccess);
    LONG status = key.m_lastResult;
    if (status == 0) {
        status = !entry ? DeleteRegistryKey(path.c_str())
            : !data     ? key.DeleteRegistryValue(entry)
                        : key.HelperSetValue(entry, data, size, type);
        if (status == 0)
            return 1;
    }
    // Without data there is nothing left to write: what was to be deleted is not there.
    if (!section || !entry || !data)
        return 0;
    return WUTLRegistry(path.c_str(), kWriteAccess, 1).HelperSetValue(entry, data, size, type) == 0 ? 1 : 0;
}

int WUTLRegistry::RegWriteString(const wchar_t* section, const wchar_t* entry, const wchar_t* text, const wchar_t* base)
{
    return WriteProfileEntry(
        KeyPath(base, section), section, entry, text, text ? TextBytes(text) : 0, PREFUTILS::kRegistryText);
}

int WUTLRegistry::RegWriteBinary(
    const wchar_t* section, const wchar_t* entry, unsigned char* data, ULONG size, const wchar_t* base)
{
    return WriteProfileEntry(KeyPath(base, section), section, entry, data, size, PREFUTILS::kRegistryBinary);
}

// Handles, access rights, sizes and status codes, as the Win32 calls have them.
#include "siblings/TvlPref/StoredRegistry.h"

#include "siblings/TvlPlatform/TextEncoding.h"

#include <algorithm>
#include <cstring>

namespace PREFUTILS {

namespace {
constexpr const wchar_t* kRootNames[] = {L"HKEY_CLASSES_ROOT", L"HKEY_CURRENT_USER", L"HKEY_LOCAL_MACHINE",
    L"HKEY_USERS", L"HKEY_PERFORMANCE_DATA", L"HKEY_CURRENT_CONFIG"};
constexpr DWORD kFirstRoot = 0x80000000;
constexpr std::size_t kLongestKeyName = 255;   // characters of one part of a path
constexpr std::size_t kLongestValueName = 16383;
// Bytes in memory. Stores count in 32 bits with a sign, and a value is copied a few times on its way.
constexpr DWORD kLargestValue = 256u << 20;
// Keys below a root, as on Windows. Every key of a path holds the whole of it: names from files could fill the disk.
constexpr std::ptrdiff_t kMostLevels = 512;
constexpr DWORD kGenericAccess = 0xF2000000;   // GENERIC_* and MAXIMUM_ALLOWED grant everything
constexpr DWORD kQueryValue = 0x1;
constexpr DWORD kSetValue = 0x2;
constexpr DWORD kCreateSubkey = 0x4;
constexpr DWORD kEnumerate = 0x8;

bool IsText(DWORD type)
{
    return type == kRegistryText || type == kRegistryExpandableText || type == kRegistryTextList;
}

/// Text in memory is wide, text in the store UTF-16LE; an odd rest of a character is left away.
std::vector<std::uint8_t> Stored(DWORD type, const BYTE* data, DWORD size)
{
    if (!data)
        return {};
    if (!IsText(type))
        return {data, data + size};
    std::wstring text(size / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), data, text.size() * sizeof(wchar_t));
    return TvlPlatform::ToUtf16Le(text);
}

std::vector<std::uint8_t> Loaded(RegistryValue value)
{
    if (!IsText(value.type))
        return std::move(value.bytes);
    const std::wstring text = TvlPlatform::FromUtf16Le(value.bytes.data(), value.bytes.size());
    std::vector<std::uint8_t> bytes(text.size() * sizeof(wchar_t));
    if (!bytes.empty())
        std::memcpy(bytes.data(), text.data(), bytes.size());
    return bytes;
}

/// Hands a value out: type and size always, the bytes when there is room for all of them.
LONG Deliver(RegistryValue value, DWORD* type, BYTE* data, DWORD* size)
{
    if (type)
        *type = value.type;
    if (!size)
        return data ? kRegistryInvalidParameter : kRegistryOk;
    const auto bytes = Loaded(std::move(value));
    const DWORD room = *size;
    *size = static_cast<DWORD>(bytes.size());
    if (!data)
        return kRegistryOk;
    if (room < bytes.size())
        return kRegistryMoreData;
    std::copy(bytes.begin(), bytes.end(), data);
    return kRegistryOk;
}

/// Hands a name out; `length` is the room in characters, end mark included, and becomes the name's length without it.
LONG DeliverName(const std::wstring& text, wchar_t* name, DWORD* length)
{
    if (!name || !length)
        return kRegistryInvalidParameter;
    if (*length <= text.size())
        return kRegistryMoreData;
    std::copy_n(text.c_str(), text.size() + 1, name);
    *length = static_cast<DWORD>(text.size());
    return kRegistryOk;
}

/// The name of a predefined root; null for any other handle.
const wchar_t* RootName(HKEY key)
{
    const auto number = reinterpret_cast<std::intptr_t>(key);
    // Both forms are about: sign-extended from the Windows headers, plain from 32-bit numbers.
    const auto index = static_cast<DWORD>(number) - kFirstRoot;
    const bool extended = (number >> 32) == -1 || (number >> 32) == 0;
    return extended && index < std::size(kRootNames) ? kRootNames[index] : nullptr;
}

/// Appends the parts of a path, without those that are empty; false when one is too long or there are too many.
bool AppendParts(std::wstring_view path, std::wstring& full)
{
    while (!path.empty()) {
        const auto part = path.substr(0, path.find(L'\\'));
        path.remove_prefix(std::min(part.size() + 1, path.size()));
        if (part.size() > kLongestKeyName)
            return false;
        if (!part.empty())
            full.append(L"\\").append(part);
    }
    return std::count(full.begin(), full.end(), L'\\') <= kMostLevels;
}

/// Runs an operation on the store and turns its failure into a status.
template <class Operation>
LONG Guarded(Operation operation)
{
    try {
        return operation();
    } catch (const RegistryStore::StoreFailure& failure) {
        return failure.status;
    } catch (const std::bad_alloc&) {
        return 14;   // ERROR_OUTOFMEMORY
    }
}
}   // namespace

StoredRegistry::StoredRegistry(std::unique_ptr<RegistryStore> store) : m_store(std::move(store)) { }

StoredRegistry::~StoredRegistry() = default;

std::size_t StoredRegistry::OpenKeys() const
{
    const std::lock_guard hold(m_lock);
    return m_open.size();
}

/// The path below a root or an open key.
LONG StoredRegistry::FullPath(HKEY key, const wchar_t* path, std::wstring& full) const
{
    if (const wchar_t* const root = RootName(key)) {
        full = root;
    } else {
        const auto open = m_open.find(key);
        if (open == m_open.end())
            return kRegistryInvalidHandle;
        full = open->second.path;
    }
    if (path && *path == L'\\')
        return kRegistryBadPath;
    return AppendParts(path ? path : L"", full) ? kRegistryOk : kRegistryInvalidParameter;
}

/// The key of a handle, which must grant `access`.
LONG StoredRegistry::Find(HKEY key, DWORD access, RegistryStore::KeyId& found)
{
    if (const wchar_t* const root = RootName(key)) {
        found = m_store->FindKey(root);
        return kRegistryOk;
    }
    const auto open = m_open.find(key);
    if (open == m_open.end())
        return kRegistryInvalidHandle;
    if (!(open->second.access & (access | kGenericAccess)))
        return kRegistryAccessDenied;
    found = open->second.id;
    return kRegistryOk;
}

/// What a look-up that found nothing gives: a deleted key has its own status. Asked last, since reads that succeed are
/// by far the most.
LONG StoredRegistry::Missing(RegistryStore::KeyId key, LONG status)
{
    return m_store->KeyLives(key) ? status : static_cast<LONG>(kRegistryKeyDeleted);
}

HKEY StoredRegistry::Add(OpenKey key)
{
    m_lastHandle += 4;
    const auto handle = reinterpret_cast<HKEY>(m_lastHandle);
    m_open.emplace(handle, std::move(key));
    return handle;
}

LONG StoredRegistry::RegOpenKeyExW(HKEY key, const wchar_t* path, DWORD, DWORD access, HKEY* opened)
{
    const std::lock_guard hold(m_lock);
    return Guarded([&]() -> LONG {
        if (!opened)
            return kRegistryInvalidParameter;
        std::wstring full;
        if (const LONG status = FullPath(key, path, full); status != kRegistryOk)
            return status;
        const auto id = m_store->FindKey(full);
        if (!id)
            return kRegistryNotFound;
        *opened = Add({id, std::move(full), access});
        return kRegistryOk;
    });
}

LONG StoredRegistry::RegCloseKey(HKEY key)
{
    const std::lock_guard hold(m_lock);
    return RootName(key) || m_open.erase(key) ? kRegistryOk : kRegistryInvalidHandle;
}

LONG StoredRegistry::RegCreateKeyExW(
    HKEY key, const wchar_t* path, DWORD, wchar_t*, DWORD, DWORD access, const void*, HKEY* opened, DWORD* disposition)
{
    const std::lock_guard hold(m_lock);
    return Guarded([&]() -> LONG {
        if (!opened || !path)
            return kRegistryInvalidParameter;
        RegistryStore::KeyId parent = 0;
        if (const LONG status = Find(key, kCreateSubkey | kEnumerate | kQueryValue, parent); status != kRegistryOk)
            return status;
        std::wstring full;
        if (const LONG status = FullPath(key, path, full); status != kRegistryOk)
            return status;
        bool created = false;
        const auto id = m_store->CreateKey(full, created);
        *opened = Add({id, std::move(full), access});
        if (disposition)
            *disposition = created ? 1 : 2;   // REG_CREATED_NEW_KEY, REG_OPENED_EXISTING_KEY
        return kRegistryOk;
    });
}

LONG StoredRegistry::RegDeleteKeyW(HKEY key, const wchar_t* path)
{
    const std::lock_guard hold(m_lock);
    return Guarded([&]() -> LONG {
        if (!path)
            return kRegistryInvalidParameter;
        std::wstring full;
        if (const LONG status = FullPath(key, path, full); status != kRegistryOk)
            return status;
        // A root is never deleted.
        if (full.find(L'\\') == std::wstring::npos)
            return kRegistryAccessDenied;
        if (!m_store->FindKey(full))
            return kRegistryNotFound;
        m_store->DeleteTree(full);
        return kRegistryOk;
    });
}

LONG StoredRegistry::RegEnumKeyExW(
    HKEY key, DWORD index, wchar_t* name, DWORD* nameLength, DWORD*, wchar_t* className, DWORD* classLength, void*)
{
    const std::lock_guard hold(m_lock);
    return Guarded([&]() -> LONG {
        RegistryStore::KeyId open = 0;
        if (const LONG status = Find(key, kEnumerate, open); status != kRegistryOk)
            return status;
        const auto subkey = m_store->SubkeyName(open, index);
        if (!subkey)
            return Missing(open, kRegistryNoMoreItems);
        if (className && classLength && *classLength > 0)
            *className = L'\0';
        if (classLength)
            *classLength = 0;
        return DeliverName(*subkey, name, nameLength);
    });
}

LONG StoredRegistry::RegEnumValueW(
    HKEY key, DWORD index, wchar_t* name, DWORD* nameLength, DWORD*, DWORD* type, BYTE* data, DWORD* size)
{
    const std::lock_guard hold(m_lock);
    return Guarded([&]() -> LONG {
        RegistryStore::KeyId open = 0;
        if (const LONG status = Find(key, kQueryValue, open); status != kRegistryOk)
            return status;
        auto value = m_store->ValueAt(open, index);
        if (!value)
            return Missing(open, kRegistryNoMoreItems);
        if (const LONG status = DeliverName(value->first, name, nameLength); status != kRegistryOk)
            return status;
        return Deliver(std::move(value->second), type, data, size);
    });
}

LONG StoredRegistry::RegSetValueExW(HKEY key, const wchar_t* name, DWORD, DWORD type, const BYTE* data, DWORD size)
{
    const std::lock_guard hold(m_lock);
    return Guarded([&]() -> LONG {
        const std::wstring_view valueName = name ? name : L"";
        if ((!data && size > 0) || valueName.size() > kLongestValueName || size > kLargestValue)
            return kRegistryInvalidParameter;
        RegistryStore::KeyId open = 0;
        if (const LONG status = Find(key, kSetValue, open); status != kRegistryOk)
            return status;
        return m_store->SetValue(open, valueName, {type, Stored(type, data, size)}) ? kRegistryOk : kRegistryKeyDeleted;
    });
}

LONG StoredRegistry::RegQueryValueExW(HKEY key, const wchar_t* name, DWORD*, DWORD* type, BYTE* data, DWORD* size)
{
    const std::lock_guard hold(m_lock);
    return Guarded([&]() -> LONG {
        RegistryStore::KeyId open = 0;
        if (const LONG status = Find(key, kQueryValue, open); status != kRegistryOk)
            return status;
        auto value = m_store->Value(open, name ? name : L"");
        return value ? Deliver(std::move(*value), type, data, size) : Missing(open, kRegistryNotFound);
    });
}

LONG StoredRegistry::RegDeleteValueW(HKEY key, const wchar_t* name)
{
    const std::lock_guard hold(m_lock);
    return Guarded([&]() -> LONG {
        RegistryStore::KeyId open = 0;
        if (const LONG status = Find(key, kSetValue, open); status != kRegistryOk)
            return status;
        return m_store->DeleteValue(open, name ? name : L"") ? static_cast<LONG>(kRegistryOk)
                                                             : Missing(open, kRegistryNotFound);
    });
}

LONG StoredRegistry::BeginBatch()
{
    m_lock.lock();
    const LONG status = Guarded([&]() -> LONG {
        m_batches.reserve(m_batches.size() + 1);
        m_store->BeginBatch();
        m_batches.push_back(m_lastHandle);
        return kRegistryOk;
    });
    if (status != kRegistryOk)
        m_lock.unlock();
    return status;
}

LONG StoredRegistry::EndBatch(bool keep)
{
    const std::lock_guard hold(m_lock);
    if (m_batches.empty())
        return kRegistryInvalidParameter;
    const LONG status = Guarded([&]() -> LONG {
        m_store->EndBatch(keep);
        return kRegistryOk;
    });
    // What is made next may be given the numbers of keys that were taken back: their handles must not find it.
    if (!keep || status != kRegistryOk)
        for (auto& [handle, open] : m_open)
            if (reinterpret_cast<std::uintptr_t>(handle) > m_batches.back())
                open.id = 0;
    m_batches.pop_back();
    m_lock.unlock();
    return status;
}

}   // namespace PREFUTILS

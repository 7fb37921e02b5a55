// A registry over a store of our own: the file of the linux target, and the memory that tests run on.
#pragma once

#include "siblings/TvlPref/IRegistry.h"

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// The registry: the calls that the suite makes, and stores of our own behind them.
namespace PREFUTILS {

/// One value as it is stored: text types hold UTF-16LE.
struct RegistryValue {
    DWORD type = 0;                    // RegistryType, or any number
    std::vector<std::uint8_t> bytes;   // of the value
};

/// Keys and values of a registry. Paths begin with a root's name, are joined by backslashes and have no empty part.
/// Names compare without case and keep the case that they were made with; enumerations go in the order of the folded
/// names. Operations fail by throwing StoreFailure and then change nothing.
class TVLSIBLINGS_API RegistryStore {
public:
    using KeyId = long long;   // 0 is no key

    /// Thrown by operations that fail.
    struct StoreFailure {
        LONG status;   // RegistryStatus that the caller of the registry gets
    };

    virtual ~RegistryStore() = default;
    /// The key of a path; 0 when there is none.
    virtual KeyId FindKey(std::wstring_view path) = 0;
    /// Finds or makes a key and those above it; `created` tells which.
    virtual KeyId CreateKey(std::wstring_view path, bool& created) = 0;
    /// Whether the key has not been deleted since it was found.
    virtual bool KeyLives(KeyId key) = 0;
    /// Removes the key, its values and everything below.
    virtual void DeleteTree(std::wstring_view path) = 0;
    /// Name of the subkey `index`; empty behind the last.
    virtual std::optional<std::wstring> SubkeyName(KeyId key, DWORD index) = 0;
    /// Name and value `index`; empty behind the last.
    virtual std::optional<std::pair<std::wstring, RegistryValue>> ValueAt(KeyId key, DWORD index) = 0;
    /// The value of a name, the empty one included; empty when there is none.
    virtual std::optional<RegistryValue> Value(KeyId key, std::wstring_view name) = 0;
    /// False when the key has been deleted.
    virtual bool SetValue(KeyId key, std::wstring_view name, const RegistryValue& value) = 0;
    /// False when there is no such value.
    virtual bool DeleteValue(KeyId key, std::wstring_view name) = 0;
    /// Begins a batch, which may stand within another. A store without batches makes each change at once.
    virtual void BeginBatch() { }
    /// Ends the last batch: keeps its changes or takes them back, as a failure to keep them does.
    virtual void EndBatch([[maybe_unused]] bool keep) { }
};

/// A store that lives as long as its object.
TVLSIBLINGS_API std::unique_ptr<RegistryStore> MakeMemoryStore();

/// The handles, access rights, sizes and status codes of a registry over a store.
class TVLSIBLINGS_API StoredRegistry final : public IRegistry {
public:
    /// Owns the store. Null is not allowed.
    explicit StoredRegistry(std::unique_ptr<RegistryStore> store);
    ~StoredRegistry() override;
    StoredRegistry(const StoredRegistry&) = delete;
    StoredRegistry& operator=(const StoredRegistry&) = delete;

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

    /// Keys that are open, for tests that look for leaks.
    std::size_t OpenKeys() const;

private:
    /// @cond
    struct OpenKey {
        RegistryStore::KeyId id = 0;
        std::wstring path;
        DWORD access = 0;
    };
    /// @endcond

    LONG FullPath(HKEY key, const wchar_t* path, std::wstring& full) const;
    LONG Find(HKEY key, DWORD access, RegistryStore::KeyId& found);
    LONG Missing(RegistryStore::KeyId key, LONG status);
    HKEY Add(OpenKey key);

    mutable std::recursive_mutex m_lock;   // held once more for each batch that is open
    std::unique_ptr<RegistryStore> m_store;
    std::unordered_map<HKEY, OpenKey> m_open;
    std::uintptr_t m_lastHandle = 0;         // handles are numbers, multiples of 4 as Windows' are
    std::vector<std::uintptr_t> m_batches;   // the last handle at the beginning of each that is open
};

}   // namespace PREFUTILS

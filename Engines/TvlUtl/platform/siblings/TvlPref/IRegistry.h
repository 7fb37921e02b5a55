// The registry, as the rest of the suite reaches it.
#pragma once

#include "siblings/SiblingsApi.h"

namespace PREFUTILS {

/// Win32 status codes that the registry gives.
enum RegistryStatus : LONG {
    kRegistryOk = 0,                  // ERROR_SUCCESS
    kRegistryNotFound = 2,            // ERROR_FILE_NOT_FOUND
    kRegistryAccessDenied = 5,        // ERROR_ACCESS_DENIED
    kRegistryInvalidHandle = 6,       // ERROR_INVALID_HANDLE
    kRegistryInvalidParameter = 87,   // ERROR_INVALID_PARAMETER
    kRegistryOpenFailed = 110,        // ERROR_OPEN_FAILED
    kRegistryDiskFull = 112,          // ERROR_DISK_FULL
    kRegistryBadPath = 161,           // ERROR_BAD_PATHNAME
    kRegistryBusy = 170,              // ERROR_BUSY
    kRegistryMoreData = 234,          // ERROR_MORE_DATA
    kRegistryNoMoreItems = 259,       // ERROR_NO_MORE_ITEMS
    kRegistryCorrupt = 1015,          // ERROR_REGISTRY_CORRUPT
    kRegistryKeyDeleted = 1018,       // ERROR_KEY_DELETED
};

/// Value types, with Windows' numbers.
enum RegistryType : DWORD {
    kRegistryText = 1,             // REG_SZ
    kRegistryExpandableText = 2,   // REG_EXPAND_SZ
    kRegistryBinary = 3,           // REG_BINARY
    kRegistryDword = 4,            // REG_DWORD
    kRegistryTextList = 7,         // REG_MULTI_SZ
};

/// Access masks.
enum RegistryAccess : DWORD {
    kRegistryRead = 0x20019,        // KEY_READ
    kRegistryWrite = 0x20006,       // KEY_WRITE
    kRegistryReadWrite = 0x2001F,   // KEY_READ | KEY_WRITE
};

/// A predefined root, by its Windows number (0x80000000 to 0x80000005).
inline HKEY RegistryRoot(DWORD number)
{
    // The handle is the sign-extended number, as the Windows headers define it.
    return reinterpret_cast<HKEY>(static_cast<std::intptr_t>(static_cast<std::int32_t>(number)));
}

/// The registry's calls, with the parameters and the status codes of the Win32 calls of the same names. Text values are
/// wide text and their sizes are in bytes of it; names and paths are compared without case.
/// Safe to call from any thread; a handle belongs to one thread at a time.
class TVLSIBLINGS_API IRegistry {
public:
    /// The process-wide registry: the system's on windows, the file named by TVL_REGISTRY on linux.
    static IRegistry& GetInstance();
    /// Replaces the registry; null restores the process-wide one. The caller keeps ownership.
    static void SetForTests(IRegistry*);

    virtual ~IRegistry() = default;
    /// Opens a key. `access` is a RegistryAccess; the caller closes `opened`. 2 when there is no such key.
    virtual LONG RegOpenKeyExW(HKEY key, const wchar_t* path, DWORD options, DWORD access, HKEY* opened) = 0;
    /// Closes a key; 6 for what is none that is open. Predefined roots are left as they are.
    virtual LONG RegCloseKey(HKEY key) = 0;
    /// `securityAttributes` and `className` have no effect.
    virtual LONG RegCreateKeyExW(HKEY key, const wchar_t* path, DWORD reserved, wchar_t* className, DWORD options,
        DWORD access, const void* securityAttributes, HKEY* opened, DWORD* disposition) = 0;
    /// Deletes a key with everything below it, where the Win32 call refuses a key that has subkeys.
    virtual LONG RegDeleteKeyW(HKEY key, const wchar_t* path) = 0;
    /// Name of the subkey `index` in the order of the names; `nameLength` counts characters,
    /// the zero on the way in and not on the way out. 259 behind the last, 234 when the name does not fit.
    virtual LONG RegEnumKeyExW(HKEY key, DWORD index, wchar_t* name, DWORD* nameLength, DWORD* reserved,
        wchar_t* className, DWORD* classLength, void* lastWriteTime) = 0;
    /// Name, type and bytes of the value `index` in the order of the names; `type`, `data` and `size` may be null. 259
    /// behind the last, 234 when the name or the bytes don't fit.
    virtual LONG RegEnumValueW(HKEY key, DWORD index, wchar_t* name, DWORD* nameLength, DWORD* reserved, DWORD* type,
        BYTE* data, DWORD* size) = 0;
    /// Stores `size` bytes under a name, in place of the value that is there; a null or empty name is the key's default
    /// value.
    virtual LONG RegSetValueExW(
        HKEY key, const wchar_t* name, DWORD reserved, DWORD type, const BYTE* data, DWORD size) = 0;
    /// Type and bytes of a value; `type`, `data` and `size` may be null. 2 when there is none, 234 when `size` is too
    /// small: it becomes the size that is needed.
    virtual LONG RegQueryValueExW(
        HKEY key, const wchar_t* name, DWORD* reserved, DWORD* type, BYTE* data, DWORD* size) = 0;
    /// Deletes a value; 2 when there is none.
    virtual LONG RegDeleteValueW(HKEY key, const wchar_t* name) = 0;

    /// Begins a batch of this thread: a registry that can makes all its changes in one step when it ends, so that neither
    /// a process that ends in the middle nor another one that looks finds a part of them; others wait meanwhile. The
    /// system's registry of windows, and one in memory, make each change at once. Batches nest. On failure there is no
    /// batch to end, and changes are made each at once. Callers have RegistryBatch.
    virtual LONG BeginBatch() = 0;
    /// Ends this thread's last batch: keeps its changes or, where that is possible, takes them back. On failure they are
    /// taken back as well. Keys that were opened in a batch that is not kept are of no use but to be closed.
    virtual LONG EndBatch(bool keep) = 0;
};

/// A batch for as long as it lives; one that is not committed is taken back where that is possible.
class TVLSIBLINGS_API RegistryBatch {
public:
    /// Begins the batch; when that fails, changes are made each at once. `registry` must outlive it.
    explicit RegistryBatch(IRegistry& registry = IRegistry::GetInstance());
    ~RegistryBatch();
    RegistryBatch(const RegistryBatch&) = delete;
    RegistryBatch& operator=(const RegistryBatch&) = delete;
    /// Keeps the changes; to be called once. When there could be no batch it gives the reason: each change was made at once
    /// then, or failed for the same reason.
    LONG Commit();

private:
    IRegistry& m_registry;
    LONG m_begun;   // how its beginning went
    bool m_isOpen;
};

}   // namespace PREFUTILS

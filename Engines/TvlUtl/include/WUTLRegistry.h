// The registry by textual paths: a root's name such as L"HKEY_CURRENT_USER", a backslash and the rest.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlPlatform/TvlString.h"

/// One open key, and static calls with the contract of the private profile calls. Results are Win32 status codes, 0 for
/// success. Root names are matched exactly: no abbreviation, no other case. Texts are read through a buffer of 260
/// characters and written without their end mark. Nothing throws. An object belongs to one thread at a time.
class TVLUTL_API WUTLRegistry {
public:
    static constexpr ULONG kReadAccess = 0x20019;        ///< KEY_READ
    static constexpr ULONG kWriteAccess = 0x20006;       ///< KEY_WRITE
    static constexpr ULONG kReadWriteAccess = 0x2001F;   ///< KEY_READ and KEY_WRITE

    /// Opens `path` as OpenKey does; a null path opens nothing.
    explicit WUTLRegistry(const wchar_t* path = nullptr, ULONG access = kReadWriteAccess, int create = 0);
    /// Copies share the open key: the caller sees to it that one object alone closes it.
    WUTLRegistry(const WUTLRegistry&) = default;
    /// Does not close the key that was held.
    WUTLRegistry& operator=(const WUTLRegistry&) = default;
    /// Closes the key that is held.
    virtual ~WUTLRegistry();

    /// Opens a key; when it is missing and `create` is not 0, makes it. On failure the key held before stays, and only
    /// the result is kept. A null path changes nothing and returns the last result. 110 for an unknown root.
    /// Opening with `create` on an object that holds a key leaves no key open when the target had to be made, though
    /// the result is 0; callers create through an empty object.
    LONG OpenKey(const wchar_t* path, int create = 0, ULONG access = kReadWriteAccess);
    /// 110 when the key's location can't be opened any more, else the result of opening it anew.
    LONG IsValid();
    /// Full path of the key that is held, empty for none. Always 1.
    int GetCurrentKeyLocation(TvlString& out) const;

    /// Reads 4 bytes of a value of any type.
    LONG GetValue(const wchar_t* name, ULONG& value) const;
    /// Reads a value of any type as text; it ends at its first zero.
    LONG GetValue(const wchar_t* name, TvlString& value) const;
    /// Stores a number of 32 bits (REG_DWORD).
    LONG SetValue(const wchar_t* name, ULONG value);
    /// Stores a text (REG_SZ), which must not be null.
    LONG SetValue(const wchar_t* name, const wchar_t* value);

    /// Entry `index` of the key, 259 behind the last.
    LONG GetNextValue(TvlString& name, TvlString& data, ULONG index) const;
    /// The same for a value of 4 bytes of any type.
    LONG GetNextValue(TvlString& name, ULONG& data, ULONG index) const;
    /// The name alone.
    LONG GetNextValue(TvlString& name, ULONG index) const;
    /// Name of the subkey `index`, empty on failure; 259 behind the last.
    LONG GetNextSubkey(TvlString& name, ULONG index) const;

    /// Names of the subkeys, each with its end mark, ended by an empty name, cut at `size` characters (at least 2).
    void GetSubkeyList(wchar_t* buffer, ULONG size) const;
    /// Names of the values, in the same form.
    void GetValueNameList(wchar_t* buffer, ULONG size) const;

    /// Deletes a value and closes the key, whatever the outcome. -1 when no key is held.
    LONG DeleteRegistryValue(const wchar_t* name);

    /// Whether a key can be opened for reading; a null path is 0.
    static LONG IsValid(const wchar_t* path);
    /// Makes a key and those above it. -1 for a null path or an unknown root.
    static LONG CreateKey(const wchar_t* path, ULONG access, ULONG options);
    /// Deletes a key with all below it; 5 for a root alone, which is never deleted.
    static LONG DeleteRegistryKey(const wchar_t* path);

    // The profile calls. The key is `base` with `section` behind it, with no separator between: one of them brings it.

    /// The value's text as a number. A missing value is written as the text of `defaultValue`, which is returned.
    static int RegReadInt(const wchar_t* section, const wchar_t* entry, int defaultValue, const wchar_t* base);
    /// Copies a text to `buffer` and returns its length there. A missing value is written as `defaultText`
    /// unless that is null; the buffer is left alone then. A null section lists subkeys, a null entry the names of values.
    /// `buffer` has one place more than `size`: the end mark of a text of `size` characters or more stands there, behind
    /// `size` - 1 characters and one that is left alone; callers rely on the place.
    static long long RegReadString(const wchar_t* section, const wchar_t* entry, const wchar_t* defaultText,
        wchar_t* buffer, ULONG size, const wchar_t* base);
    /// Bytes read into `data`, or -1.
    static int RegReadBinary(
        const wchar_t* section, const wchar_t* entry, unsigned char* data, ULONG size, const wchar_t* base);
    /// 1 or 0. A null entry deletes the key, a null text the entry.
    static int RegWriteString(const wchar_t* section, const wchar_t* entry, const wchar_t* text, const wchar_t* base);
    /// 1 or 0. A null entry deletes the key, null data the entry.
    static int RegWriteBinary(
        const wchar_t* section, const wchar_t* entry, unsigned char* data, ULONG size, const wchar_t* base);

private:
    LONG HelperOpenKey(HKEY& out, const wchar_t* path, ULONG access, int create);
    LONG HelperCloseKey();
    static int HelperGetHKeyConstant(const wchar_t* rootName, HKEY& root);
    static const wchar_t* HelperGetString(HKEY root);
    static int HelperParseRootFromSubKey(wchar_t* subKey, HKEY& root);
    HKEY HelperGetCurrentHandle() const { return m_key; }
    LONG HelperGetValue(const wchar_t* name, void* data, ULONG& size) const;
    LONG HelperSetValue(const wchar_t* name, const void* data, ULONG& size, ULONG type);
    LONG HelperGetNextValue(wchar_t* name, void* data, ULONG nameChars, ULONG dataBytes, ULONG type, ULONG index) const;
    static int WriteProfileEntry(
        const TvlString& path, const wchar_t* section, const wchar_t* entry, const void* data, ULONG size, ULONG type);

    HKEY m_key = nullptr;
    LONG m_lastResult = 0;
    TvlString m_location;
    ULONG m_access = kReadWriteAccess;
};

// Keys of the registry with all that stands in them, for commands that show or change it.
#pragma once

#include "siblings/TvlPref/IRegistry.h"

#include <optional>
#include <string>
#include <vector>

/// One value. Text of any type is wide text with its end marks.
struct RegistryEntry {
    std::wstring name;   // empty for the key's unnamed value
    DWORD type = 0;
    std::vector<BYTE> data;

    bool IsText() const;
    /// The characters of a text, without end marks; lists keep the zeros between their texts.
    std::wstring Text() const;
    std::optional<DWORD> Number() const;
};

/// An open key, closed by its end. Failures end the command with the reason.
class RegistryKey {
public:
    /// Opens the key of a path such as "HKEY_CURRENT_USER\\Software"; "HKCU" and its like stand for the roots' names.
    /// @param create makes the key, and those above it, when they are missing
    static RegistryKey Open(const std::string& path, PREFUTILS::RegistryAccess access, bool create = false);
    RegistryKey(RegistryKey&& other) noexcept;
    RegistryKey& operator=(RegistryKey&&) = delete;
    ~RegistryKey();

    /// The path with the root's full name.
    const std::wstring& Path() const { return m_path; }
    std::vector<std::wstring> Subkeys() const;
    std::vector<RegistryEntry> Values() const;
    std::optional<RegistryEntry> Value(const std::wstring& name) const;
    void SetValue(const RegistryEntry& value) const;
    /// Deletes a value; the command ends when there is none.
    void DeleteValue(const std::wstring& name) const;

private:
    RegistryKey(HKEY key, std::wstring path) : m_key(key), m_path(std::move(path)) { }

    HKEY m_key;
    std::wstring m_path;
};

/// The path of a key with the root's full name; the command ends when there is no such root.
std::wstring FullRegistryPath(const std::string& path);
/// Ends the command with what a status of the registry says about a key.
[[noreturn]] void EndWithRegistryStatus(const std::wstring& path, LONG status);

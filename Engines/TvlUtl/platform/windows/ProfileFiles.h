// Private profile files: texts by section and key in .ini files.
#pragma once

#include "siblings/SiblingsApi.h"

namespace Ports {

/// Reads and writes .ini files by the value.
class TVLSIBLINGS_API ProfileFiles {
public:
    /// The system's, or the one that stands in for it.
    static ProfileFiles& Get();
    /// Replaces the port; null restores the system's. The caller keeps ownership.
    static void SetForTests(ProfileFiles*);

    virtual ~ProfileFiles() = default;
    /// GetPrivateProfileStringW: copies the value, or `defaultText` without the blanks at its end when there is none, to
    /// `buffer` of `size` characters, cut if need be and ended by a zero. A null `section` gives the names of all
    /// sections and a null `key` those of the section's keys: each name with its zero, and one more zero behind the last.
    /// On linux ProfileText tells what a file means, and a file name without a folder is one of the current folder.
    /// @param defaultText null for an empty text
    /// @return characters copied without the zero at the end; of a list that was cut, `size` - 2. 0 for a size of 0
    virtual DWORD GetText(const wchar_t* section, const wchar_t* key, const wchar_t* defaultText, wchar_t* buffer,
        DWORD size, const wchar_t* file) const = 0;
    /// WritePrivateProfileStringW: sets a value, in a new file if need be. A null `text` deletes the key and a null `key`
    /// the section. Everything else in the file stays. False when the file can't be read or written.
    virtual bool SetText(const wchar_t* section, const wchar_t* key, const wchar_t* text, const wchar_t* file) = 0;
};

}   // namespace Ports

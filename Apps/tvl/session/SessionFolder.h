// The place where a session happens: nothing outside of it is written.
#pragma once

#include "siblings/TvlPlatform/TvlString.h"

#include <string>

/// A folder that stands for the user's own, and a registry beside the user's. One object in a process.
class SessionFolder {
public:
    /// Moves the process there until its end: what is written when modules go away belongs there as well. Ends the command
    /// when the folder can't be used.
    /// @param folder UTF-8; made when it is missing; empty for a new one among the temporary files
    static const SessionFolder& Enter(const std::string& folder);

    /// Full path, without a separator at its end.
    const TvlString& Path() const { return m_path; }
    /// A path in the folder.
    TvlString File(const wchar_t* name) const;
    /// Where the registry is: a file, or a key of the user's registry.
    const TvlString& Registry() const { return m_registry; }

private:
    explicit SessionFolder(TvlString path);

    TvlString m_path;
    TvlString m_registry;
};

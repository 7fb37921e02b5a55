// The lock between the processes that work with a user's workspaces.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <memory>

/// Holds the lock of the user's workspace folder, as long as it lives or until Release. The thread that holds it may
/// take it again through another object. Belongs to the thread that made it.
class TVLUTL_API WSManagerMutex {
public:
    /// Acquires.
    WSManagerMutex();
    /// Releases.
    ~WSManagerMutex();
    WSManagerMutex(const WSManagerMutex&) = delete;
    WSManagerMutex& operator=(const WSManagerMutex&) = delete;

    /// Waits for the lock as long as it takes. False when the system refuses it.
    bool Acquire();
    /// Gives the lock back, if this object has it.
    void Release();
    /// Whether this object has the lock.
    bool HasMutex() const;
    /// Whether who held the lock last ended without giving it back: what it was doing may be half done.
    bool WasAbandoned() const;

    /// Name of the system's mutex of a workspace folder; the same whatever the case of the folder's letters.
    static TvlString NameFor(const TvlString& workspaceFolder);

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

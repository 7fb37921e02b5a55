// Sounds that events of the application make.
#pragma once

#include "siblings/SiblingsApi.h"

#include <optional>

namespace Ports {

/// Plays sounds that the user can choose. Nothing plays before Load.
class TVLSIBLINGS_API Sound {
public:
    /// The system's, or the one that stands in for it.
    static Sound& Get();
    /// Replaces the port; null restores the system's. The caller keeps ownership.
    static void SetForTests(Sound*);

    virtual ~Sound() = default;
    /// Loads what plays sounds, once; it stays loaded. "WINMM.DLL" on windows, from the system's folder alone, and
    /// libcanberra on linux. False when it can't be loaded.
    virtual bool Load() = 0;
    /// PlaySoundW without a module: whether the sound starts. Empty when nothing is loaded or what is loaded lacks the
    /// function. On linux a name that is a file's plays that file and any other name is an event's of the desktop's
    /// sound theme; `flags` have no effect: a sound plays on by itself, and what is unknown makes none.
    /// @param name null stops what plays
    virtual std::optional<bool> Play(const wchar_t* name, DWORD flags) = 0;
};

}   // namespace Ports

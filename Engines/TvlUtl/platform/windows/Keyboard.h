// The keys, as the thread's message queue last saw them.
#pragma once

#include "siblings/SiblingsApi.h"

namespace Ports {

/// The keys, as the calling thread's message queue last saw them.
class TVLSIBLINGS_API Keyboard {
public:
    /// The system's, or the one that stands in for it.
    static Keyboard& Get();
    /// Replaces the port; null restores the system's. The caller keeps ownership.
    static void SetForTests(Keyboard*);

    virtual ~Keyboard() = default;
    /// GetKeyState: whether the key of a virtual-key code is down. Never on linux, where no window gets keys.
    virtual bool IsDown(int virtualKey) const = 0;
};

}   // namespace Ports

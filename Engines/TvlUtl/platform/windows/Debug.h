// The debugger's output channel.
#pragma once

#include "siblings/SiblingsApi.h"

#include <string>

namespace Ports {

/// What a debugger that is attached to the process shows.
class TVLSIBLINGS_API Debug {
public:
    /// The system's, or the one that stands in for it.
    static Debug& Get();
    /// Replaces the port; null restores the system's. The caller keeps ownership.
    static void SetForTests(Debug*);

    virtual ~Debug() = default;
    /// OutputDebugStringW. On linux the text goes to standard error when TVL_DEBUG is set in the environment.
    virtual void Output(const std::wstring& text) = 0;
};

}   // namespace Ports

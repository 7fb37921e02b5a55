// The debugger's output channel.
#pragma once

#include "siblings/SiblingsApi.h"

#include <string>

namespace Ports {

class TVLSIBLINGS_API Debug {
public:
    static Debug& Get();
    /// Replaces the port; null restores the system's. The caller keeps ownership.
    static void SetForTests(Debug*);

    virtual ~Debug() = default;
    /// OutputDebugStringW. On linux the text goes to standard error when TVL_DEBUG is set in the environment.
    virtual void Output(const std::wstring& text) = 0;
};

}   // namespace Ports

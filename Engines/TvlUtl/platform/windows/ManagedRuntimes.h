// The .NET runtimes of the machine.
#pragma once

#include "siblings/SiblingsApi.h"

#include <optional>
#include <string>
#include <vector>

namespace Ports {

/// Asks for runtimes and loads none.
class TVLSIBLINGS_API ManagedRuntimes {
public:
    /// The system's, or the one that stands in for it.
    static ManagedRuntimes& Get();
    /// Replaces the port; null restores the system's. The caller keeps ownership.
    static void SetForTests(ManagedRuntimes*);

    virtual ~ManagedRuntimes() = default;
    /// Versions of the runtimes that the runtime host of mscoree enumerates, such as L"v4.0.30319"; empty when there is
    /// no host or it can't enumerate. Always empty on linux: the .NET Framework is for windows alone.
    virtual std::optional<std::vector<std::wstring>> Installed() const = 0;
};

}   // namespace Ports

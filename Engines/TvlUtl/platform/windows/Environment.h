// Surroundings of the process: its variables and its sandbox.
#pragma once

#include "siblings/SiblingsApi.h"

#include <optional>
#include <string>

/// Everything that the library asks the operating system: one class for each subject, which tests can replace.
/// docs/porting.md tells how to write another side.
namespace Ports {

/// Asks what surrounds the process, anew by each call.
class TVLSIBLINGS_API Environment {
public:
    /// The system's, or the one that stands in for it.
    static Environment& Get();
    /// Replaces the port; null restores the system's. The caller keeps ownership.
    static void SetForTests(Environment*);

    virtual ~Environment() = default;
    /// Value of a variable; empty when it is not set.
    virtual std::optional<std::wstring> Variable(const std::wstring& name) const = 0;
    /// Whether the process runs in an application store's sandbox: with a package identity on windows, in Flatpak or
    /// Snap on linux.
    virtual bool IsSandboxed() const = 0;
};

}   // namespace Ports

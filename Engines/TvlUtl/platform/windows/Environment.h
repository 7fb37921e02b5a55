// Environment variables of the process.
#pragma once

#include "siblings/SiblingsApi.h"

#include <optional>
#include <string>

namespace Ports {

class TVLSIBLINGS_API Environment {
public:
    static Environment& Get();
    /// Replaces the port; null restores the system's. The caller keeps ownership.
    static void SetForTests(Environment*);

    virtual ~Environment() = default;
    /// Value of a variable; empty when it is not set.
    virtual std::optional<std::wstring> Variable(const std::wstring& name) const = 0;
};

}   // namespace Ports

// The terminal that a console program was started from.
#pragma once

#include "siblings/SiblingsApi.h"

#include <optional>

namespace Ports {

class TVLSIBLINGS_API Terminal {
public:
    static Terminal& Get();
    /// Replaces the port; null restores the system's. The caller keeps ownership.
    static void SetForTests(Terminal*);

    virtual ~Terminal() = default;
    /// Width in characters of the terminal that shows standard error; empty when that goes elsewhere.
    virtual std::optional<int> ErrorColumns() const = 0;
    /// Whether it takes the escape sequences that move the cursor; it is made to, where it has to be told.
    virtual bool UnderstandsEscapes() const = 0;
};

}   // namespace Ports

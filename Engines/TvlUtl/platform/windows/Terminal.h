// The terminal that a console program was started from.
#pragma once

#include "siblings/SiblingsApi.h"

#include <optional>
#include <string>

namespace Ports {

/// The terminal that standard input and standard error lead to, if any.
class TVLSIBLINGS_API Terminal {
public:
    /// The system's, or the one that stands in for it.
    static Terminal& Get();
    /// Replaces the port; null restores the system's. The caller keeps ownership.
    static void SetForTests(Terminal*);

    virtual ~Terminal() = default;
    /// Width in characters of the terminal that shows standard error; empty when that goes elsewhere.
    virtual std::optional<int> ErrorColumns() const = 0;
    /// Whether it takes the escape sequences that move the cursor; it is made to, where it has to be told.
    virtual bool UnderstandsEscapes() const = 0;
    /// Whether somebody sits at it: standard input and standard error are both a terminal.
    virtual bool IsInteractive() const { return false; }
    /// Whether a terminal shows standard output.
    virtual bool ShowsOutput() const { return false; }
    /// Writes to standard error, without a line's end.
    virtual void Write(const std::wstring&) { }
    /// A line of standard input without its end; empty at the input's end.
    virtual std::optional<std::wstring> ReadLine() { return std::nullopt; }
};

}   // namespace Ports

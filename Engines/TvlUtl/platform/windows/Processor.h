// What the processor says about itself.
#pragma once

#include "siblings/SiblingsApi.h"

#include <optional>

namespace Ports {

/// Registers behind one identification query.
struct ProcessorLeaf {
    /// @{
    /// The register of this name, which each leaf fills with a meaning of its own.
    ULONG eax = 0;
    ULONG ebx = 0;
    ULONG ecx = 0;
    ULONG edx = 0;
    /// @}
};

/// Asks the processor that the calling thread runs on.
class TVLSIBLINGS_API Processor {
public:
    /// The system's, or the one that stands in for it.
    static Processor& Get();
    /// Replaces the port; null restores the system's. The caller keeps ownership.
    static void SetForTests(Processor*);

    virtual ~Processor() = default;
    /// The CPUID instruction for a leaf (0 and up, or 0x80000000 and up) and a sub-leaf; empty on a machine without the
    /// instruction. A leaf that the processor doesn't have gives registers of no meaning.
    virtual std::optional<ProcessorLeaf> Identify(ULONG leaf, ULONG subleaf) const = 0;
};

}   // namespace Ports

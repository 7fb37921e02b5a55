// The processor's identification: one instruction, whatever the operating system.
#include "Windows/SystemPorts.h"

#ifdef __x86_64__
#include <cpuid.h>
#endif

namespace Ports {

namespace {
class InstalledProcessor final : public Processor {
public:
    std::optional<ProcessorLeaf> Identify([[maybe_unused]] ULONG leaf, [[maybe_unused]] ULONG subleaf) const override
    {
#ifdef __x86_64__
        unsigned eax = 0, ebx = 0, ecx = 0, edx = 0;
        __cpuid_count(static_cast<unsigned>(leaf), static_cast<unsigned>(subleaf), eax, ebx, ecx, edx);
        return ProcessorLeaf{eax, ebx, ecx, edx};
#else
        return std::nullopt;
#endif
    }
};
}   // namespace

template <>
Processor& SystemPort<Processor>()
{
    static InstalledProcessor processor;
    return processor;
}

}   // namespace Ports

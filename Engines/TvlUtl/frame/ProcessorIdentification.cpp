#include "ProcessorIdentification.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {
constexpr ULONG kExtended = 0x80000000;
// Processors have a few dozen leaves of each kind. A virtual machine that claims billions doesn't hold the start up.
constexpr ULONG kMostLeaves = 256;

/// All leaves from `first` to the highest, which the first one tells in EAX. Each is asked for once: under a hypervisor an
/// answer takes microseconds, and this is part of every program's start.
std::vector<Ports::ProcessorLeaf> ReadLeaves(const Ports::Processor& processor, ULONG first)
{
    std::vector<Ports::ProcessorLeaf> leaves;
    const auto head = processor.Identify(first, 0);
    // A processor without extended leaves answers with another leaf's registers.
    if (!head || head->eax < first)
        return leaves;
    const ULONG count = std::min(head->eax - first, kMostLeaves - 1) + 1;
    leaves.reserve(count);
    leaves.push_back(*head);
    for (ULONG i = 1; i < count; ++i)
        leaves.push_back(processor.Identify(first + i, 0).value_or(Ports::ProcessorLeaf()));
    return leaves;
}

/// Characters that registers hold, up to an end mark.
template <std::size_t Count>
std::string Text(const std::array<ULONG, Count>& registers)
{
    char text[sizeof registers];
    std::memcpy(text, registers.data(), sizeof text);
    return std::string(text, std::find(text, text + sizeof text, '\0'));
}
}   // namespace

ProcessorIdentification::ProcessorIdentification(const Ports::Processor& processor)
    : standardLeaves(ReadLeaves(processor, 0)), extendedLeaves(ReadLeaves(processor, kExtended))
{
    if (!standardLeaves.empty()) {
        const auto& leaf = standardLeaves[0];
        vendor = Text(std::array{leaf.ebx, leaf.edx, leaf.ecx});
        isIntel = vendor == "GenuineIntel";
        isAmd = vendor == "AuthenticAMD";
    }
    if (standardLeaves.size() > 1) {
        leaf1Ecx = standardLeaves[1].ecx;
        leaf1Edx = standardLeaves[1].edx;
    }
    if (standardLeaves.size() > 7) {
        leaf7Ebx = standardLeaves[7].ebx;
        leaf7Ecx = standardLeaves[7].ecx;
    }
    if (extendedLeaves.size() > 1) {
        extended1Ecx = extendedLeaves[1].ecx;
        extended1Edx = extendedLeaves[1].edx;
    }
    if (extendedLeaves.size() > 4) {
        std::array<ULONG, 12> registers;
        for (std::size_t i = 0; i < 3; ++i) {
            const auto& leaf = extendedLeaves[2 + i];
            std::ranges::copy(std::array{leaf.eax, leaf.ebx, leaf.ecx, leaf.edx}, registers.begin() + 4 * i);
        }
        brand = Text(registers);
    }
}

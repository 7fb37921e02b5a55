// All that the processor says about itself, read once.
#pragma once

#include "windows/Processor.h"

#include <string>
#include <vector>

/// A processor's identification. All of it is zero or empty on a machine without the instruction.
struct ProcessorIdentification {
    ProcessorIdentification() = default;
    explicit ProcessorIdentification(const Ports::Processor& processor);

    std::vector<Ports::ProcessorLeaf> standardLeaves;   // leaf 0 and up, each with sub-leaf 0
    std::vector<Ports::ProcessorLeaf> extendedLeaves;   // leaf 0x80000000 and up
    std::string vendor;                                 // 12 characters
    bool isIntel = false;
    bool isAmd = false;
    // Feature bits, 0 where the leaf is missing.
    ULONG leaf1Ecx = 0;
    ULONG leaf1Edx = 0;
    ULONG leaf7Ebx = 0;
    ULONG leaf7Ecx = 0;
    ULONG extended1Ecx = 0;
    ULONG extended1Edx = 0;
    std::string brand;   // up to 48 characters, without what follows its end mark
};

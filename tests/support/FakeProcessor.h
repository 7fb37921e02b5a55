// A processor that a test describes, in the system's place as long as the object lives.
#pragma once

#include "windows/Processor.h"

#include <cstring>
#include <map>
#include <string>
#include <utility>

class FakeProcessor : public Ports::Processor {
public:
    FakeProcessor() { SetForTests(this); }
    ~FakeProcessor() override { SetForTests(nullptr); }
    FakeProcessor(const FakeProcessor&) = delete;
    FakeProcessor& operator=(const FakeProcessor&) = delete;

    std::optional<Ports::ProcessorLeaf> Identify(ULONG leaf, ULONG subleaf) const override
    {
        ++queries;
        if (!hasInstruction)
            return std::nullopt;
        const auto found = leaves.find({leaf, subleaf});
        // What a real one answers to a leaf that it doesn't have: registers of no meaning.
        return found == leaves.end() ? Ports::ProcessorLeaf{~0u, ~0u, ~0u, ~0u} : found->second;
    }

    /// The order of the registers differs: a vendor stands in EBX, EDX, ECX of leaf 0.
    void SetHighest(ULONG highest, const char (&vendor)[13])
    {
        Ports::ProcessorLeaf leaf{highest, 0, 0, 0};
        std::memcpy(&leaf.ebx, vendor, 4);
        std::memcpy(&leaf.edx, vendor + 4, 4);
        std::memcpy(&leaf.ecx, vendor + 8, 4);
        leaves[{0, 0}] = leaf;
    }

    std::map<std::pair<ULONG, ULONG>, Ports::ProcessorLeaf> leaves;   // by leaf and sub-leaf
    bool hasInstruction = true;
    mutable int queries = 0;
};

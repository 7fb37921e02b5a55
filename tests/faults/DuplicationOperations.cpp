// Copies of object graphs: what is registered is whole, and every copy has an owner.
#include "Duplication.h"
#include "HeapOperation.h"

#include <gtest/gtest.h>

namespace {
using namespace TvlUtl;

/// An object that refers to another, by either way of owning; counted.
class Node : public Duplicatable {
public:
    Node() { ++alive; }
    ~Node() override { --alive; }
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    IDuplicatable* Duplicate(IDuplicationContext* context) const override
    {
        auto copy = std::make_unique<Node>();
        context->MapInstance(this, copy.get(), false);
        Node* const registered = copy.release();
        registered->next = static_cast<Node*>(context->FindOrDuplicateMappedInstance(next, false));
        return registered;
    }
    std::shared_ptr<IDuplicatable> DuplicatePtr(IDuplicationContext* context) const override
    {
        auto copy = std::make_shared<Node>();
        context->MapPtrInstance(this, copy);
        copy->sharedNext = context->FindOrDuplicateMappedPtrInstance(next);
        return copy;
    }

    const Node* next = nullptr;
    std::shared_ptr<IDuplicatable> sharedNext;
    static inline int alive = 0;
};

constexpr int kNodes = 40;

struct Chain {
    Chain()
    {
        for (int i = 1; i < kNodes; ++i)
            nodes[i - 1].next = &nodes[i];
    }
    void Check(const HeapRun& outcome)
    {
        EXPECT_EQ(Node::alive, kNodes) << "copies that nobody owns";
        EXPECT_TRUE(copied == kNodes || outcome.hasFailed) << copied;
        copied = 0;
    }

    Node nodes[kNodes];
    int copied = 0;
};
}   // namespace

HeapOperations DuplicationOperations()
{
    return {
        Row<Chain>(
            "FindOrDuplicateMappedInstance",
            [](Chain& chain) {
                DuplicationContext context;
                const auto* copy = static_cast<const Node*>(context.FindOrDuplicateMappedInstance(chain.nodes, false));
                for (; copy; copy = copy->next)
                    ++chain.copied;
            },
            [](Chain& chain, const HeapRun& outcome) { chain.Check(outcome); }),
        Row<Chain>(
            "FindOrDuplicateMappedPtrInstance",
            [](Chain& chain) {
                DuplicationContext context;
                auto copy = context.FindOrDuplicateMappedPtrInstance(chain.nodes);
                for (; copy; copy = static_cast<const Node&>(*copy).sharedNext)
                    ++chain.copied;
            },
            [](Chain& chain, const HeapRun& outcome) { chain.Check(outcome); }),
        Row<Chain>(
            "copy_of_a_context",
            [](Chain& chain) {
                DuplicationContext context;
                for (const Node& node : chain.nodes)
                    context.MapInstance(&node, nullptr, true);
                DuplicationContext copy(context);
                copy = context;
                for (const Node& node : chain.nodes)
                    chain.copied += copy.FindMappedInstance(&node, false) == nullptr;
            },
            [](Chain& chain, const HeapRun& outcome) { chain.Check(outcome); }),
    };
}

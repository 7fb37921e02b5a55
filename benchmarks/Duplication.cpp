// Copying a graph with shared and circular references through a context, beside the same copy written by hand with one
// std::map from sources to copies. Each iteration copies the whole graph, and destroys the copy and the record of it.
#include "Duplication.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <map>
#include <memory>
#include <numeric>
#include <random>
#include <vector>

namespace {

using TvlUtl::IDuplicatable;
using TvlUtl::IDuplicationContext;

constexpr int kReferences = 4;

/// An object with raw references, which has both copies in it.
class Node final : public TvlUtl::Duplicatable {
public:
    IDuplicatable* Duplicate(IDuplicationContext* context) const override
    {
        auto* const copy = new Node;
        context->MapInstance(this, copy, false);
        CopyTo(*copy, *context);
        return copy;
    }
    void CopyTo(IDuplicatable& target, IDuplicationContext& context) const override
    {
        auto& copy = static_cast<Node&>(target);
        copy.value = value;
        for (int i = 0; i < kReferences; ++i)
            copy.references[i] = static_cast<const Node*>(context.FindOrDuplicateMappedInstance(references[i], false));
    }

    using Memo = std::map<const Node*, std::unique_ptr<Node>>;
    static const Node* CopyByHand(const Node* source, Memo& memo)
    {
        if (!source)
            return nullptr;
        const auto [entry, isNew] = memo.try_emplace(source);
        if (!isNew)
            return entry->second.get();
        Node* const copy = (entry->second = std::make_unique<Node>()).get();
        copy->value = source->value;
        for (int i = 0; i < kReferences; ++i)
            copy->references[i] = CopyByHand(source->references[i], memo);
        return copy;
    }

    const Node* references[kReferences] = {};
    int value = 0;
};

/// The same with shared ownership of what lies below; references back are raw.
class SharedNode final : public TvlUtl::Duplicatable {
public:
    std::shared_ptr<IDuplicatable> DuplicatePtr(IDuplicationContext* context) const override
    {
        auto copy = std::make_shared<SharedNode>();
        context->MapPtrInstance(this, copy);
        CopyTo(*copy, *context);
        return copy;
    }
    void CopyTo(IDuplicatable& target, IDuplicationContext& context) const override
    {
        auto& copy = static_cast<SharedNode&>(target);
        copy.value = value;
        for (int i = 0; i + 1 < kReferences; ++i)
            copy.references[i] =
                std::static_pointer_cast<SharedNode>(context.FindOrDuplicateMappedPtrInstance(references[i].get()));
        copy.back = static_cast<const SharedNode*>(context.FindMappedInstance(back, false));
    }

    using Memo = std::map<const SharedNode*, std::shared_ptr<SharedNode>>;
    static std::shared_ptr<SharedNode> CopyByHand(const SharedNode* source, Memo& memo)
    {
        if (!source)
            return nullptr;
        const auto [entry, isNew] = memo.try_emplace(source);
        if (!isNew)
            return entry->second;
        const auto copy = entry->second = std::make_shared<SharedNode>();
        copy->value = source->value;
        for (int i = 0; i + 1 < kReferences; ++i)
            copy->references[i] = CopyByHand(source->references[i].get(), memo);
        if (const auto found = memo.find(source->back); found != memo.end())
            copy->back = found->second.get();
        return copy;
    }

    std::shared_ptr<SharedNode> references[kReferences - 1];
    const SharedNode* back = nullptr;
    int value = 0;
};

/// Calls `refer` with the number of an object, which of its references, and the number of what that one leads to: a
/// binary tree numbered in the order of a walk, from each object one reference to any leaf that stands before it, and one
/// back to its parent, the last. Copying calls itself no deeper than the tree is, and what goes down has no circles.
template <class Refer>
void Connect(std::size_t count, Refer refer)
{
    struct Branch {
        std::size_t place;   // in a heap: the children of i are 2 i + 1 and 2 i + 2
        std::size_t parent;
        int reference;
    };
    std::minstd_rand random(20);
    std::vector<std::size_t> leaves;
    std::vector<Branch> ahead;
    ahead.push_back({0, 0, kReferences - 1});
    for (std::size_t object = 0; object < count; ++object) {
        const Branch branch = ahead.back();
        ahead.pop_back();
        refer(branch.parent, branch.reference, object);
        if (!leaves.empty())
            refer(object, 2, leaves[random() % leaves.size()]);
        if (2 * branch.place + 1 >= count)
            leaves.push_back(object);
        refer(object, 3, branch.parent);
        for (const int child : {1, 0})
            if (const std::size_t place = 2 * branch.place + 1 + child; place < count)
                ahead.push_back({place, object, child});
    }
}

/// Places in memory for objects: in the order of the walk, or scattered.
std::vector<std::size_t> Places(std::size_t count, bool scattered)
{
    std::vector<std::size_t> places(count);
    std::iota(places.begin(), places.end(), 0u);
    if (scattered)
        std::shuffle(places.begin(), places.end(), std::minstd_rand(7));
    return places;
}

struct Graph {
    Graph(std::size_t count, bool scattered) : nodes(count)
    {
        const auto places = Places(count, scattered);
        top = &nodes[places[0]];
        Connect(count, [&](std::size_t from, int reference, std::size_t to) {
            nodes[places[from]].references[reference] = &nodes[places[to]];
        });
    }
    std::vector<Node> nodes;
    const Node* top;
};

struct SharedGraph {
    SharedGraph(std::size_t count, bool scattered) : nodes(count)
    {
        for (auto& node : nodes)
            node = std::make_shared<SharedNode>();
        const auto places = Places(count, scattered);
        top = nodes[places[0]].get();
        Connect(count, [&](std::size_t from, int reference, std::size_t to) {
            SharedNode& node = *nodes[places[from]];
            if (reference == kReferences - 1)
                node.back = nodes[places[to]].get();
            else
                node.references[reference] = nodes[places[to]];
        });
    }
    std::vector<std::shared_ptr<SharedNode>> nodes;
    const SharedNode* top;
};

template <class Graph>
const Graph& GraphOf(const benchmark::State& state)
{
    static std::map<std::pair<std::int64_t, std::int64_t>, std::unique_ptr<Graph>> graphs;
    auto& graph = graphs[{state.range(0), state.range(1)}];
    if (!graph)
        graph = std::make_unique<Graph>(state.range(0), state.range(1) != 0);
    return *graph;
}

void Duplication_Context(benchmark::State& state)
{
    const Graph& graph = GraphOf<Graph>(state);
    for (auto _ : state) {
        TvlUtl::DuplicationContext context;
        benchmark::DoNotOptimize(context.FindOrDuplicateMappedInstance(graph.top, false));
    }
    state.SetComplexityN(state.range(0));
}

void Duplication_ByHand(benchmark::State& state)
{
    const Graph& graph = GraphOf<Graph>(state);
    for (auto _ : state) {
        Node::Memo memo;
        benchmark::DoNotOptimize(Node::CopyByHand(graph.top, memo));
    }
    state.SetComplexityN(state.range(0));
}

void Duplication_SharedContext(benchmark::State& state)
{
    const SharedGraph& graph = GraphOf<SharedGraph>(state);
    for (auto _ : state) {
        std::shared_ptr<IDuplicatable> top;
        TvlUtl::DuplicationContext context;
        benchmark::DoNotOptimize(top = context.FindOrDuplicateMappedPtrInstance(graph.top));
    }
    state.SetComplexityN(state.range(0));
}

void Duplication_SharedByHand(benchmark::State& state)
{
    const SharedGraph& graph = GraphOf<SharedGraph>(state);
    for (auto _ : state) {
        std::shared_ptr<SharedNode> top;
        SharedNode::Memo memo;
        benchmark::DoNotOptimize(top = SharedNode::CopyByHand(graph.top, memo));
    }
    state.SetComplexityN(state.range(0));
}

void InOrder(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgNames({"objects", "scattered"})->Unit(benchmark::kMicrosecond)->Complexity(benchmark::oNLogN);
    for (const int count : {1'000, 6'000, 36'000, 216'000})
        benchmark->Args({count, 0});
}

void Scattered(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgNames({"objects", "scattered"})->Unit(benchmark::kMicrosecond)->Args({216'000, 1});
}

BENCHMARK(Duplication_Context)->Apply(InOrder);
BENCHMARK(Duplication_ByHand)->Apply(InOrder);
BENCHMARK(Duplication_SharedContext)->Apply(InOrder);
BENCHMARK(Duplication_SharedByHand)->Apply(InOrder);
BENCHMARK(Duplication_Context)->Apply(Scattered);
BENCHMARK(Duplication_ByHand)->Apply(Scattered);

}   // namespace

// Copies of object graphs, who owns them, and what a context does when memory runs out.
#include "Duplication.h"

#include "FailingHeap.h"
#include "VirtualSlot.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <new>
#include <optional>
#include <vector>

namespace {

using TvlUtl::DuplicationContext;
using TvlUtl::DuplicationContextImpl;
using TvlUtl::IDuplicatable;
using TvlUtl::IDuplicationContext;

/// An object with raw references, which registers its copy and then copies what it refers to.
class Shape : public TvlUtl::Duplicatable {
public:
    ~Shape() override { died.push_back(this); }

    IDuplicatable* Duplicate(IDuplicationContext* context) const override
    {
        auto* const copy = new Shape;
        context->MapInstance(this, copy, false);
        CopyTo(*copy, *context);
        return copy;
    }
    void CopyTo(IDuplicatable& target, IDuplicationContext& context) const override
    {
        for (const Shape* const reference : references)
            static_cast<Shape&>(target).references.push_back(
                static_cast<Shape*>(context.FindOrDuplicateMappedInstance(reference, true)));
    }

    std::vector<Shape*> references;
    static inline std::vector<const IDuplicatable*> died;
};

/// An object in a chain of shared ownership.
class Link : public TvlUtl::Duplicatable {
public:
    Link() { ++alive; }
    ~Link() override { --alive; }

    std::shared_ptr<IDuplicatable> DuplicatePtr(IDuplicationContext* context) const override
    {
        auto copy = std::make_shared<Link>();
        context->MapPtrInstance(this, copy);
        CopyTo(*copy, *context);
        return copy;
    }
    void CopyTo(IDuplicatable& target, IDuplicationContext& context) const override
    {
        static_cast<Link&>(target).next = context.FindOrDuplicateMappedPtrInstance(next.get());
    }

    std::shared_ptr<IDuplicatable> next;
    static inline int alive = 0;
};

class Duplication : public testing::Test {
protected:
    Duplication() { Shape::died.clear(); }
    static Shape* CopyOf(DuplicationContext& context, const Shape& source)
    {
        return static_cast<Shape*>(context.FindOrDuplicateMappedInstance(&source, true));
    }
};

TEST_F(Duplication, KeepsSharedAndCircularReferences)
{
    Shape first, second, both;
    first.references = {&second, &both, &first, nullptr};
    second.references = {&first, &both};
    DuplicationContext context;
    const std::unique_ptr<Shape> firstCopy(CopyOf(context, first));
    ASSERT_TRUE(firstCopy);
    const std::unique_ptr<Shape> secondCopy(firstCopy->references[0]);
    const std::unique_ptr<Shape> bothCopy(firstCopy->references[1]);
    EXPECT_THAT(
        firstCopy->references, testing::ElementsAre(secondCopy.get(), bothCopy.get(), firstCopy.get(), nullptr));
    EXPECT_THAT(secondCopy->references, testing::ElementsAre(firstCopy.get(), bothCopy.get()));
    EXPECT_NE(firstCopy.get(), &first);
    EXPECT_EQ(CopyOf(context, second), secondCopy.get());
}

TEST_F(Duplication, CountsOnlyWhatIsRegistered)
{
    struct Forgetful : TvlUtl::Duplicatable {
        IDuplicatable* Duplicate(IDuplicationContext*) const override { return &result; }
        std::shared_ptr<IDuplicatable> DuplicatePtr(IDuplicationContext*) const override
        {
            return std::shared_ptr<IDuplicatable>(std::shared_ptr<void>(), &result);
        }
        mutable Shape result;
    };
    const Forgetful forgetful;
    const TvlUtl::Duplicatable inert;
    DuplicationContext context;
    EXPECT_TRUE(context.IsDeepCopy());
    EXPECT_EQ(context.FindOrDuplicateMappedInstance(&forgetful, true), nullptr);
    EXPECT_EQ(context.FindOrDuplicateMappedInstance(&inert, true), nullptr);
    EXPECT_EQ(context.FindOrDuplicateMappedInstance(nullptr, true), nullptr);
    // The shared form takes the result, and keeps nothing of it.
    EXPECT_EQ(context.FindOrDuplicateMappedPtrInstance(&forgetful).get(), &forgetful.result);
    EXPECT_EQ(context.FindMappedPtrInstance(&forgetful), nullptr);
    EXPECT_EQ(context.FindOrDuplicateMappedPtrInstance(&inert), nullptr);
    EXPECT_EQ(context.FindOrDuplicateMappedPtrInstance(nullptr), nullptr);
}

TEST_F(Duplication, DeletesWhatNobodyTook)
{
    enum How { Owned, MappedDetached, MappedAgainDetached, FoundDetaching, Duplicated, DuplicatedDetaching };
    struct Row {
        How how;
        bool survives;
    };
    constexpr Row kRows[] = {{Owned, false}, {MappedDetached, true}, {MappedAgainDetached, true},
        {FoundDetaching, true}, {Duplicated, false}, {DuplicatedDetaching, true}};
    for (const auto& [how, survives] : kRows) {
        Shape source, other;
        auto* const copy = new Shape;
        Shape::died.clear();
        {
            DuplicationContext context;
            EXPECT_EQ(&context.MapInstance(&source, copy, how == MappedDetached), &context);
            if (how == MappedAgainDetached)
                context.MapInstance(&source, &other, true);
            if (how == FoundDetaching)
                context.FindMappedInstance(&source, true);
            if (how == Duplicated || how == DuplicatedDetaching)
                context.FindOrDuplicateMappedInstance(&source, how == DuplicatedDetaching);
            context.MapInstance(&source, &other, false);   // the first copy stays, and whose it is
            EXPECT_EQ(context.FindMappedInstance(&source, false), copy);
        }
        EXPECT_EQ(Shape::died.empty(), survives) << how;
        if (survives)
            delete copy;
    }
}

TEST_F(Duplication, DeletesInTheOrderOfTheSources)
{
    constexpr std::size_t kCount = 1000;
    const std::vector<Shape> sources(kCount);
    std::vector<const IDuplicatable*> copies(kCount);
    {
        DuplicationContextImpl context;
        for (std::size_t i = 0; i < kCount; ++i) {
            const std::size_t at = i * 389 % kCount;
            auto* const copy = new Shape;
            copies[at] = copy;
            context.MapInstance(&sources[at], copy, false);
        }
        context.MapInstance(nullptr, nullptr, false);   // a source like any other, with nothing to delete
    }
    EXPECT_EQ(Shape::died, copies);
}

TEST_F(Duplication, AnswersCopiesThatAskWhileTheyAreDeleted)
{
    struct Asking : TvlUtl::Duplicatable {
        ~Asking() override
        {
            found = context->FindMappedInstance(&sources[0], false);
            context->MapInstance(&sources[2], new Shape, false);
        }
        DuplicationContextImpl* context = nullptr;
        const Shape* sources = nullptr;
        const IDuplicatable*& found;
        explicit Asking(const IDuplicatable*& place) : found(place) { }
    };
    const Shape sources[3];
    Shape known;
    const IDuplicatable* found = nullptr;
    {
        DuplicationContextImpl context;
        auto* const asking = new Asking(found);
        asking->context = &context;
        asking->sources = sources;
        context.MapInstance(&sources[1], asking, false);
        context.MapInstance(&sources[0], &known, true);
    }
    EXPECT_EQ(found, &known);
    EXPECT_EQ(Shape::died.size(), 1u);
}

TEST_F(Duplication, FindsSharedCopiesBothWays)
{
    const Shape source;
    const auto first = std::make_shared<Shape>();
    const auto second = std::make_shared<Shape>();
    {
        DuplicationContext context;
        EXPECT_EQ(&context.MapPtrInstance(&source, first), &context);
        EXPECT_EQ(context.FindMappedInstance(&source, false), first.get());
        EXPECT_EQ(context.FindOrDuplicateMappedPtrInstance(&source), first);
        context.MapPtrInstance(&source, second);
        EXPECT_EQ(context.FindMappedPtrInstance(&source), second);
        EXPECT_EQ(context.FindMappedInstance(&source, false), first.get());   // the raw copy stays the first
        EXPECT_EQ(first.use_count(), 1);
        EXPECT_EQ(second.use_count(), 2);
    }
    EXPECT_EQ(second.use_count(), 1);
    EXPECT_TRUE(Shape::died.empty());
}

TEST_F(Duplication, TakesARawCopyOverWhenItIsMappedAsShared)
{
    const Shape source;
    const auto copy = std::make_shared<Shape>();
    {
        DuplicationContext context;
        context.MapInstance(&source, copy.get(), false);
        context.MapPtrInstance(&source, copy);
    }
    EXPECT_TRUE(Shape::died.empty());
}

TEST_F(Duplication, ShowsObjectsTheOverridingContext)
{
    struct Counting : DuplicationContext {
        IDuplicationContext& MapInstance(const IDuplicatable* source, IDuplicatable* copy, bool detached) override
        {
            ++mapped;
            return DuplicationContext::MapInstance(source, copy, detached);
        }
        int mapped = 0;
    };
    Shape first, second;
    first.references = {&second};
    Counting context;
    const std::unique_ptr<Shape> copy(CopyOf(context, first));
    const std::unique_ptr<Shape> reference(copy->references[0]);
    EXPECT_EQ(context.mapped, 2);
}

TEST_F(Duplication, CopiesBothMapsOfAContext)
{
    const Shape sources[3];
    const auto shared = std::make_shared<Shape>();
    Shape copies[2];
    Shape taken;
    {
        DuplicationContext context;
        context.MapInstance(&sources[0], &copies[0], true).MapPtrInstance(&sources[1], shared);
        DuplicationContext reader(context);
        EXPECT_EQ(reader.FindMappedInstance(&sources[0], false), &copies[0]);
        EXPECT_EQ(reader.FindMappedPtrInstance(&sources[1]), shared);
        EXPECT_EQ(shared.use_count(), 3);

        DuplicationContext target;
        target.MapInstance(&sources[2], &taken, false);   // an assignment deletes nothing of what it takes out
        target.MapPtrInstance(&sources[0], shared);
        target = context;
        EXPECT_EQ(target.FindMappedInstance(&sources[2], false), nullptr);
        EXPECT_EQ(target.FindMappedPtrInstance(&sources[0]), nullptr);
        EXPECT_EQ(target.FindMappedPtrInstance(&sources[1]), shared);
        EXPECT_EQ(shared.use_count(), 4);
        const DuplicationContext& same = target;
        target = same;
        EXPECT_EQ(target.FindMappedInstance(&sources[0], false), &copies[0]);
        EXPECT_EQ(shared.use_count(), 4);
    }
    EXPECT_EQ(shared.use_count(), 1);
    EXPECT_TRUE(Shape::died.empty());
}

TEST_F(Duplication, CopiesWhoOwnsToo)
{
    const Shape source;
    auto* const copy = new Shape;
    DuplicationContext context;
    context.MapInstance(&source, copy, false);
    {
        DuplicationContext owner(context);
        context.FindMappedInstance(&source, true);
    }
    EXPECT_THAT(Shape::died, testing::ElementsAre(copy));
}

/// Copies that stand in the order of their chain, against it, in runs of no order, or in no order at all. Nested destruction would need more
/// than any stack.
TEST_F(Duplication, LetsGoOfLongChainsWithoutNesting)
{
    struct Row {
        std::size_t length;
        std::size_t (*place)(std::size_t i, std::size_t length);
    };
    const auto inOrder = [](std::size_t i, std::size_t) { return i; };
    const auto against = [](std::size_t i, std::size_t length) { return length - 1 - i; };
    const auto inRuns = [](std::size_t i, std::size_t length) {
        const std::size_t run = length / 10;
        return (i / run * 7 % 10) * run + i % run;
    };
    const auto scattered = [](std::size_t i, std::size_t length) {
        // One to one on powers of two.
        for (int round = 0; round < 3; ++round) {
            i = i * 0x9E3779B1 & (length - 1);
            i ^= i >> 9;
        }
        return i;
    };
    const Row rows[] = {{1 << 20, scattered}, {1'000'000, inOrder}, {300'000, against}, {300'000, inRuns}};
    const std::vector<Shape> sources(rows[0].length);
    for (const auto& [length, place] : rows) {
        std::vector<std::shared_ptr<Link>> links(length);
        for (auto& link : links)
            link = std::make_shared<Link>();
        DuplicationContextImpl replaced;
        {
            DuplicationContextImpl context;
            for (std::size_t i = 0; i < length; ++i)
                context.MapPtrInstance(&sources[i], links[place(i, length)]);
            for (std::size_t i = 0; i + 1 < length; ++i)
                links[i]->next = links[i + 1];
            links.clear();
            replaced = context;
        }
        EXPECT_EQ(Link::alive, static_cast<int>(length));
        replaced = DuplicationContextImpl();
        EXPECT_EQ(Link::alive, 0);
    }
}

TEST_F(Duplication, LeavesSharedCopiesToTheirOtherHolders)
{
    const auto top = std::make_shared<Link>();
    top->next = std::make_shared<Link>();
    std::shared_ptr<IDuplicatable> copy;
    {
        DuplicationContext context;
        copy = context.FindOrDuplicateMappedPtrInstance(top.get());
    }
    EXPECT_EQ(Link::alive, 4);
    ASSERT_TRUE(static_cast<Link&>(*copy).next);
    EXPECT_EQ(static_cast<Link&>(*copy).next.use_count(), 1);
}

/// Whether an operation ran to its end; memory may run out in it.
template <class Operation>
bool Succeeds(Operation operation)
{
    try {
        operation();
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

/// Each allocation fails in turn: mapping throws, and what was mapped before is all that is found.
TEST_F(Duplication, StaysAsItWasWhenMemoryRunsOut)
{
    constexpr std::size_t kCount = 40;
    constexpr int kGrowths = 8;   // of rows and slots, in both maps
    const std::vector<Shape> sources(kCount);
    const auto shared = std::make_shared<Shape>();
    Shape raw;
    std::optional<DuplicationContextImpl> context(std::in_place);
    std::size_t mapped = 0;
    bool succeeded = false;
    const auto map = [&] {
        for (; mapped < kCount; ++mapped)
            if (mapped % 2 == 0)
                context->MapPtrInstance(&sources[mapped], shared);
            else
                context->MapInstance(&sources[mapped], &raw, true);
    };
    const auto check = [&](bool failed) {
        EXPECT_EQ(succeeded, !failed);
        for (std::size_t i = 0; i < kCount; ++i) {
            const bool isShared = i < mapped && i % 2 == 0;
            IDuplicatable* const expected = i >= mapped ? nullptr : isShared ? shared.get() : &raw;
            EXPECT_EQ(context->FindMappedInstance(&sources[i], false), expected) << i;
            EXPECT_EQ(context->FindMappedPtrInstance(&sources[i]), isShared ? shared : nullptr) << i;
        }
        context.emplace();
        mapped = 0;
    };
    FailEachAllocation(
        kGrowths, [&] { succeeded = Succeeds(map); }, check);
}

TEST_F(Duplication, KeepsTheTargetOfAnAssignmentThatFails)
{
    constexpr int kCopies = 4;   // of rows and slots, from both maps
    const Shape sources[2];
    const auto kept = std::make_shared<Shape>();
    DuplicationContextImpl source, target;
    source.MapPtrInstance(&sources[0], std::make_shared<Shape>());
    target.MapPtrInstance(&sources[1], kept);
    bool succeeded = false;
    FailEachAllocation(
        kCopies, [&] { succeeded = Succeeds([&] { target = source; }); },
        [&](bool failed) {
            EXPECT_EQ(succeeded, !failed);
            EXPECT_EQ(target.FindMappedInstance(&sources[1], false), failed ? kept.get() : nullptr);
            EXPECT_EQ(target.FindMappedPtrInstance(&sources[1]), failed ? kept : nullptr);
            EXPECT_EQ(target.FindMappedInstance(&sources[0], false) == nullptr, failed);
        });
}

TEST_F(Duplication, KeepsItsSlots)
{
    // The destructor stands first, as two entries.
    EXPECT_EQ(Slot(&IDuplicatable::Duplicate), 2u);
    EXPECT_EQ(Slot(&IDuplicatable::DuplicatePtr), 3u);
    EXPECT_EQ(Slot(&IDuplicatable::CopyTo), 4u);
    EXPECT_EQ(Slot(&IDuplicationContext::IsDeepCopy), 0u);
    EXPECT_EQ(Slot(&IDuplicationContext::MapInstance), 1u);
    EXPECT_EQ(Slot(&IDuplicationContext::MapPtrInstance), 2u);
    EXPECT_EQ(Slot(&IDuplicationContext::FindMappedInstance), 3u);
    EXPECT_EQ(Slot(&IDuplicationContext::FindMappedPtrInstance), 4u);
    EXPECT_EQ(Slot(&IDuplicationContext::FindOrDuplicateMappedInstance), 5u);
    EXPECT_EQ(Slot(&IDuplicationContext::FindOrDuplicateMappedPtrInstance), 6u);
}

}   // namespace

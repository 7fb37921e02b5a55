// Lists on a heap that fails: every operation of a long random sequence with each of its allocations failing in turn.
#include "../ListOperations.h"
#include "../RandomChoices.h"
#include "../SlotOperations.h"
#include "FailingHeap.h"
#include "FakeWindowing.h"

#include <gtest/gtest.h>
#include <optional>
#include <utility>

namespace {

using namespace ListTrials;

constexpr LONG kLongest = 40;
constexpr std::size_t kRoomOfResults = 1 << 16;   // for what an operation hands out, so that only lists allocate
unsigned Kinds(int step, std::size_t all) { return step % 300 < 30 ? kAddingKinds : static_cast<unsigned>(all); }

/// Runs an operation with its allocation number `point` failing; whether that was the list's.
bool FailAt(int point, HMEM__* handle, ListModel& model, const Operation& operation)
{
    Outcome real;
    real.out.reserve(kRoomOfResults);
    real.out.assign(operation.data.size(), '?');
    bool failed = false;
    {
        const FailingHeap heap(point);
        real.result = kListRows[operation.kind].real(handle, operation, real.out);
        failed = heap.HasFailed();
    }
    model.failing = point;
    EXPECT_EQ(Compare(handle, model, operation, real), "") << "with allocation " << point << " failing";
    const bool resizeFailed = std::exchange(model.failing, -1) < 0;
    // A bad argument's report allocates as well.
    EXPECT_TRUE(failed || !resizeFailed) << "the model counts other allocations";
    return resizeFailed;
}

TEST(ListFailure, ListsStayValidWhateverAllocationFails)
{
    FakeWindowing windowing;
    int failures = 0;
    RandomChoices choices(7);
    HMEM__* const handle = LIST_Ctor();
    ListModel model(12);
    for (int step = 0; step < 6000 && !HasFailure(); ++step) {
        const Operation operation = Choose(choices, Kinds(step, std::size(kListRows)), model.Count());
        for (int point = 0; FailAt(point, handle, model, operation); ++point) {
            ++failures;
            ASSERT_EQ(windowing.boxes.size(), 1u);
            ASSERT_NE(windowing.boxes[0].caption.find(L"error 1002 in , line 717"), std::wstring::npos);
            windowing.boxes.clear();
        }
        windowing.boxes.clear();
        while (model.Count() > kLongest)
            ASSERT_EQ(Step(handle, model, {kListPopOldest, 0, {}}), "");
    }
    LIST_Dtor(handle);
    EXPECT_GT(failures, 2000);
}

TEST(ListFailure, NewListsAreWholeOrNothing)
{
    constexpr int kRecordAndBlock = 2;
    FakeWindowing windowing;
    HMEM__* const source = LIST_Ctor();
    LIST_Push(source, "abc", 3);
    struct {
        const wchar_t* report;
        HMEM__* (*create)(HMEM__*);
    } const rows[] = {
        {L"error 1000 in , line 1138", [](HMEM__*) { return LIST_Ctor(); }},
        {L"error 1000 in , line 1196", [](HMEM__*) { return LIST_CtorExt(20); }},
        {L"error 1000 in , line 2051", [](HMEM__* list) { return LIST_DupCtor(list); }},
    };
    for (const auto& [report, create] : rows) {
        HMEM__* handle = nullptr;
        FailEachAllocation(
            kRecordAndBlock, [&] { handle = create(source); },
            [&](bool failed) {
                EXPECT_EQ(handle == nullptr, failed);
                ASSERT_EQ(windowing.boxes.size(), failed ? 1u : 0u);
                EXPECT_TRUE(!failed || windowing.boxes[0].caption.ends_with(report));
                windowing.boxes.clear();
                LIST_Dtor(handle);
            });
    }
    LIST_Dtor(source);
}

/// What the heap has refused to an operation of a WGList, by its result. Results 2 and 3 are indices as well.
Refused WhatWasRefused(const Operation& operation, bool failed, int result)
{
    constexpr unsigned kReplace = 4;
    if (!failed)
        return Refused::Nothing;
    if (operation.kind < kReplace && result == 2)
        return Refused::Slots;
    return operation.kind < kAddingKinds ? Refused::Block : Refused::Shrink;
}

bool FailAt(int point, OpenList& list, SlotModel& model, const Operation& operation)
{
    bool failed = false;
    int result = 0;
    const bool full = list.Slots() >= list.Allocated();
    {
        const FailingHeap heap(point);
        result = kSlotRows[operation.kind].real(list, operation);
        failed = heap.HasFailed();
    }
    model.refused = WhatWasRefused(operation, failed, result);
    EXPECT_TRUE(model.refused != Refused::Slots || full);
    EXPECT_EQ(Compare(list, model, operation, result), "") << "with allocation " << point << " failing";
    model.refused = Refused::Nothing;
    return failed;
}

TEST(SlotFailure, ListsStayValidWhateverAllocationFails)
{
    int failures = 0;
    RandomChoices choices(11);
    OpenList list;
    SlotModel model;
    for (int step = 0; step < 10000 && !HasFailure(); ++step) {
        const Operation operation = Choose(choices, Kinds(step, std::size(kSlotRows)), model.Count());
        for (int point = 0; FailAt(point, list, model, operation); ++point)
            ++failures;
        while (model.Count() > kLongest) {
            list.Remove(0);
            model.Remove(0);
        }
    }
    EXPECT_GT(failures, 2000);
}

TEST(SlotFailure, AFullListGrowsAgainAfterAGrowthThatFailed)
{
    OpenList list;
    for (int i = 0; i < 16; ++i)
        ASSERT_EQ(list.InsertEnd("x", 1), i);
    for (int again = 0; again < 3; ++again) {
        const FailingHeap heap(0);
        EXPECT_EQ(list.InsertEnd("x", 1), 2);
    }
    EXPECT_EQ(list.Capacity(), 24);
    EXPECT_EQ(list.Slots(), 16);
    for (int i = 16; i < 40; ++i)
        ASSERT_EQ(list.InsertEnd("x", 1), i);
    EXPECT_EQ(list.Capacity(), 40);
}

TEST(SlotFailure, ConstructorsLeaveNothingOrWhatFoundRoom)
{
    OpenList source;
    source.SetHeader("head", 4);
    for (const char* element : {"one", "two", "three"})
        source.InsertEnd(element, 3);
    FailEachAllocation(
        5,   // slots, header, three elements
        [&] {
            OpenList copy(source);
            const bool whole = copy.ListSize() == 3 && copy.GetHeaderSize() == 4;
            const bool none = !copy.Elements() && copy.Capacity() == 0 && copy.Slots() == 0 && copy.Allocated() == 0;
            EXPECT_TRUE(whole || none || (copy.Slots() == 3 && copy.ListSize() + (copy.GetHeader() != nullptr) == 3));
        },
        [](bool) {});

    std::optional<OpenList> list;
    {
        const FailingHeap heap(0);
        list.emplace();
    }
    EXPECT_EQ(list->Elements(), nullptr);
    EXPECT_EQ(list->Capacity(), 0);
    EXPECT_EQ(list->Insert("x", 1), 0);   // grows like any other
    EXPECT_EQ(list->ListSize(), 1);
}

TEST(SlotFailure, FlatListsAreWholeOrNothing)
{
    HGLIST__* list = nullptr;
    FailEachAllocation(
        2, [&] { list = LISTCtor(); },
        [&](bool) {
            EXPECT_TRUE(!list || LISTSize(list) == 0);
            LISTDtor(list);
        });
}

}   // namespace

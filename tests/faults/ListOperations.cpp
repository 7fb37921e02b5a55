// Both kinds of lists: a failed growth leaves the list as it was, or a slot that is free.
#include "FakeWindowing.h"
#include "HandleMemory.h"
#include "HeapOperation.h"
#include "ListMan.h"
#include "WGList.h"

#include <gtest/gtest.h>
#include <string>

namespace {
constexpr LONG kFirst = 5;   // elements that are there before, "element0" and so on

struct Blocks {
    Blocks()
    {
        for (LONG i = 0; i < kFirst; ++i)
            LIST_Push(list, Element(i).data(), 8);
    }
    Blocks(const Blocks&) = delete;
    Blocks& operator=(const Blocks&) = delete;
    ~Blocks()
    {
        LIST_Dtor(list);
        LIST_Dtor(copy);
    }
    static std::string Element(LONG index) { return "element" + std::to_string(index); }

    /// The block is whole: offsets rise from the table's end to the block's.
    static void CheckBlock(HMEM__* handle)
    {
        const auto* const head = static_cast<const LIST*>(MEMMANLock(handle));
        const auto* const offsets =
            reinterpret_cast<const ULONG*>(reinterpret_cast<const char*>(head) + head->tableOffset);
        ASSERT_LE(head->totalSize, static_cast<ULONG>(MEMMANGetSize(handle)));
        ASSERT_EQ(offsets[head->count], head->totalSize);
        for (ULONG i = 0; i < head->count; ++i)
            ASSERT_LE(offsets[i], offsets[i + 1]);
    }
    std::string At(LONG index) const
    {
        char bytes[9] = {};
        return LIST_GetIth(list, index, bytes, 8) == 8 ? bytes : "";
    }
    /// All elements that were there before are there, in their order.
    void Check(const HeapRun& outcome, LONG added)
    {
        CheckBlock(list);
        LONG found = 0;
        for (LONG i = 0; i < LIST_Size(list); ++i)
            found += At(i) == Element(found);
        EXPECT_EQ(found, kFirst);
        EXPECT_EQ(result < 0, outcome.hasFailed);
        EXPECT_TRUE(windowing.boxes.empty() || outcome.hasFailed);
        EXPECT_EQ(LIST_Size(list), size + (outcome.hasFailed ? 0 : added));
        size = LIST_Size(list);
        windowing.boxes.clear();
    }

    FakeWindowing windowing;   // failures are reported in a box
    HMEM__* list = LIST_Ctor();
    HMEM__* copy = nullptr;
    LONG size = kFirst;   // after the run before
    LONG result = 0;

    static bool HasFailed(Blocks& lists) { return lists.result < 0; }
};

struct Slots {
    Slots()
    {
        for (int i = 0; i < 16; ++i)
            list.InsertEnd("slot", 4);
        list.SetHeader("head", 4);
    }
    void Check()
    {
        EXPECT_GE(list.ListSize(), 16);
        for (int i = 0; i < list.ListSize(); ++i)
            EXPECT_TRUE(!list.Exist(i) || list.Get(i));
        EXPECT_GE(list.GetHeaderSize(), 4);
        EXPECT_NE(list.GetHeader(), nullptr);
    }

    WGList list;
    int result = 0;
    int size = 16;   // after the run before
};

std::string Long(char c) { return std::string(1000, c); }
}   // namespace

HeapOperations ListOperations()
{
    static const std::string bytes = Long('x');
    return {
        Row<Blocks>(
            "LIST_Push", [](Blocks& lists) { lists.result = LIST_Push(lists.list, bytes.data(), 1000); },
            [](Blocks& lists, const HeapRun& outcome) { lists.Check(outcome, 1); }, Blocks::HasFailed),
        Row<Blocks>(
            "LIST_InsertTop", [](Blocks& lists) { lists.result = LIST_InsertTop(lists.list, bytes.data(), 1000); },
            [](Blocks& lists, const HeapRun& outcome) { lists.Check(outcome, 1); }, Blocks::HasFailed),
        Row<Blocks>(
            "LIST_PutIth", [](Blocks& lists) { lists.result = LIST_PutIth(lists.list, 500, bytes.data(), 1000); },
            [](Blocks& lists, const HeapRun& outcome) {
                lists.Check(outcome, lists.size > 500 ? 0 : 501 - lists.size);
            },
            Blocks::HasFailed),
        Row<Blocks>(
            "LIST_DupCtor",
            [](Blocks& lists) {
                lists.copy = LIST_DupCtor(lists.list);
                lists.result = lists.copy ? 0 : -1;
            },
            [](Blocks& lists, const HeapRun& outcome) {
                lists.Check(outcome, 0);
                EXPECT_EQ(lists.copy == nullptr, outcome.hasFailed);
                if (lists.copy)
                    Blocks::CheckBlock(lists.copy);
                LIST_Dtor(lists.copy);
                lists.copy = nullptr;
            },
            Blocks::HasFailed),
        Row<Blocks>(
            "LIST_Remove",
            [](Blocks& lists) {
                // The element is gone even when the block could not shrink.
                lists.result = LIST_Push(lists.list, bytes.data(), 1000);
                if (lists.result > 0)
                    lists.result = LIST_Remove(lists.list, LIST_Size(lists.list) - 1, nullptr, 0);
            },
            [](Blocks& lists, const HeapRun& outcome) { lists.Check(outcome, 0); }, Blocks::HasFailed),
        Row<Slots>(
            "WGList_Insert",
            [](Slots& slots) {
                slots.result = 0;
                for (int i = 0; i < 20; ++i)
                    slots.result += slots.list.Insert(5, bytes.data(), 1000) == 5;   // else 2 or 3
            },
            [](Slots& slots, const HeapRun&) {
                slots.Check();
                slots.size += slots.result;
                EXPECT_EQ(slots.list.ListSize(), slots.size) << "as many as the results say";
            },
            [](Slots& slots) { return slots.result < 20; }),
        Row<Slots>(
            "WGList_Replace", [](Slots& slots) { slots.result = slots.list.Replace(2, bytes.data(), 1000); },
            [](Slots& slots, const HeapRun& outcome) {
                slots.Check();
                EXPECT_EQ(slots.result, outcome.hasFailed ? 3 : 2);
                EXPECT_EQ(slots.list.Size(2), outcome.hasFailed ? 4 : 1000);
            },
            [](Slots& slots) { return slots.result == 3; }),
        Row<Slots>(
            "WGList_SetHeader", [](Slots& slots) { slots.list.SetHeader(bytes.data(), 1000); },
            [](Slots& slots, const HeapRun& outcome) {
                slots.Check();
                EXPECT_EQ(slots.list.GetHeaderSize(), outcome.hasFailed ? 4 : 1000);
            },
            [](Slots& slots) { return slots.list.GetHeaderSize() == 4; }),
        Row<Slots>(
            "WGList_copy",
            [](Slots& slots) {
                WGList copy(slots.list);
                slots.result = copy.ListSize();
                slots.size = static_cast<int>(copy.GetHeaderSize());
            },
            [](Slots& slots, const HeapRun& outcome) {
                slots.Check();
                EXPECT_TRUE(outcome.hasFailed || slots.result == slots.list.ListSize());
            },
            // What finds no memory is a free slot, or no header.
            [](Slots& slots) { return slots.result < slots.list.ListSize() || slots.size == 0; }),
    };
}

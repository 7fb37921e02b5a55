// What the list engine refuses, and what it reports.
#include "ListFixture.h"

#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;

TEST_F(ListMan, WhatIsTooLargeIsRefused)
{
    const Owned list = ListOf({"one", "two"});
    const auto layout = Layout(list);
    struct {
        LONG (*call)(HMEM__* list);
        LONG result;
    } const rows[] = {
        {[](HMEM__* l) { return LIST_Push(l, nullptr, INT32_MAX); }, -1},
        {[](HMEM__* l) { return LIST_Push(l, nullptr, 0xFFFFFFFF); }, -1},
        {[](HMEM__* l) { return LIST_InsertTop(l, nullptr, 0xFFFFFFF0); }, -1},
        {[](HMEM__* l) { return LIST_PutIth(l, INT32_MAX, "x", 1); }, -1},
        {[](HMEM__* l) { return LIST_PutIth(l, 0x3FFFFFFF, "x", 1); }, -1},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.call(list.get()), row.result);
        EXPECT_THAT(Reports(), ElementsAre("1002 717"));
        EXPECT_EQ(Layout(list), layout);
    }
    LIST_DeleteIth(list.get(), 0, nullptr, 0);
    EXPECT_EQ(LIST_InsertAtFree(list.get(), nullptr, 0xFFFFFFF0), -1);
    EXPECT_THAT(Reports(), ElementsAre("1002 717"));
    EXPECT_EQ(LIST_CtorExt(0x7FFFFFFC), nullptr);
    EXPECT_EQ(LIST_CtorExt(0xFFFFFFFF), nullptr);
    EXPECT_THAT(Reports(), ElementsAre("1000 1196", "1000 1196"));
}

TEST_F(ListMan, BadArgumentsAreReported)
{
    const Owned list = ListOf({"one", "two"});
    char out[4];
    for (const LONG index : {-1, 2, INT32_MAX}) {
        unsigned size = 9;
        EXPECT_EQ(LIST_Remove(list.get(), index, nullptr, 0), -1);
        EXPECT_EQ(LIST_ReplaceIth(list.get(), index, "x", 1), -1);
        EXPECT_EQ(LIST_DeleteIth(list.get(), index, nullptr, 0), -1);
        EXPECT_EQ(LIST_LGetIth(Locked(list), index, &size), nullptr);
        EXPECT_EQ(LIST_LGetIth(Locked(list), index, nullptr), nullptr);
        EXPECT_EQ(size, 0u);
        EXPECT_THAT(Reports(), ElementsAre("5002 1644", "5002 1699", "5002 1936", "5002 2278", "5002 2278"));
        EXPECT_EQ(LIST_ExistIth(list.get(), index), 0);
        EXPECT_EQ(LIST_GetIth(list.get(), index, out, 4), -1);
        EXPECT_TRUE(Reports().empty());
    }
    EXPECT_EQ(LIST_PutIth(list.get(), -1, "x", 1), -1);
    EXPECT_EQ(LIST_GetIth(list.get(), 0, nullptr, 1), -1);
    EXPECT_THAT(Reports(), ElementsAre("5002 1699", "5002 1429"));
    EXPECT_EQ(LIST_Insert(list.get(), -1, "end", 3), 3);   // an index is compared without sign
    EXPECT_EQ(Elements(list).back(), "end");
    EXPECT_EQ(LIST_PopOldest(ListOf({}).get(), out, 4), -1);
    EXPECT_EQ(LIST_LSize(nullptr), 0);
    EXPECT_TRUE(Reports().empty());
}

TEST_F(ListMan, HandlesWithoutABlockAreReported)
{
    struct {
        long long (*call)(HMEM__* list);
        long long result;
        const char* null;     // for a null handle
        const char* locked;   // for a handle that can't be locked
    } const rows[] = {
        {[](HMEM__* l) -> long long { return LIST_Push(l, "x", 1); }, -1, "1001 1272", "1001 1272"},
        {[](HMEM__* l) -> long long { return LIST_PopOldest(l, nullptr, 0); }, -1, "1001 1320", "1001 1320"},
        {[](HMEM__* l) -> long long { return LIST_InsertTop(l, "x", 1); }, -1, "1001 1372", "1001 1372"},
        {[](HMEM__* l) -> long long { return LIST_Insert(l, 0, "x", 1); }, -1, "1001 1586", "1001 1586"},
        {[](HMEM__* l) -> long long { return LIST_Remove(l, 0, nullptr, 0); }, -1, "1001 1636", "1001 1636"},
        {[](HMEM__* l) -> long long { return LIST_DeleteIth(l, 0, nullptr, 0); }, -1, "1001 1928", "1001 1928"},
        {[](HMEM__* l) -> long long {
             char c;
             return LIST_GetIth(l, 0, &c, 1);
         },
            -1, "5002 1429", "1001 1435"},
        {[](HMEM__* l) -> long long { return LIST_PutIth(l, 0, "x", 1); }, -1, "1001 1489", "1001 1489"},
        {[](HMEM__* l) -> long long { return LIST_ReplaceIth(l, 0, "x", 1); }, -1, "1001 1691", "1001 1691"},
        {[](HMEM__* l) -> long long { return LIST_ExistIth(l, 0); }, 0, "5002 1532", "1001 1538"},
        {[](HMEM__* l) -> long long { return LIST_FindElement(l, 0, "x", 1, 0, 1); }, -1, "1001 1812", "1001 1812"},
        {[](HMEM__* l) -> long long { return LIST_FindCompleteElement(l, 0, "x", 1); }, -1, "1001 1876", "1001 1876"},
        {[](HMEM__* l) -> long long { return LIST_InsertAtFree(l, "x", 1); }, -1, "5002 1982", "1001 1988"},
        {[](HMEM__* l) -> long long { return LIST_Enum(l, nullptr, 0); }, -1, "1001 2103", "1001 2103"},
        {[](HMEM__* l) -> long long { return LIST_Size(l); }, -1, "1001 1742", "1001 1742"},
        {[](HMEM__* l) -> long long { return LIST_InsertSubList(l, 0, "x", 1); }, -1, "1001 1742", "1001 1742"},
        {[](HMEM__* l) -> long long { return LIST_SizeSubList(l, 0, 0, 1); }, -1, "1001 2497", "1001 2497"},
        {[](HMEM__* l) -> long long { return LIST_DupCtor(l) != nullptr; }, 0, "1001 2045", "1001 2045"},
    };
    HMEM__ noBlock = {nullptr, 0};
    for (const auto& row : rows) {
        EXPECT_EQ(row.call(nullptr), row.result) << row.null;
        EXPECT_THAT(Reports(), ElementsAre(row.null));
        EXPECT_EQ(row.call(&noBlock), row.result) << row.locked;
        EXPECT_THAT(Reports(), ElementsAre(row.locked));
    }
    LIST_Dtor(nullptr);
    EXPECT_TRUE(Reports().empty());
}

}   // namespace

// Lists in one block of handle memory: worked sequences.
#include "ListFixture.h"

#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;

TEST_F(ListMan, BlocksGrowByExactlyWhatIsAddedAndKeepOneSpareEntry)
{
    const std::string ten(10, 'x');
    const Owned list = ListOf({});
    EXPECT_THAT(Layout(list), ElementsAre(16, 16));
    LIST_Push(list.get(), ten.data(), 10);
    EXPECT_THAT(Layout(list), ElementsAre(30, 20, 30));
    LIST_Push(list.get(), ten.data(), 10);
    EXPECT_THAT(Layout(list), ElementsAre(44, 24, 34, 44));
    LIST_Push(list.get(), ten.data(), 3);
    EXPECT_THAT(Layout(list), ElementsAre(51, 28, 38, 48, 51));

    LIST_Remove(list.get(), 1, nullptr, 0);   // leaves its entry as the spare one
    EXPECT_THAT(Layout(list), ElementsAre(41, 28, 38, 41));
    LIST_PopOldest(list.get(), nullptr, 0);   // a second spare entry goes
    EXPECT_THAT(Layout(list), ElementsAre(27, 24, 27));
    LIST_InsertTop(list.get(), ten.data(), 10);   // takes the spare one
    EXPECT_THAT(Layout(list), ElementsAre(37, 24, 34, 37));
    EXPECT_EQ(MEMMANGetSize(list.get()), 37);
}

TEST_F(ListMan, SlotsOutliveTheirElements)
{
    const Owned list = ListOf({"one", "two", "three"});
    char out[8] = "-------";
    EXPECT_EQ(LIST_DeleteIth(list.get(), 1, out, 2), 3);
    EXPECT_STREQ(out, "tw-----");
    EXPECT_EQ(LIST_DeleteIth(list.get(), 1, out, 8), 3);
    EXPECT_EQ(LIST_GetIth(list.get(), 1, out, 8), -1);
    EXPECT_EQ(LIST_Remove(list.get(), 1, out, 8), 2);
    EXPECT_STREQ(out, "tw-----");
    EXPECT_THAT(Elements(list), ElementsAre("one", "three"));

    EXPECT_EQ(LIST_InsertSubList(list.get(), 1, nullptr, 0), 0);
    EXPECT_EQ(LIST_InsertSubList(list.get(), 9, "end", 3), 0);
    EXPECT_THAT(Elements(list), ElementsAre("one", "", "three", "end"));
    EXPECT_EQ(LIST_InsertAtFree(list.get(), "new", 3), 1);
    EXPECT_EQ(LIST_InsertAtFree(list.get(), "last", 4), 4);
    EXPECT_THAT(Elements(list), ElementsAre("one", "new", "three", "end", "last"));

    const Owned sparse = ListOf({});
    EXPECT_EQ(LIST_PutIth(sparse.get(), 5, "x", 1), 0);
    EXPECT_THAT(Elements(sparse), ElementsAre("", "", "", "", "", "x"));
    EXPECT_EQ(LIST_ExistIth(sparse.get(), 4), 0);
    EXPECT_EQ(LIST_ExistIth(sparse.get(), 5), 1);
    EXPECT_TRUE(Reports().empty());
}

TEST_F(ListMan, NoBytesAreRefusedButByInsertAtFree)
{
    const Owned list = ListOf({"one", "two"});
    EXPECT_EQ(LIST_Push(list.get(), "x", 0), -1);
    EXPECT_EQ(LIST_InsertTop(list.get(), "x", 0), -1);
    EXPECT_EQ(LIST_Insert(list.get(), 1, "x", 0), -1);
    EXPECT_EQ(LIST_PutIth(list.get(), 1, "x", 0), -1);
    EXPECT_EQ(LIST_GetIth(list.get(), 7, nullptr, 0), 0);
    EXPECT_EQ(LIST_InsertAtFree(list.get(), "x", 0), 0);
    EXPECT_THAT(Elements(list), ElementsAre("one", "two"));
    EXPECT_EQ(LIST_ReplaceIth(list.get(), 0, "x", 0), -1);
    EXPECT_THAT(Elements(list), ElementsAre("two"));
    EXPECT_TRUE(Reports().empty());
}

TEST_F(ListMan, NullDataMakesRoom)
{
    const Owned list = ListOf({"abc"});
    EXPECT_EQ(LIST_Push(list.get(), nullptr, 4), 2);
    EXPECT_EQ(LIST_InsertTop(list.get(), nullptr, 2), 3);
    EXPECT_EQ(LIST_ReplaceIth(list.get(), 1, nullptr, 3), 3);
    EXPECT_EQ(Elements(list)[1], "abc");
    EXPECT_THAT(Layout(list), ElementsAre(37, 28, 30, 33, 37));
}

TEST_F(ListMan, FindsByRecordImageOrWholeElement)
{
    const Owned list = ListOf({"k1-aaa", "k2-bbb", "k2-bb", "bbb"});
    LIST_DeleteIth(list.get(), 0, nullptr, 0);
    struct {
        LONG start;
        const char* key;
        ULONG keySize, offset, length;
        LONG found;
    } const rows[] = {
        {0, "..-bb", 5, 2, 3, 1},
        {2, "..-bb", 5, 2, 3, 2},
        {3, "..-bb", 5, 2, 3, -1},
        {0, "..-bb", 4, 2, 3, -1},   // the key is shorter than the record
        {0, "k1", 2, 0, 2, -1},
        {0, "k", 1, 0, 0, 1},   // nothing to compare, but no free slot
        {4, "b", 1, 0, 1, -1},
        {-1, "b", 1, 0, 1, -1},
        {0, "b", 1, 0xFFFFFFFF, 2, -1},   // the sum is beyond 32 bits
        {0, nullptr, 1, 0, 1, -1},
    };
    for (const auto& row : rows)
        EXPECT_EQ(LIST_FindElement(list.get(), row.start, row.key, row.keySize, row.offset, row.length), row.found)
            << row.start << ' ' << row.keySize << ' ' << row.offset;
    EXPECT_EQ(LIST_FindCompleteElement(list.get(), 0, "bbb", 3), 3);
    EXPECT_EQ(LIST_FindCompleteElement(list.get(), 0, "k2-", 3), -1);
    EXPECT_EQ(LIST_FindCompleteElement(list.get(), 0, "k2-", 0), -1);
    EXPECT_EQ(LIST_FindCompleteElement(list.get(), 0, nullptr, 3), -1);
}

TEST_F(ListMan, SubListsDivideWithoutSign)
{
    const Owned list = ListOf({std::string(14, 'x'), "ab"});
    EXPECT_EQ(LIST_SizeSubList(list.get(), 0, 4, 5), 2);
    EXPECT_EQ(LIST_SizeSubList(list.get(), 0, 4, 1), 10);
    EXPECT_EQ(LIST_SizeSubList(list.get(), 1, 3, 2), 0x7FFFFFFF);
    EXPECT_EQ(LIST_SizeSubList(list.get(), 0, 4, 0), -1);
    EXPECT_EQ(LIST_SizeSubList(list.get(), 0, 4, -1), -1);
    EXPECT_EQ(LIST_SizeSubList(list.get(), 2, 4, 5), -1);
    EXPECT_EQ(LIST_InsertSubList(list.get(), -1, "x", 1), -1);
    EXPECT_EQ(LIST_InsertSubList(list.get(), 0, "x", -1), -1);
}

TEST_F(ListMan, TheCallersHeaderStaysWithTheList)
{
    const Owned list(LIST_CtorExt(20));
    EXPECT_THAT(Layout(list), ElementsAre(24, 24));
    auto* const own = reinterpret_cast<char*>(Locked(list)) + 12;
    EXPECT_EQ(std::string(own, 8), std::string(8, '\0'));
    std::memcpy(own, "my bytes", 8);
    for (const char* element : {"one", "two", "three"})
        LIST_Insert(list.get(), 1, element, 3);
    LIST_PopOldest(list.get(), nullptr, 0);
    const Owned copy(LIST_DupCtor(list.get()));
    LIST_PopOldest(list.get(), nullptr, 0);
    EXPECT_EQ(std::memcmp(reinterpret_cast<char*>(Locked(copy)) + 12, "my bytes", 8), 0);
    EXPECT_THAT(Elements(copy), ElementsAre("thr", "two"));
    EXPECT_EQ(LIST_LLength(Locked(copy)), 20u + 4 * 4 + 6);

    Locked(copy)->totalSize -= 1;
    LIST_FixOffsetTable(copy.get());
    EXPECT_THAT(Elements(copy), ElementsAre("thr", "tw"));
    LIST_FixOffsetTable(nullptr);
}

// Too small a header is the caller's mistake, but not one that may write beyond the block.
TEST_F(ListMan, TooSmallAHeaderStillHasABlock)
{
    for (const ULONG size : {0, 4, 8, 11}) {
        const Owned list(LIST_CtorExt(size));
        EXPECT_EQ(MEMMANGetSize(list.get()), static_cast<int>(size + 4));
        EXPECT_EQ(LIST_LLength(Locked(list)), size + 4);
        const Owned copy(LIST_DupCtor(list.get()));
        EXPECT_EQ(LIST_LLength(Locked(copy)), size + 4);
    }
}

struct Walk {
    HMEM__* list;
    LONG (*act)(HMEM__* list, LONG index);
    std::vector<LONG> seen;
};

LONG Visit(void*, ULONG, LONG index, long long context)
{
    auto& walk = *reinterpret_cast<Walk*>(context);
    walk.seen.push_back(index);
    return walk.act(walk.list, index);
}

TEST_F(ListMan, WalksFollowWhatTheCallbackDoes)
{
    struct {
        LONG (*act)(HMEM__* list, LONG index);
        std::vector<LONG> seen;
        LONG result;
        std::vector<std::string> reports;
    } const rows[] = {
        {[](HMEM__*, LONG) { return LONG{1}; }, {0, 2, 3}, 4, {}},
        {[](HMEM__*, LONG index) { return LONG{index != 2}; }, {0, 2}, 2, {}},
        {[](HMEM__* list, LONG index) { return index < 5 ? LIST_Push(list, "more", 4) : 1; }, {0, 2, 3, 4, 5, 6, 7}, 8,
            {}},
        {[](HMEM__* list, LONG index) { return index ? 1 : LIST_Remove(list, 1, nullptr, 0); }, {0, 1, 2}, 3, {}},
        // The element that would come next is gone: reported, and passed over.
        {[](HMEM__* list, LONG) {
             while (LIST_Size(list) > 1)
                 LIST_Remove(list, 1, nullptr, 0);
             return LONG{1};
         },
            {0}, 2, {"5002 2278"}},
        {[](HMEM__* list, LONG index) { return index == 3 ? LIST_Remove(list, 3, nullptr, 0) : 1; }, {0, 2, 3}, 4, {}},
    };
    for (const auto& row : rows) {
        const Owned list = ListOf({"one", "two", "three", "four"});
        LIST_DeleteIth(list.get(), 1, nullptr, 0);
        Walk walk{list.get(), row.act, {}};
        EXPECT_EQ(LIST_Enum(list.get(), Visit, reinterpret_cast<long long>(&walk)), row.result);
        EXPECT_EQ(walk.seen, row.seen);
        EXPECT_EQ(Reports(), row.reports);
    }
    const Owned empty = ListOf({});
    EXPECT_EQ(LIST_Enum(empty.get(), Visit, 0), 0);
}

}   // namespace

// WGList and its flat face: worked sequences and refusals.
#include "LoadedModules.h"
#include "SlotOperations.h"

#include <cstdint>
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <new>
#include <optional>
#include <string>
#include <vector>

namespace {

using ListTrials::OpenList;
using testing::ElementsAre;

constexpr LONG kFree = 0;

struct Filled : OpenList {
    explicit Filled(const std::vector<std::string>& texts)
    {
        for (const std::string& text : texts)
            InsertEnd(text.data(), static_cast<LONG>(text.size()));
    }
};

/// The elements in order; "-" for a free slot.
std::vector<std::string> Contents(const OpenList& list)
{
    std::vector<std::string> contents;
    for (int i = 0; i < list.Slots(); ++i) {
        LONG size = -1;
        const auto* const bytes = static_cast<const char*>(list.Get(i, size));
        contents.push_back(bytes ? std::string(bytes, static_cast<std::size_t>(size)) : "-");
    }
    return contents;
}

TEST(WGList, CapacityGoesInStepsOfEight)
{
    OpenList list;
    EXPECT_EQ(list.Capacity(), 16);
    for (int i = 0; i < 16; ++i)
        list.InsertEnd("x", 1);
    EXPECT_EQ(list.Capacity(), 16);
    list.InsertEnd("x", 1);
    EXPECT_EQ(list.Capacity(), 24);
    for (int i = 17; i < 25; ++i)
        list.InsertEnd("x", 1);
    EXPECT_EQ(list.Capacity(), 32);
    while (list.Slots() > 24)
        list.Remove(0);
    EXPECT_EQ(list.Capacity(), 32);
    list.Remove(0);
    EXPECT_EQ(list.Capacity(), 31);
    for (int i = 0; i < 22; ++i)
        list.Delete(i);
    list.Compact();
    EXPECT_EQ(list.Slots(), 1);
    EXPECT_EQ(list.Capacity(), 9);
    list.DeleteAll();
    EXPECT_EQ(list.Capacity(), 8);
}

TEST(WGList, ASlotRemembersWhatItHeld)
{
    Filled list({"one", "two", "three"});
    const void* const second = list.Get(1);
    EXPECT_EQ(list.Delete(1), 0);
    EXPECT_EQ(list.Delete(1), -1);
    EXPECT_EQ(list.ListSize(), 2);
    EXPECT_EQ(list.Exist(1), 0);
    EXPECT_EQ(list.Size(1), 3);
    EXPECT_EQ(list.Get(1), nullptr);
    EXPECT_EQ(list.Elements()[1].data, second);
    LONG size = 9;
    EXPECT_EQ(list.Get(1, size), nullptr);
    EXPECT_EQ(size, kFree);
    size = 9;
    EXPECT_EQ(list.Get(3, size), nullptr);
    EXPECT_EQ(size, 9);
}

TEST(WGList, InsertTakesAFreeSlotOrMakesRoom)
{
    Filled list({"a", "b", "c"});
    list.Delete(1);
    EXPECT_EQ(list.Insert(1, "new", 3), 1);
    EXPECT_THAT(Contents(list), ElementsAre("a", "new", "c"));
    EXPECT_EQ(list.Insert(1, "more", 4), 1);
    EXPECT_THAT(Contents(list), ElementsAre("a", "more", "new", "c"));
    EXPECT_EQ(list.Insert(100, "end", 3), 4);
    EXPECT_EQ(list.Insert(-1, "x", 1), -1);
    EXPECT_EQ(list.InsertStart("top", 3), 0);
    EXPECT_EQ(list.Replace(100, "last", 4), 5);
    list.Delete(2);
    list.Delete(3);
    EXPECT_EQ(list.Insert("found", 5), 2);
    EXPECT_EQ(list.Insert("found", 5), 3);
    EXPECT_EQ(list.Insert("found", 5), 6);
    EXPECT_THAT(Contents(list), ElementsAre("top", "a", "found", "found", "c", "last", "found"));
}

TEST(WGList, ElementsStayWhereTheyAre)
{
    Filled list({"one"});
    const void* const first = list.Get(0);
    for (int i = 0; i < 100; ++i)
        list.InsertStart("x", 1);
    EXPECT_EQ(list.Get(100), first);
    EXPECT_EQ(list.Replace(3, first, 3), 3);
    EXPECT_NE(list.Get(3), first);
}

TEST(WGList, OnlyTheLastSlotLeavesWithItsElement)
{
    Filled earlierFirst({"a", "b", "c"});
    earlierFirst.Delete(1);
    earlierFirst.Delete(2);
    EXPECT_THAT(Contents(earlierFirst), ElementsAre("a", "-"));
    EXPECT_EQ(earlierFirst.RemoveEnd(), 1);
    EXPECT_THAT(Contents(earlierFirst), ElementsAre("a", "-")) << "a free last slot survives";
    EXPECT_EQ(earlierFirst.RemoveStart(), 1);
    EXPECT_THAT(Contents(earlierFirst), ElementsAre("-"));
    earlierFirst.Compact();
    EXPECT_EQ(earlierFirst.Slots(), 0);

    Filled laterFirst({"a", "b", "c"});
    EXPECT_EQ(laterFirst.DeleteEnd(), 0);
    EXPECT_EQ(laterFirst.DeleteEnd(), 0);
    EXPECT_EQ(laterFirst.Slots(), 1);
    EXPECT_EQ(laterFirst.DeleteStart(), 0);
    EXPECT_EQ(laterFirst.Slots(), 0);
    EXPECT_EQ(laterFirst.DeleteStart(), -1);
    EXPECT_EQ(laterFirst.DeleteEnd(), -1);
    EXPECT_EQ(laterFirst.Delete(-1), -1);
    EXPECT_EQ(laterFirst.Remove(-1), 0);
    EXPECT_EQ(laterFirst.RemoveEnd(), 0);
}

TEST(WGList, ReadsNoMoreThanThereIs)
{
    const Filled list({"first", "last"});
    char out[8] = "-------";
    EXPECT_EQ(list.RetrieveStart(out, 3), 3);
    EXPECT_STREQ(out, "fir----");
    EXPECT_EQ(list.RetrieveEnd(out, 7), 4);
    EXPECT_STREQ(out, "last---");
    EXPECT_EQ(list.Retrieve(0, nullptr, 3), 0);
    EXPECT_EQ(list.Retrieve(0, out, -3), 0);
    EXPECT_EQ(list.Retrieve(2, out, 3), 0);
    EXPECT_EQ(list.Size(2), -1);
    EXPECT_EQ(list.Exist(-1), 0);
    LONG size = 0;
    EXPECT_EQ(list.GetEnd(size), list.GetEnd());
    EXPECT_EQ(size, 4);
    EXPECT_EQ(list.GetStart(size), list.Get(0));
    EXPECT_EQ(size, 5);

    OpenList empty;
    EXPECT_EQ(empty.RetrieveStart(out, 7), 0);
    EXPECT_EQ(empty.RetrieveEnd(out, 7), 0);
    EXPECT_EQ(empty.GetStart(), nullptr);
    EXPECT_EQ(empty.GetEnd(size), nullptr);
    EXPECT_EQ(empty.ReplaceStart("x", 1), -1);
    EXPECT_EQ(empty.ReplaceEnd("x", 1), -1);
    EXPECT_EQ(empty.Insert(0, "x", -1), 3);
    EXPECT_EQ(empty.Slots(), 0);
}

TEST(WGList, FindsElementsThatBeginWithTheKey)
{
    const Filled list({"ab", "abcde", "xxcde"});
    EXPECT_EQ(list.FindCompleteElement(0, "abc", 3), 1);
    EXPECT_EQ(list.FindCompleteElement(2, "abc", 3), -1);
    EXPECT_EQ(list.FindElement(2, "..cd", 2, 2), 2);
    EXPECT_EQ(list.FindElement(3, "ab", 0, 2), -1);
    EXPECT_EQ(list.FindElement(-1, "ab", 0, 2), -1);
    EXPECT_EQ(list.FindElement(0, "ab", INT32_MAX, INT32_MAX), -1);
    EXPECT_EQ(list.FindElement(0, "ab", -1, 2), -1);
    EXPECT_EQ(list.FindElement(0, nullptr, 0, 1), -1);
}

TEST(WGList, WalksOverElementsAlone)
{
    Filled list({"a", "b", "c", "d"});
    list.Delete(1);
    std::string seen;
    const auto note = [](void* element, ULONG size, LONG index, long long context) -> LONG {
        *reinterpret_cast<std::string*>(context) +=
            std::to_string(index) + std::string(static_cast<char*>(element), size);
        return index != 2;
    };
    EXPECT_EQ(list.Enumerate(note, reinterpret_cast<long long>(&seen)), 2);
    EXPECT_EQ(seen, "0a2c");

    const auto shorten = [](void*, ULONG, LONG, long long context) -> LONG {
        return reinterpret_cast<WGList*>(context)->RemoveEnd();
    };
    EXPECT_EQ(list.Enumerate(shorten, reinterpret_cast<long long>(&list)), 3);
    EXPECT_THAT(Contents(list), ElementsAre("a", "-"));
    EXPECT_EQ(OpenList().Enumerate(note, 0), 0);
}

TEST(WGList, TheHeaderStandsApart)
{
    Filled list({"a"});
    list.SetHeader(nullptr, 8);
    EXPECT_EQ(std::string(static_cast<char*>(list.GetHeader()), 8), std::string(8, '\0'));
    list.SetHeader("12345678", 8);
    list.SetHeader("x", -1);
    list.DeleteAll();
    EXPECT_EQ(std::string(static_cast<char*>(list.GetHeader()), 8), "12345678");
    list.SetHeader(nullptr, 8);
    EXPECT_EQ(*static_cast<char*>(list.GetHeader()), '\0');
    list.SetHeader("x", 0);
    EXPECT_EQ(list.GetHeader(), nullptr);
    EXPECT_EQ(list.GetHeaderSize(), 0);
}

TEST(WGList, CopiesOwnTheirBlocks)
{
    std::optional<Filled> source(std::vector<std::string>{"a", "bb", "ccc"});
    source->SetHeader("head", 4);
    source->Delete(1);
    OpenList copy(*source);
    source.reset();
    EXPECT_THAT(Contents(copy), ElementsAre("a", "-", "ccc"));
    EXPECT_EQ(copy.Elements()[1].data, nullptr);
    EXPECT_EQ(copy.Size(1), 0);
    EXPECT_EQ(std::string(static_cast<char*>(copy.GetHeader()), 4), "head");

    LISTELEMENT element = {};
    copy.CopyElement(&element, nullptr, 3);
    EXPECT_EQ(element.data, nullptr);

    // Assignment shares: the space of the second list is never destroyed.
    alignas(OpenList) std::byte space[sizeof(OpenList)];
    auto* const shared = new (space) OpenList;
    std::free(const_cast<LISTELEMENT*>(shared->Elements()));
    *shared = copy;
    EXPECT_EQ(shared->Get(2), copy.Get(2));
    EXPECT_EQ(shared->GetHeaderSize(), 4);
}

TEST(WGList, HasAFlatFace)
{
    HGLIST__* const list = LISTCtor();
    EXPECT_EQ(LISTPush(list, "abcde", 5), 0);
    EXPECT_EQ(LISTPush(list, "x", 1), 1);
    EXPECT_EQ(LISTPutIth(list, 9, "yy", 2), 1);
    EXPECT_EQ(LISTReplaceIth(list, 1, "zzz", 3), 1);
    char out[4] = "---";
    EXPECT_EQ(LISTGetIth(list, 1, out, 2), 2);
    EXPECT_STREQ(out, "zz-");
    EXPECT_EQ(LISTSizeIth(list, 1), 3);
    EXPECT_EQ(LISTFindCompleteElement(list, 0, "abc", 3), 0);
    reinterpret_cast<WGList*>(list)->Delete(0);
    EXPECT_EQ(LISTSize(list), 1);
    LISTDtor(list);
    LISTDtor(nullptr);
}

TEST(WGList, FlatNamesAreTheMembers)
{
    const std::string letter = sizeof(long) == sizeof(LONG) ? "l" : "i";   // how linkers spell LONG
    struct {
        const char* flat;
        std::string member;
    } const rows[] = {
        {"LISTPush", "_ZN6WGList9InsertEndEPKv" + letter},
        {"LISTPutIth", "_ZN6WGList7ReplaceEiPKv" + letter},
        {"LISTReplaceIth", "_ZN6WGList7ReplaceEiPKv" + letter},
        {"LISTGetIth", "_ZNK6WGList8RetrieveEiPv" + letter},
        {"LISTSizeIth", "_ZNK6WGList4SizeEi"},
        {"LISTSize", "_ZNK6WGList8ListSizeEv"},
        {"LISTFindCompleteElement", "_ZNK6WGList19FindCompleteElementEiPKv" + letter},
    };
    for (const auto& [flat, member] : rows) {
        EXPECT_NE(ExportOf(LIBRARY_FILE, flat), nullptr) << flat;
        EXPECT_EQ(ExportOf(LIBRARY_FILE, flat), ExportOf(LIBRARY_FILE, member)) << flat;
    }
}

}   // namespace

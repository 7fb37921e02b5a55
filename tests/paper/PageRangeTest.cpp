// Page numbers of texts.
#include "PaperTypes.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <gtest/gtest.h>
#include <numeric>
#include <random>
#include <vector>

namespace {

using Pages = std::vector<unsigned>;

Pages Range(const std::wstring& text, unsigned first = 1, unsigned count = 10)
{
    Pages pages;
    TvlUtl::MakePageRangeFromString(first, count, text, pages);
    return pages;
}

TEST(PageRange, ReadsNumbersAndRanges)
{
    struct Row {
        const wchar_t* text;
        Pages pages;
    };
    const Row kRows[] = {
        {L"", {1}},
        {L"3", {3}},
        {L"3-", {3, 4, 5, 6, 7, 8, 9, 10}},
        {L"-3", {1, 2, 3}},
        {L"5-3", {5, 4, 3}},
        {L"1~", {1, 3, 5, 7, 9}},
        {L"2~", {2, 4, 6, 8, 10}},
        {L"1~6", {1, 3, 5}},
        {L"6~1", {6, 4, 2}},
        {L"1a2", {1, 2}},
        {L"1 and 2", {1, 2}},
        {L"99", {1}},
        {L" 1 - 3 ; 8 ", {1, 2, 3, 8}},
        {L"1-3-5", {1, 2, 3, 5}},
        {L"2,2,1", {2, 2, 1}},
        {L"3-0", {3, 2, 1}},
        {L"12345678901", {1}},   // 1234567890 and 1
        {L"99999999995", {5}},   // ten digits make a number, the rest another
        {L"-", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}},
        {L"~", {1, 3, 5, 7, 9}},
        {L",,,", {1}},
    };
    for (const auto& [text, pages] : kRows)
        EXPECT_EQ(Range(text), pages) << TvlPlatform::ToUtf8(text);
}

TEST(PageRange, OnlyAppends)
{
    Pages pages{7};
    TvlUtl::MakePageRangeFromString(1, 10, L"", pages);
    EXPECT_EQ(pages, Pages{7});
    TvlUtl::MakePageRangeFromString(1, 10, L"2", pages);
    EXPECT_EQ(pages, (Pages{7, 2}));
}

TEST(PageRange, StepsOverWhatIsNoPage)
{
    EXPECT_EQ(Range(L"1-9999999999"), Range(L"1-10"));
    EXPECT_EQ(Range(L"9999999999-1"), Range(L"10-1"));
    EXPECT_EQ(Range(L"1~2147483647"), Range(L"1~9"));
    EXPECT_EQ(Range(L"1-", 1, 0), Pages{1});
    EXPECT_EQ(Range(L"1~", 1, 0), Pages{1});
    EXPECT_EQ(Range(L"0-", 0xFFFFFFF0, 15), Pages{1}) << "the end of an open range is the count";
    EXPECT_EQ(Range(L"0-", 0xFFFFFFF0, 32), Pages{1}) << "the numbers run over";
    EXPECT_EQ(Range(L"2147483647-2147483640", 2147483645, 10), (Pages{2147483647, 2147483646, 2147483645}));
    EXPECT_EQ(Range(std::wstring(100000, L'1')).size(), 1u);
    EXPECT_EQ(Range(std::wstring(100000, L'-')).size(), Range(L"-").size() * 50000);
}

/// The walk as it is meant, page by page.
Pages Walk(unsigned start, unsigned end, unsigned step, unsigned first, unsigned count)
{
    Pages pages;
    const auto add = [&](long long page) {
        if (page >= first && page < first + count)
            pages.push_back(static_cast<unsigned>(page));
    };
    if (start > end)
        for (long long page = start; page >= end; page -= step)
            add(page);
    else
        for (long long page = start; page <= end; page += step)
            add(page);
    return pages.empty() ? Pages{1} : pages;
}

TEST(PageRange, AgreesWithAWalkPageByPage)
{
    std::mt19937 random(5);
    for (int i = 0; i < 20000; ++i) {
        const unsigned first = random() % 8;
        const unsigned count = random() % 12;
        const unsigned start = random() % 20;
        const unsigned end = random() % 20;
        const bool skips = random() % 2 == 0;
        const std::wstring text = std::to_wstring(start) + (skips ? L'~' : L'-') + std::to_wstring(end);
        ASSERT_EQ(Range(text, first, count), Walk(start, end, skips ? 2 : 1, first, count))
            << TvlPlatform::ToUtf8(text) << " from " << first << ", " << count;
    }
}

}   // namespace

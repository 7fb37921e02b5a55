// Windows' printf forms on both targets.
#include "siblings/TvlPlatform/TvlString.h"

#include <gtest/gtest.h>

namespace {

template <class... Args>
TvlString Formatted(const wchar_t* form, const Args&... args)
{
    return TvlString().Format(form, args...);
}

TEST(Format, GivesWindowsMeaningToSizesAndTexts)
{
    EXPECT_EQ(Formatted(L"%s|%S|%ls|%hs", L"wide", "narrow", L"w", "n"), L"wide|narrow|w|n");
    EXPECT_EQ(Formatted(L"%hu %hd", 65537, 65535), L"1 -1");
    EXPECT_EQ(Formatted(L"%lu %I64u", -1, 18446744073709551615ull), L"4294967295 18446744073709551615");
    EXPECT_EQ(Formatted(L"%d %x %08X %o", -5, 255u, 48879, 8), L"-5 ff 0000BEEF 10");
    EXPECT_EQ(Formatted(L"%.3f|%8.2f|%-8.1f|%g", 1.0005, 3.14159, 2.0, 1e-7), L"1.000|    3.14|2.0     |1e-07");
    EXPECT_EQ(Formatted(L"%%0.%df", 3), L"%0.3f");
    EXPECT_EQ(Formatted(L"%5s|%-5s|%.2s|%c", L"ab", L"ab", L"abc", L'x'), L"   ab|ab   |ab|x");
    EXPECT_EQ(Formatted(L"%*d|%.*f", 4, 7, 1, 0.25), L"   7|0.2");
}

TEST(Format, NeverReadsWhatIsNotThere)
{
    EXPECT_EQ(Formatted(L"[%s]"), L"[]");
    EXPECT_EQ(Formatted(L"[%s]", 5), L"[]");
    EXPECT_EQ(Formatted(L"[%d]", L"text"), L"[]");
    EXPECT_EQ(Formatted(L"%n%"), L"");
    EXPECT_EQ(Formatted(L"%99999999999d", 1).GetLength(), 1000);
    EXPECT_EQ(Formatted(L"%.0f", 1.7976931348623157e308).GetLength(), 309);
}

TEST(FoldCase, FoldsWithoutALocale)
{
    EXPECT_EQ(TvlString(L"ÄÖÜ Ωσς ЖЯ İ").CompareNoCase(L"äöü ωσσ жя İ"), 0);
    EXPECT_LT(TvlString(L"a").CompareNoCase(L"B"), 0);
    EXPECT_GT(TvlString(L"a").Compare(L"B"), 0);
    EXPECT_NE(TvlString(L"I").CompareNoCase(L"ı"), 0);
}

}   // namespace

// Byte sizes and bounded strings.
#include "BoundedStrings.h"
#include "DataSize.h"

#include <cstdarg>
#include <gtest/gtest.h>
#include <string>

namespace {

TEST(DataSize, PicksTheClassAndTheDigits)
{
    struct Row {
        unsigned long long bytes;
        const wchar_t* text;
    };
    constexpr Row kRows[] = {
        {0, L"0 bytes"},
        {1023, L"1023 bytes"},
        {1024, L"1.00 KB"},
        {1536, L"1.50 KB"},
        {10240, L"10.00 KB"},
        {10250, L"10.0 KB"},
        {102400, L"100.0 KB"},
        {103000, L"100 KB"},
        {1048576, L"1.00 MB"},
        {1099511627775, L"1023 GB"},
        {1099511627776, L"1.00 TB"},
        {18446744073709551615ull, L"16777216 TB"},
    };
    for (const auto& [bytes, text] : kRows)
        EXPECT_EQ(TvlUtl::FormatDataSize(bytes), text) << bytes;
    EXPECT_EQ(TvlUtl::FormatSizeType(TvlUtl::eSizeKilobytes, 100.5, false), L"100");
    EXPECT_EQ(TvlUtl::FormatSizeType(TvlUtl::eSizeBytes, -0.5, false), L"0");
    EXPECT_EQ(TvlUtl::GetSizeTypeString(static_cast<TvlUtl::ESizeType>(9)), L"bytes");
    EXPECT_EQ(TvlUtl::GetSizeTypeString(static_cast<TvlUtl::ESizeType>(-1)), L"bytes");
}

TEST(BoundedStrings, CutAndEndWithinTheBuffer)
{
    char buffer[8] = "#######";
    EXPECT_EQ(TvlUtl::StringCopy(buffer, 0, "abc"), buffer);
    EXPECT_STREQ(buffer, "#######");
    EXPECT_STREQ(TvlUtl::StringCopy(buffer, 1, "abc"), "");
    EXPECT_STREQ(TvlUtl::StringCopy(buffer, 3, "abc"), "ab");
    EXPECT_EQ(buffer[3], '#');
    EXPECT_STREQ(TvlUtl::StringCopyN(buffer, 8, "abcdef", 2), "ab");
    EXPECT_STREQ(TvlUtl::StringCopyN(buffer, 8, "abcdef", 2147483647), "");
    EXPECT_STREQ(TvlUtl::StringCopy(buffer, 8, "ab"), "ab");
    EXPECT_STREQ(TvlUtl::StringCopy(buffer, 2147483648u, "xyz"), "");
    EXPECT_STREQ(TvlUtl::StringAppend(TvlUtl::StringCopy(buffer, 8, "abc"), 6, "defgh"), "abcde");
    EXPECT_STREQ(TvlUtl::StringAppend(buffer, 5, "x"), "abcde");   // no end mark within 5
    EXPECT_STREQ(TvlUtl::StringAppend(buffer, 0, "x"), "abcde");
}

TEST(BoundedStrings, CutAndEndWideTextsWithinTheBufferToo)
{
    wchar_t buffer[8] = L"#######";
    EXPECT_EQ(TvlUtl::StringCopy(buffer, 0, L"abc"), buffer);
    EXPECT_STREQ(buffer, L"#######");
    EXPECT_STREQ(TvlUtl::StringCopy(buffer, 3, L"abc"), L"ab");
    EXPECT_EQ(buffer[3], L'#') << "a size counts characters and not bytes";
    EXPECT_STREQ(TvlUtl::StringCopyN(buffer, 8, L"abcdef", 2), L"ab");
    EXPECT_STREQ(TvlUtl::StringCopyN(buffer, 8, L"abcdef", 2147483647), L"");
    EXPECT_STREQ(TvlUtl::StringAppend(TvlUtl::StringCopy(buffer, 8, L"abc"), 6, L"defgh"), L"abcde");
    EXPECT_STREQ(TvlUtl::StringAppend(buffer, 5, L"x"), L"abcde");   // no end mark within 5
}

template <class Character>
long long Print(Character* dest, std::size_t size, const Character* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const long long length = TvlUtl::StringVPrintf(dest, size, format, arguments);
    va_end(arguments);
    return length;
}

TEST(BoundedStrings, PrintArgumentsThatACallerHasTaken)
{
    wchar_t wide[8];
    EXPECT_EQ(Print(wide, 8, L"%s-%d", L"a", 12), 4);
    EXPECT_STREQ(wide, L"a-12");
    EXPECT_EQ(Print(wide, 4, L"%s-%d", L"ab", 12), -1);
    EXPECT_STREQ(wide, L"ab-");
    char narrow[8];
    EXPECT_EQ(Print(narrow, 8, "%s-%d", "a", 12), 4);
    EXPECT_STREQ(narrow, "a-12");
}

TEST(BoundedStrings, PrintOrTellWhatDidNotFit)
{
    wchar_t buffer[8] = L"#######";
    EXPECT_EQ(TvlUtl::StringPrintf(buffer, 8, L"%s-%S-%d", L"a", "b", 12), 6);
    EXPECT_STREQ(buffer, L"a-b-12");
    EXPECT_EQ(TvlUtl::StringPrintf(buffer, 4, L"%I64d", 123456789012ll), -1);
    EXPECT_STREQ(buffer, L"123");
    EXPECT_EQ(TvlUtl::StringPrintf(buffer, 4, L"%.1f", 1.25), 3);
    EXPECT_EQ(TvlUtl::StringPrintf(buffer, 0, L"x"), -1);
    EXPECT_STREQ(buffer, L"1.2");
    EXPECT_EQ(TvlUtl::StringPrintf(buffer, 2147483648u, L"x"), -1);
    EXPECT_STREQ(buffer, L"");
    char narrow[8];
    EXPECT_EQ(TvlUtl::StringPrintf(narrow, 8, "%s|%S|%c", "a", L"b", 'c'), 5);
    EXPECT_STREQ(narrow, "a|b|c");
}

}   // namespace

// Wide text and the bytes that leave the process.
#include "siblings/TvlPlatform/TextEncoding.h"

#include <gtest/gtest.h>

namespace {

TEST(TextEncoding, RoundTripsBeyondTheBasicPlane)
{
    const std::wstring text = L"aé€\U0001F600";
    EXPECT_EQ(TvlPlatform::ToUtf8(text), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(TvlPlatform::FromUtf8(TvlPlatform::ToUtf8(text)), text);
    const auto bytes = TvlPlatform::ToUtf16Le(text);
    EXPECT_EQ(bytes.size(), 10u);
    EXPECT_EQ(TvlPlatform::FromUtf16Le(bytes.data(), bytes.size()), text);
}

TEST(TextEncoding, ReplacesWhatIsNotValid)
{
    for (const char* bytes : {"\x80", "\xC0", "\xC1", "\xE2", "\xFF", "\xF5"})
        EXPECT_EQ(TvlPlatform::FromUtf8(bytes), L"\uFFFD") << std::hex << int(static_cast<unsigned char>(bytes[0]));
    EXPECT_EQ(TvlPlatform::FromUtf8("\xED\xA0\x80"), L"\uFFFD\uFFFD\uFFFD");
    const unsigned char odd[] = {0x00, 0xD8, 0x41, 0x00, 0x42};
    EXPECT_EQ(TvlPlatform::FromUtf16Le(odd, sizeof odd), L"\uFFFDA");
}

}   // namespace

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

TEST(TextEncoding, TellsWhereAsciiEnds)
{
    for (std::size_t before = 0; before <= 40; ++before)
        for (const std::size_t behind : {0, 1, 20}) {
            const std::string bytes = std::string(before, '~') + "\xC2\x80" + std::string(behind, 'a');
            const std::wstring text = std::wstring(before, L'~') + L"\u0080" + std::wstring(behind, L'a');
            EXPECT_EQ(TvlPlatform::FromUtf8(bytes), text);
            EXPECT_EQ(TvlPlatform::ToUtf8(text), bytes);
            const auto units = TvlPlatform::ToUtf16Le(text);
            ASSERT_EQ(units.size(), 2 * text.size());
            for (std::size_t i = 0; i < text.size(); ++i)
                EXPECT_EQ(units[2 * i] | units[2 * i + 1] << 8, static_cast<int>(text[i])) << before << " at " << i;
        }
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

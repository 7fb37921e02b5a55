// Texts of files do not speak to the terminal that shows them.
#include "TerminalFilter.h"
#include "siblings/TvlUtils/LogMessage.h"

#include <gtest/gtest.h>
#include <sstream>
#include <utility>
#include <vector>

namespace {

struct Row {
    std::string text;
    std::string shown;
};

const Row kRows[] = {
    {"plain\ttext\n", "plain\ttext\n"},
    {"\x1b]0;title\x07", "?]0;title?"},
    {"\x1b[2Jgone\r", "?[2Jgone?"},
    {"back\b\b\x7f", "back???"},
    {std::string("a\0b", 3), "a?b"},
    {"\xC2\x9B"
     "31m",
        "?31m"},
    {"\xC2\x80\xC2\x9F\xC2\xA0\xC2\xA9", "??\xC2\xA0\xC2\xA9"},
    {"\xC3\x9B\xE2\x82\xAC\xF0\x9F\x98\x80", "\xC3\x9B\xE2\x82\xAC\xF0\x9F\x98\x80"},
    {"\xC2\xC2\x9B\xC2\n\xC2", "\xC2?\xC2\n\xC2"},
};

TEST(TerminalFilter, PassesOnAllButControlCharacters)
{
    for (const auto& [text, shown] : kRows) {
        std::ostringstream whole, pieces;
        {
            TerminalFilter filter(*whole.rdbuf());
            std::ostream(&filter) << text << std::flush;
            TerminalFilter ofPieces(*pieces.rdbuf());
            std::ostream out(&ofPieces);
            for (const char byte : text)
                out << byte << std::flush;
        }
        EXPECT_EQ(whole.str(), shown);
        EXPECT_EQ(pieces.str(), shown) << "byte by byte";
    }
}

TEST(TerminalFilter, TellsOfATargetThatTakesNothing)
{
    struct Full : std::streambuf {
    } full;
    TerminalFilter filter(full);
    EXPECT_FALSE(std::ostream(&filter) << "text");
}

TEST(Log, WritesEachMessageAsOneLineOfPlainText)
{
    testing::internal::CaptureStderr();
    TvlUtils::LogMessage(TvlUtils::LogLevel::Error,
        L"a\nerror: b\r\x1b[2J\x9b"
        L"31m\u2028\x7f\u00fc");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "error: a error: b  [2J 31m  \u00fc\n");
}

TEST(Log, CutsLongMessages)
{
    constexpr std::size_t kMost = 16384;
    const std::wstring all(kMost, L'a');
    const std::wstring smiling = L"\U0001F642";   // one character or two
    const std::pair<std::wstring, std::wstring> messages[] = {{all, all},
        {all + L"bc", all + L"... (2 more characters)"},
        {all + smiling, all + L"... (" + std::to_wstring(smiling.size()) + L" more characters)"}};
    std::vector<std::wstring> lines;
    TvlUtils::SetLogReceiver([&](TvlUtils::LogLevel, const TvlString& line) { lines.push_back(line.Std()); });
    for (const auto& [message, line] : messages) {
        TvlUtils::LogMessage(TvlUtils::LogLevel::Error, message);
        EXPECT_EQ(lines.back(), line);
    }
    TvlUtils::LogMessage(TvlUtils::LogLevel::Error, all.substr(1) + smiling + L"b");
    EXPECT_EQ(lines.back(),
        all.substr(1) + (smiling.size() == 1 ? smiling + L"... (1 more characters)" : L"... (3 more characters)"));
    TvlUtils::SetLogReceiver({});
}

}   // namespace

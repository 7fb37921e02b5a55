#include "siblings/TvlUtils/Json.h"

#include "UserWorld.h"
#include "siblings/TvlUtils/TextStreamReader.h"

#include <gtest/gtest.h>

namespace Json = TvlUtils::Json;

TEST(Json, GivesMembersOfTheirKind)
{
    const auto object = Json::Parse(
        R"({"text": "\u00e4", "number": -1.5, "whole": 3, "yes": true, "none": null, "list": [1, "two", [3]],
            "inner": {"text": "deep"}, "twice": 1, "twice": "two"})");
    ASSERT_TRUE(object);
    TvlString text = L"unchanged";
    double number = 0;
    bool yes = false;
    Json::Object inner;
    Json::Array list;
    EXPECT_TRUE(object->GetValue(L"text", text));
    EXPECT_EQ(text, L"\x00E4");
    EXPECT_TRUE(object->GetValue(L"number", number));
    EXPECT_EQ(number, -1.5);
    EXPECT_TRUE(object->GetValue(L"whole", number));
    EXPECT_EQ(number, 3);
    EXPECT_TRUE(object->GetValue(L"yes", yes));
    EXPECT_TRUE(yes);
    EXPECT_TRUE(object->GetValue(L"list", list));
    EXPECT_EQ(list.size(), 3u);
    EXPECT_TRUE(object->GetValue(L"inner", inner));
    EXPECT_TRUE(inner.GetValue(L"text", text));
    EXPECT_EQ(text, L"deep");
    EXPECT_TRUE(object->GetValue(L"twice", text));
    EXPECT_EQ(text, L"two");
    for (const wchar_t* const other : {L"number", L"none", L"list", L"missing"})
        EXPECT_FALSE(object->GetValue(other, text)) << other;
    EXPECT_EQ(text, L"two");
}

TEST(Json, RefusesWhatIsNoObjectOrPastTheLimits)
{
    const std::string kTexts[] = {"", "[]", "1", "{", "{} x", "{\"a\":1,}", "{'a':1}", "{\"a\":\"\xFF\"}",
        "{\"a\":\"\\ud800\"}", "{\"a\":1e999}", std::string(1000000, '['),
        "{\"a\":" + std::string(64, '[') + std::string(64, ']') + "}"};
    for (const std::string& text : kTexts)
        EXPECT_FALSE(Json::Parse(text)) << text.substr(0, 30);
    EXPECT_TRUE(Json::Parse("{\"a\":" + std::string(63, '[') + std::string(63, ']') + "}"));
    EXPECT_FALSE(Json::Parse("{}   ", {.bytes = 4}));
    EXPECT_TRUE(Json::Parse("{}  ", {.bytes = 4}));
}

TEST(TextStreamReader, ReadsTheEncodingsOfTextFiles)
{
    const UserWorld world;
    const std::pair<std::string, const wchar_t*> kRows[] = {{"", L""}, {"a\xC3\xA4", L"a\x00E4"},
        {"\xEF\xBB\xBF"
         "a",
            L"a"},
        {std::string("\xFF\xFE"
                     "a\0\xE4\0",
             6),
            L"a\x00E4"},
        {std::string("\xFE\xFF\0a\0\xE4", 6), L"a\x00E4"}, {"a\xFF", L"a\xFFFD"}};
    for (const auto& [bytes, text] : kRows) {
        const TvlString file = world.MakeFile("text", bytes);
        EXPECT_EQ(TvlUtils::TextStreamReader(TvlUtils::FileStream::OpenForRead(file)).ReadToEnd(), TvlString(text));
    }
    const TvlString file = world.MakeFile("text", "four");
    EXPECT_FALSE(TvlUtils::TextStreamReader(TvlUtils::FileStream::OpenForRead(file)).ReadUtf8(3));
    EXPECT_FALSE(TvlUtils::TextStreamReader(TvlUtils::FileStream::OpenForRead(world.Path("missing"))).ReadUtf8());
    EXPECT_FALSE(TvlUtils::TextStreamReader(TvlUtils::FileStream::OpenForRead(world.MakeFolder("folder"))).ReadUtf8());
}

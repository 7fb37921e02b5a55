// Settings as texts, and what they are made with.
#include "ManagerFixture.h"
#include "siblings/TvlPref/IniIoPolicy.h"
#include "siblings/TvlUtils/DataEncoding.h"
#include "siblings/TvlUtils/Hash.h"
#include "siblings/TvlUtils/String.h"

#include <cstring>
#include <gmock/gmock.h>

namespace {
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using TvlPref::IniIoPolicy;
using TvlUtils::IniParser;

struct Form {
    std::wstring text;
    std::wstring stored;
    bool readsBack;
};

const Form kForms[] = {
    {L"", L"", true},
    {L"plain -_ .:<>\\/()[]!$ 19", L"plain -_ .:<>\\/()[]!$ 19", true},
    {L" a", L">00200061", true},
    {L"a ", L">00610020", true},
    {L"a,b", L">0061002c0062", true},
    {L"\x0e", L">000e", true},
    {L"\x10", L">0010", true},
    {L"\xfe", L">00fe", true},
    {L"\x100", L">0100", true},
    {L"\xffe", L">0ffe", true},
    {L"\x1000", L">1000", true},
    {L"\uffff", L">ffff", true},
    {L"\U0001F600", L">d83dde00", true},
    // One digit short, as in the files that users have.
    {L"\x0f", L">00f", true},
    {L"\x0f=", L">00f003d", false},
    {L"\xff=", L">0ff003d", false},
    {L"\xfff=", L">fff003d", false},
    {L">0041", L">0041", false},
};

TEST(IniIoPolicy, WritesTextsInTheirForm)
{
    for (const auto& [text, stored, readsBack] : kForms) {
        EXPECT_EQ(IniIoPolicy::Encode(text).Std(), stored);
        EXPECT_EQ(IniIoPolicy::ReadsBack(text), readsBack) << TvlPlatform::ToUtf8(stored);
    }
}

TEST(IniIoPolicy, ReadsTheHexadecimalFormFourByFour)
{
    const std::pair<const wchar_t*, std::wstring> kTexts[] = {{L">0041", L"A"}, {L">00410042", L"AB"},
        {L">004", L"\x4"}, {L">", L""}, {L">zzzz0041", std::wstring(L"\0A", 2)}};
    for (const auto& [stored, text] : kTexts)
        EXPECT_EQ(IniIoPolicy::Decode(stored).Std(), text);
}

struct KeyPlace {
    const wchar_t* prefix;
    const wchar_t* key;
    const char* section;
    const char* name;
};

constexpr KeyPlace kPlaces[] = {
    {L"", L"section/name", "section", "name"},
    {L"", L"a/b/name", "a/b", "name"},
    {L"prefix", L"section/name", "prefix/section", "name"},
    {L"prefix", L"name", "prefix", "name"},
};

TEST(IniIoPolicy, FindsTheSectionOfAKey)
{
    for (const bool withParser : {false, true})
        for (const KeyPlace& place : kPlaces) {
            const UserWorld world;
            const TvlString file = world.MakeFile("a.ini", "");
            const auto parser = withParser ? std::make_shared<IniParser>(file) : nullptr;
            const IniIoPolicy policy(file, place.prefix, parser);
            TvlString value = L"kept";
            EXPECT_FALSE(policy.Read(place.key, value));
            EXPECT_EQ(value, L"kept");
            EXPECT_TRUE(policy.Write(place.key, L"x,y"));
            const std::string expected = "[" + std::string(place.section) + "]\r\n" + place.name + "=>0078002c0079\r\n";
            EXPECT_EQ(world.Bytes("a.ini"), expected);
            EXPECT_TRUE(policy.Read(place.key, value));
            EXPECT_EQ(value, L"x,y");
        }
}

TEST(IniIoPolicy, ReadsValuesOfAnyLengthSaveTheOneThatStandsForNone)
{
    const UserWorld world;
    for (const std::size_t length : {1, 253, 254, 255, 256, 257, 510, 511, 512, 5000}) {
        const std::string text(length, 'x');
        const IniIoPolicy policy(world.MakeFile("a.ini", "[s]\r\nn=" + text + "\r\n"), L"");
        TvlString value;
        EXPECT_TRUE(policy.Read(L"s/n", value));
        EXPECT_EQ(value.GetLength(), static_cast<int>(length));
    }
    const IniIoPolicy policy(world.MakeFile("a.ini", "[s]\r\nn={D2D90953-6E3B-4a5c-818C-1A0DA77231B8}\r\n"), L"");
    TvlString value;
    EXPECT_FALSE(policy.Read(L"s/n", value));
}

TEST(IniParser, GivesTheFirstOfEachNameInTheOrderOfTheFile)
{
    const UserWorld world;
    const IniParser parser(
        world.MakeFile("a.ini", "lost=1\n[b]\nx=1\nX=2\ny = \"q\"\n;z=3\n[A]\n[B]\nw=9\n[a/c]\nx=4"));
    EXPECT_THAT(parser.GetAllData(),
        ElementsAre(Pair(TvlString(L"b"),
                        ElementsAre(Pair(TvlString(L"x"), TvlString(L"1")), Pair(TvlString(L"y"), TvlString(L"q")))),
            Pair(TvlString(L"A"), IsEmpty()),
            Pair(TvlString(L"a/c"), ElementsAre(Pair(TvlString(L"x"), TvlString(L"4"))))));
    EXPECT_THAT(IniParser(world.Path("none.ini")).GetAllData(), IsEmpty());
}

TEST(IniParser, TellsManyNamesApart)
{
    constexpr int kNames = 1000;
    std::string bytes;
    const auto addNames = [&bytes](const std::string& first, int value) {
        for (int i = 0; i < kNames; ++i)
            bytes += first + std::to_string(i) + "=" + std::to_string(i + value) + "\n";
    };
    for (const char* const section : {"[s]\n", "[few]\nx=1\nX=2\n[S]\n", "[t]\n"}) {
        bytes += section;
        addNames("N\u00c4me", 0);
        addNames("n\u00e4me", kNames);   // alike
        addNames("n\u00e4\u00e4e", 0);
    }
    const UserWorld world;
    const auto sections = IniParser(world.MakeFile("a.ini", bytes)).GetAllData();
    ASSERT_EQ(sections.size(), 3u);
    EXPECT_THAT(sections[1], Pair(TvlString(L"few"), ElementsAre(Pair(TvlString(L"x"), TvlString(L"1")))));
    for (const std::size_t section : {0, 2}) {
        const auto& entries = sections[section].second;
        ASSERT_EQ(entries.size(), 2u * kNames);
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const wchar_t* const first = i < kNames ? L"N\u00c4me" : L"n\u00e4\u00e4e";
            const std::wstring number = std::to_wstring(i % kNames);
            EXPECT_EQ(entries[i], (IniParser::Entry(first + number, number)));
        }
    }
}

TEST(IniParser, KeepsAFileThatItDoesNotTake)
{
    const UserWorld world;
    std::string lines = "[s]\r\n";
    while (std::count(lines.begin(), lines.end(), '\n') <= static_cast<long>(IniParser::kMaxLines))
        lines += "n=1\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n";
    const std::string large = "[s]\r\nn=" + std::string(TvlUtils::ProfileText::kMaxBytes, '1');
    for (const std::string& bytes : {lines, large}) {
        const TvlString path = world.MakeFile("a.ini", bytes);
        IniParser parser(path);
        EXPECT_THAT(parser.GetAllData(), IsEmpty());
        EXPECT_FALSE(parser.SetString(L"s", L"n", L"2"));
        std::string now;
        EXPECT_TRUE(TvlUtils::SystemIO::File::ReadAll(path, now) && now == bytes) << now.size() << " bytes";
    }
}

TEST(IniParser, ChangesOneLine)
{
    const UserWorld world;
    IniParser parser(world.MakeFile("a.ini", "; mine\r\n[s]\r\nn=1\r\nm=2\r\n"));
    EXPECT_TRUE(parser.SetString(L"S", L"N", L"3"));
    EXPECT_FALSE(parser.SetString(L"s", L"n", L"a\nb"));
    EXPECT_EQ(parser.GetString(L"s", L"n", L""), L"3");
    EXPECT_EQ(parser.GetString(L"s", L"o", L"none"), L"none");
    EXPECT_EQ(world.Bytes("a.ini"), "; mine\r\n[s]\r\nN=3\r\nm=2\r\n");
}

TEST(Texts, ConsistOfTheCharactersOfASet)
{
    using namespace TvlUtils::String;
    EXPECT_TRUE(ConsistsOnlyOf(L"", CharacterSet::LettersAndDigits, L""));
    EXPECT_TRUE(ConsistsOnlyOf(L"azAZ09", CharacterSet::LettersAndDigits, L""));
    EXPECT_TRUE(ConsistsOnlyOf(L"a-b", CharacterSet::SmallLetters, L"-"));
    for (const wchar_t* const other : {L"a-b", L"@", L"[", L"`", L"{", L"/", L":", L"\xe9", L"\x0660"})
        EXPECT_FALSE(ConsistsOnlyOf(other, CharacterSet::LettersAndDigits, L"")) << other;
}

// RFC 1321, A.5.
constexpr std::pair<const char*, const wchar_t*> kDigests[] = {
    {"", L"d41d8cd98f00b204e9800998ecf8427e"},
    {"a", L"0cc175b9c0f1b6a831c399e269772661"},
    {"abc", L"900150983cd24fb0d6963f7d28e17f72"},
    {"message digest", L"f96b697d7cb7938d525a2f31aaf161d0"},
    {"12345678901234567890123456789012345678901234567890123456789012345678901234567890",
        L"57edf4a22be3c955ac49da2e2107b67a"},
};

TEST(Md5, GivesTheDigestsOfTheStandard)
{
    for (const auto& [text, expected] : kDigests) {
        const auto digest = TvlUtils::Hash::Md5(text, std::strlen(text));
        ASSERT_TRUE(digest);
        EXPECT_EQ(TvlUtils::DataEncoding::HexEncode(digest->data(), digest->size()), expected);
    }
}

TEST(Folders, GoWithAllThatIsInThem)
{
    namespace Folder = TvlUtils::SystemIO::Folder;
    const UserWorld world;
    world.MakeFile("kept.txt");
    world.MakeFile("gone/a/b/c.txt");
    std::error_code unsupported;
    std::filesystem::create_directory_symlink(world.Path("kept").Std(), world.Path("gone/link").Std(), unsupported);
    world.MakeFile("kept/inside.txt");
    EXPECT_TRUE(Folder::DeleteRecursive(world.Path("gone"), false));
    EXPECT_TRUE(world.Has("gone"));
    EXPECT_FALSE(world.Has("gone/a"));
    EXPECT_TRUE(world.Has("kept/inside.txt"));
    EXPECT_TRUE(Folder::DeleteRecursive(world.Folder("gone"), true));
    EXPECT_FALSE(world.Has("gone"));
}

TEST(Folders, AreNotDeletedByPathsThatMeanTooMuch)
{
    namespace Folder = TvlUtils::SystemIO::Folder;
    const UserWorld world;
    world.MakeFile("kept/inside.txt");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(TvlUtils::SystemIO::ToFilePath(world.Path("")));
    for (const wchar_t* const path : {L"", L"kept", L"./kept", L".", L"..", L"/", L"\\", L"C:", L"C:\\", L"C:\\..",
             L"/..", L"//", L"//server/share", L"/nowhere-at-all"})
        EXPECT_FALSE(Folder::DeleteRecursive(path, true)) << path;
    std::filesystem::current_path(before);
    EXPECT_FALSE(Folder::DeleteRecursive(world.Path("kept/inside.txt"), true));
    std::error_code unsupported;
    std::filesystem::create_directory_symlink(world.Path("kept").Std(), world.Path("link").Std(), unsupported);
    EXPECT_FALSE(Folder::DeleteRecursive(world.Path("link"), true));
    EXPECT_TRUE(world.Has("kept/inside.txt"));
}
}   // namespace

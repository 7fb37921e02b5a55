// Languages from files that anybody may have written.
#include "LanguageWorld.h"

#include <fstream>

namespace {

class InstalledLanguages : public LanguageWorld {
protected:
    std::size_t Count()
    {
        Forget();
        std::vector<std::pair<CGlbLang, TvlString>> languages;
        IGLB_UILanguage::GetInst().GetLanguages(languages);
        return languages.size();
    }
};

const std::string kGood = R"({"langCode":"ENU","dirName":"EN","uiName":"English"})";

TEST_F(InstalledLanguages, SkipsWhatIsNotWhole)
{
    const std::string kFiles[] = {"", "[]", "{", "null", R"({"langCode":"EN)", kGood + "x", kGood + kGood,
        R"({"langCode":"ENU","dirName":"EN"})", R"({"langCode":1,"dirName":"EN","uiName":"E"})",
        R"({"langCode":["ENU"],"dirName":"EN","uiName":"E"})", R"({"langCode":"ENU","dirName":{},"uiName":"E"})",
        R"({"langCode":"ENU","dirName":"EN","uiName":null})", R"({"langCode":"ENU","dirName":"EN","uiName":""})",
        R"({"langCode":"ENU","dirName":"EN","uiName":"E\nF"})",
        R"({"langCode":"ENU","dirName":"EN","uiName":"E\u0000"})",
        R"({"langCode":"ENU","dirName":"EN","uiName":")" + std::string(101, 'E') + "\"}",
        R"({"langCode":"","dirName":"EN","uiName":"E"})", R"({"langCode":"EN","dirName":"EN","uiName":"E"})",
        R"({"langCode":"ENUS","dirName":"EN","uiName":"E"})", R"({"langCode":"EN\u0000U","dirName":"EN","uiName":"E"})",
        R"({"langCode":"ENÜ","dirName":"EN","uiName":"E"})",
        R"({"langCode":"ENU","dirName":"\ud800","uiName":"\udc00"})", "{\"langCode\":\"ENU\",\"dirName\":\"E\xFF\"}",
        std::string(100000, '['), "{\"a\":" + std::string(100000, '[') + "}",
        kGood.substr(0, kGood.size() - 1) + ",\"x\":" + std::string(20, '[') + std::string(20, ']') + "}",
        kGood + std::string(std::size_t{10} << 20, ' '),
        R"({"langCode":"ENU","dirName":"EN","uiName":")" + std::string(std::size_t{10} << 20, 'x') + "\"}"};
    for (const std::string& file : kFiles) {
        InstallText("EN", file);
        EXPECT_EQ(Count(), 0u) << file.substr(0, 80);
    }
    InstallText("EN", kGood);
    EXPECT_EQ(Count(), 1u);
    InstallText("EN", "\xEF\xBB\xBF" + kGood);
    EXPECT_EQ(Count(), 1u) << "with a byte order mark";
}

TEST_F(InstalledLanguages, NeverLeavesTheFolderOfLanguages)
{
    const char* const kNames[] = {"..", "../EN", "..\\\\EN", ".", "EN/..", "/EN", "C:\\\\x", "C:", "EN\\\\x", "EN/x",
        "a..b", "EN.", "EN ", "EN\\u0000", "EN\\n", "EN*", "EN?", "EN<", "\\\"EN"};
    for (const char* const name : kNames) {
        InstallText("EN", std::string(R"({"langCode":"ENU","uiName":"E","dirName":")") + name + "\"}");
        EXPECT_EQ(Count(), 0u) << name;
    }
    InstallText("EN", R"({"langCode":"ENU","uiName":"E","dirName":")" + std::string(101, 'd') + "\"}");
    EXPECT_EQ(Count(), 0u);
    InstallText("EN", R"({"langCode":"ENU","uiName":"E","dirName":"EN.2 é"})");
    EXPECT_EQ(Count(), 1u);
}

TEST_F(InstalledLanguages, LaterMembersAndEarlierFoldersCount)
{
    InstallText("A", R"({"langCode":"ENU","langCode":"FRA","dirName":"A","uiName":"first"})");
    InstallText("B", R"({"langCode":"FRA","dirName":"B","uiName":"second"})");
    std::vector<std::pair<CGlbLang, TvlString>> languages;
    EXPECT_EQ(IGLB_UILanguage::GetInst().GetLanguages(languages), 1);
    ASSERT_EQ(languages.size(), 1u);
    EXPECT_EQ(languages[0].first.GetIO_StrFmt(), L"FRA");
    EXPECT_EQ(languages[0].second, L"first");
}

TEST_F(InstalledLanguages, FindsItsWayAmongTwoHundred)
{
    const std::string kBroken[] = {"{", "[]", R"({"langCode":"X01","dirName":"..","uiName":"x"})", "\xFF"};
    std::string names;
    for (int i = 0; i < 200; ++i) {
        const std::string folder = "X" + std::to_string(100 + i).substr(1) + std::to_string(i / 100);
        if (i % 4 == 3)
            InstallText(folder, kBroken[static_cast<std::size_t>(i / 4 % 4)]);
        else
            Install(std::string(1, static_cast<char>('A' + i / 100)) + std::to_string(100 + i % 100).substr(1));
    }
    Install("DEU");
    locale.language = 0x0C07;
    EXPECT_EQ(Chosen(), L"DEU");
    EXPECT_EQ(Count(), 151u);
    Forget();
    StoreText(L"B42");
    EXPECT_EQ(Chosen(), L"B42");
}

TEST_F(InstalledLanguages, TheSuiteHasFifteen)
{
    constexpr const wchar_t* kCodes[] = {L"ENU", L"DEU", L"FRA", L"ESP", L"ITA", L"PTB", L"NLD", L"PLK", L"CSY", L"RUS",
        L"SVE", L"TRK", L"JPN", L"CHS", L"CHT"};
    UILanguageMap languages;
    UILanguageMap others;
    ReadInstalledLanguages(TvlUtils::SystemIO::FromFilePath(INSTALLED_LANGUAGES), L"info.json", languages, others);
    EXPECT_EQ(languages.size(), std::size(kCodes));
    EXPECT_TRUE(others.empty());
    for (const wchar_t* const text : kCodes) {
        CGlbLang code;
        EXPECT_TRUE(code.SetFromIO_StrFmt(text));
        EXPECT_TRUE(languages.contains(code.GetCode())) << text;
    }
}

}   // namespace

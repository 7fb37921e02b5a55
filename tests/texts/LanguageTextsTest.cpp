// The texts of all languages that are installed, and the faults that a translator's folder may have.
#include "LanguageTexts.h"
#include "ChildProcess.h"
#include "FakeEnvironment.h"
#include "LanguageTokens.h"
#include "Languages.h"
#include "PseudoLanguage.h"
#include "siblings/TvlConfig/SuiteFolders.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlResources/Resources.h"
#include "siblings/TvlUtils/FilePath.h"

#include <fstream>
#include <gmock/gmock.h>

namespace {
namespace fs = std::filesystem;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

fs::path Languages() { return TvlUtils::SystemIO::ToFilePath(TvlConfig::GetSuiteDir()) / "Languages"; }

LanguageTexts English()
{
    LanguageFaults faults;
    LanguageTexts texts = ReadLanguageTexts(Languages() / "EN", faults);
    EXPECT_THAT(faults, IsEmpty());
    return texts;
}

LanguageFaults Compare(const LanguageTexts& texts)
{
    LanguageFaults faults;
    const LanguageTexts english = English();
    CompareTexts(texts, english, faults);
    CheckTokens(texts, english, faults);
    return faults;
}

TEST(LanguageTexts, AreWholeInEveryLanguage)
{
    for (const SuiteLanguage& language : kLanguages) {
        LanguageFaults faults;
        CheckLanguageInfo(Languages() / language.folder, faults);
        const LanguageTexts texts = ReadLanguageTexts(Languages() / language.folder, faults);
        for (const std::string& fault : Compare(texts))
            faults.push_back(fault);
        EXPECT_THAT(faults, IsEmpty()) << language.folder;
    }
}

/// English texts with one of them changed.
LanguageTexts Changed(const char* file, const char* key, const std::string& text)
{
    LanguageTexts texts = English();
    texts.at(file).at(key) = text;
    return texts;
}

TEST(LanguageTexts, TellFaultsOfOneText)
{
    constexpr const char* kErrorForm = "0d278df0-faf6-4fae-8605-bcecd6358b22";   // "%s: error %d in %s, line %d"
    constexpr const char* kPicaList = "999af699-9cb5-4afa-aada-ab112f44b538";    // "pc,pt"
    constexpr const char* kInch = "47eaa099-2cb6-416d-86dc-283cf0480ff9";        // "in"
    constexpr const char* kPoint = "2e460a96-1894-4a23-9985-5162fd0b00ea";       // "point"
    constexpr const char* kDivide = "d7e27cba-81e9-46ba-baa6-1baf9c43940e";      // "/"
    constexpr const char* kTimes = "c8e96f17-5af8-4145-8d7c-4e544bb780e9";       // "*"
    constexpr const char* kFolderMissing = "7b8f551f-c1ff-13b8-416f-408cdebce1d5";
    const struct Row {
        const char* file;
        const char* key;
        const char* text;
        const char* problem;
    } kRows[] = {
        {"frame.json", kErrorForm, "", "the text is empty"},
        {"frame.json", kErrorForm, " \t", "the text is empty"},
        {"frame.json", kErrorForm, "%s: %d %s", "takes the arguments %s, %d, %s where"},
        {"frame.json", kErrorForm, "%d: %s %s %d", "takes the arguments %d, %s, %s, %d where"},
        {"frame.json", kErrorForm, "%s: %ld %s %d", "takes the arguments %s, %ld, %s, %d where"},
        {"frame.json", kErrorForm, "%s: %d %s %*d", "takes the arguments %s, %d, %s, %*, %d where"},
        {"frame.json", kErrorForm, "%s: %d %s %d 100 % d", "takes the arguments"},
        {"locations.json", kFolderMissing, "%s", "takes the arguments %s where the English text takes none"},
        {"measures.json", kPicaList, "pc pt", "needs 2 items"},
        {"measures.json", kPicaList, "pc,pt,dd", "needs 2 items"},
        {"measures.json", kPicaList, "cicero,didotpoint", "no more than 16 characters"},
        {"units.json", kInch, "abcdefghijklmnopqrstu", "only 20 characters"},
        {"units.json", kInch, "MM", "a word of another unit"},
        {"units.json", kInch, "Sinch", "begins as \"sin\""},
        {"units.json", kInch, "/in", "begins as \"/\""},
        {"units.json", kInch, "in.", "separates groups of digits"},
        {"units.json", kInch, "1in", "begins as a number"},
        {"units.json", kInch, "in ", "ends with a blank"},
        {"units.json", kPoint, "big point", "has a blank"},
        {"parser.json", kTimes, "+", "stands for"},
        {"parser.json", kDivide, ":", "as in English"},
        {"parser.json", kTimes, "x", nullptr},
        {"units.json", kInch, "big inch", nullptr},
        {"units.json", kInch, "inches", nullptr},
        {"frame.json", kErrorForm, "100 %%, %s: %5d %-s %03d", nullptr},
        {"locations.json", kFolderMissing, "100 % des dossiers", nullptr},
    };
    for (const auto& [file, key, text, problem] : kRows) {
        const LanguageFaults faults = Compare(Changed(file, key, text));
        if (problem)
            EXPECT_THAT(faults, Contains(AllOf(HasSubstr(key), HasSubstr(problem)))) << text;
        else
            EXPECT_THAT(faults, IsEmpty()) << text;
    }
}

TEST(LanguageTexts, TellKeysAndFilesThatAreMissingOrTooMany)
{
    LanguageTexts texts = English();
    texts["sizes.json"].erase("1698f9d4-0b97-4bfa-95b6-f3e12515003c");
    texts["sizes.json"]["no key"] = "text";
    texts.erase("progress.json");
    EXPECT_THAT(Compare(texts),
        testing::UnorderedElementsAre(HasSubstr("the text for \"bytes\" is missing"),
            HasSubstr("\"text\" has no English text"), "progress.json: the file is missing"));
}
/// A translator's folder with one file.
class TranslatorFolder {
public:
    TranslatorFolder(const fs::path& file, const std::string& content) : m_path(m_scratch.Path() / "Lang")
    {
        fs::create_directories((m_path / file).parent_path());
        std::ofstream(m_path / file, std::ios::binary) << content;
    }
    const fs::path& Path() const { return m_path; }

private:
    ScratchFolder m_scratch;
    fs::path m_path;
};

TEST(LanguageTexts, TellFaultsOfFiles)
{
    const struct Row {
        const char* content;
        const char* problem;   // null for none
    } kRows[] = {
        {R"({"version": 1, "texts": {"a": "x", "b": "y"}})", nullptr},
        {R"({"version": 1, "texts": {"a": "x", "a": "y"}})", "t.json: a: the key stands there twice"},
        {R"({"version": 1, "texts": {"a": 1}})", "t.json: a: this is no text"},
        {R"({"version": 2, "texts": {}})", "t.json: its version is not 1"},
        {R"({"texts": {}})", "version"},
        {R"({"version": 1, "texts": ["a"]})", "t.json: its texts are not by key"},
        {R"({"version": 1, "texts": {"a": "x",}})", "parse error"},
        {"{\"version\": 1, \"texts\": {\"a\": \"\xFF\"}}", "UTF-8"},
        {"[]", "t.json: "},
        {"", "t.json: "},
    };
    for (const auto& [content, problem] : kRows) {
        const TranslatorFolder folder("Data/Texts/t.json", content);
        LanguageFaults faults;
        ReadLanguageTexts(folder.Path(), faults);
        if (problem)
            EXPECT_THAT(faults, ElementsAre(HasSubstr(problem))) << content;
        else
            EXPECT_THAT(faults, IsEmpty()) << content;
    }
    LanguageFaults faults;
    const ScratchFolder empty;
    EXPECT_THAT(ReadLanguageTexts(empty.Path(), faults), IsEmpty());
    EXPECT_THAT(faults, ElementsAre("Data/Texts: the folder can't be read"));
}

TEST(LanguageTexts, TellFaultsOfTheDescription)
{
    const struct Row {
        const char* content;
        std::vector<const char*> problems;
    } kRows[] = {
        {R"({"langCode": "ENU", "dirName": "Lang", "uiName": "x"})", {}},
        {R"({"langCode": "e1u", "dirName": "Lang", "uiName": "x", "more": 1})", {}},
        {R"({"langCode": "EN", "dirName": "Lang", "uiName": "x"})", {"langCode"}},
        {R"({"langCode": "EN_", "dirName": "Lang", "uiName": "x"})", {"langCode"}},
        {R"({"langCode": "ENU", "dirName": "../Lang", "uiName": "x"})", {"dirName"}},
        {R"({"langCode": 1, "dirName": "", "uiName": null})", {"langCode", "uiName", "dirName"}},
        {R"({"dirName": "Lang", "dirName": "Lang", "langCode": "ENU", "uiName": "x"})", {"dirName: the key stands"}},
        {"[]", {"object"}},
        {"{", {"parse error"}},
    };
    for (const auto& [content, problems] : kRows) {
        const TranslatorFolder folder("Data/info.json", content);
        LanguageFaults faults;
        CheckLanguageInfo(folder.Path() / "", faults);
        ASSERT_EQ(faults.size(), problems.size()) << content;
        for (std::size_t i = 0; i < faults.size(); ++i)
            EXPECT_THAT(faults[i], AllOf(testing::StartsWith("info.json: "), HasSubstr(problems[i]))) << content;
    }
}

TEST(PseudoLanguage, IsLongerAccentedAndKeepsTheRules)
{
    const LanguageTexts english = English();
    const LanguageTexts pseudo = PseudoTexts(english);
    EXPECT_THAT(Compare(pseudo), IsEmpty());
    EXPECT_EQ(pseudo.at("parser.json"), english.at("parser.json"));
    EXPECT_EQ(pseudo.at("units.json").at("de1b1471-320a-48ea-b7a7-88d106762832"), "ḿîļļîḿéţéŕš");
    EXPECT_EQ(pseudo.at("locations.json").at("fd38e212-5ead-44ca-a9b7-e4f26871e2b3"),
        "[Çĥööšé ţĥé ƒöļðéŕ ţĥáţ %s ḿáý ûšé.~~~~~~~~~~~~]");
    for (const auto& [key, text] : english.at("papers.json"))
        EXPECT_GE(TvlPlatform::FromUtf8(pseudo.at("papers.json").at(key)).size() * 3, text.size() * 4) << text;
}

TEST(PseudoLanguage, IsChosenAsAnyOther)
{
    const ScratchFolder suite;
    const FakeEnvironment environment{{{L"TVL_SUITE_DIR", TvlUtils::SystemIO::FromFilePath(suite.Path()).Std()}}};
    fs::create_directories(suite.Path() / "Languages" / "EN" / "Data" / "Texts");
    const fs::path folder = suite.Path() / "Languages" / "XX";
    WritePseudoLanguage(folder, {{"sizes.json", {{"1698f9d4-0b97-4bfa-95b6-f3e12515003c", "bytes"}}}});
    LanguageFaults faults;
    CheckLanguageInfo(folder, faults);
    EXPECT_THAT(faults, IsEmpty());
    Framework::Resources::SetLanguageFolder(L"XX");
    EXPECT_EQ(
        TvlPlatform::ToUtf8(Framework::Resources::GetString(L"1698f9d4-0b97-4bfa-95b6-f3e12515003c")), "[ƀýţéš~~]");
    Framework::Resources::SetLanguageFolder(L"EN");
}
}   // namespace

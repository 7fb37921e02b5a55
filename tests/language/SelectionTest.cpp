// Which language is chosen, and when the user is asked.
#include "LanguageWorld.h"
#include "UILanguageDS.h"

#include <gmock/gmock.h>

namespace {
using testing::HasSubstr;

constexpr LANGID kEnglish = 0x0409;
constexpr LANGID kAustrian = 0x0C07;
constexpr LANGID kGerman = 0x0407;
constexpr LANGID kFrench = 0x040C;
constexpr LANGID kKorean = 0x0412;
constexpr LANGID kModernSpanish = 0x0C0A;

struct Row {
    const char* installed;
    std::wstring stored;
    LANGID system;
    LANGID region;
    std::wstring chosen;
    std::wstring storedThen;
    bool warns = false;
    int asked = 0;
};

class Selection : public LanguageWorld { };

TEST_F(Selection, GoesFromStoredToSystemToRegionToEnglishToTheFirstByName)
{
    const Row kRows[] = {
        {"ENU DEU FRA", L"DEU", kEnglish, kEnglish, L"DEU", L"DEU"},
        {"ENU DEU FRA", L"deu", kEnglish, kEnglish, L"DEU", L"deu"},
        // The main language serves for a dialect, which stays stored.
        {"ENU DEU FRA", L"DEA", kEnglish, kEnglish, L"DEU", L"DEA"},
        {"ENU ESP", L"ESN", kEnglish, kEnglish, L"ESP", L"ESN"},
        // What is stored and gone is replaced, with a warning; so is what was never stored.
        {"ENU DEU FRA", L"PLK", kAustrian, kEnglish, L"DEU", L"DEU", true},
        {"ENU DEU FRA", L"", kGerman, kEnglish, L"DEU", L"DEU", true},
        {"ENU DEU FRA", L"PLK", kKorean, kFrench, L"FRA", L"FRA", true},
        {"ENU ESP", L"", kModernSpanish, kEnglish, L"ESP", L"ESP", true},
        {"ENU", L"PLK", kKorean, kKorean, L"ENU", L"ENU", true},
        // Nothing but English or the first by name is left: the user is asked.
        {"ENU DEU FRA", L"PLK", kKorean, kKorean, L"ENU", L"ENU", false, 1},
        {"SVE DEU FRA", L"PLK", kKorean, kKorean, L"DEU", L"PLK", false, 1},
        {"SVE", L"PLK", kKorean, kKorean, L"SVE", L"PLK"},
        // Texts that are no code.
        {"ENU DEU", L"ENUX", kGerman, kEnglish, L"DEU", L"DEU", true},
        {"ENU DEU", L"EN", kGerman, kEnglish, L"DEU", L"DEU", true},
        {"ENU DEU", L"E-U", kGerman, kEnglish, L"DEU", L"DEU", true},
        // Chinese by its characters; with the others alone, by the main language of the group.
        {"ENU CHS CHT", L"ZHI", kEnglish, kEnglish, L"CHS", L"ZHI"},
        {"ENU CHS CHT", L"ZHH", kEnglish, kEnglish, L"CHT", L"ZHH"},
        {"ENU CHT", L"CHS", kEnglish, kEnglish, L"CHT", L"CHS"},
        {"ENU CHS", L"CHT", kEnglish, kEnglish, L"ENU", L"ENU", true},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(testing::Message() << row.installed << ", stored " << row.stored << ", system " << row.system);
        world.Remove("suite");
        Forget();
        const MemoryRegistry registry;
        windowing.boxes.clear();
        dialogs.shown = 0;
        dialogs.window = {};
        Install(row.installed);
        if (!row.stored.empty())
            StoreText(row.stored);
        locale.language = row.system;
        locale.localeId = row.region;
        EXPECT_EQ(Chosen(), row.chosen);
        EXPECT_EQ(StoredLanguage(), row.storedThen);
        EXPECT_EQ(Warnings(), row.warns ? L"The stored User Language was not available.\n" : L"");
        EXPECT_EQ(dialogs.shown, row.asked);
        EXPECT_EQ(IGLB_UILanguage::GetInst().ReadQueryStartupLang(), 0);
    }
}

TEST_F(Selection, LeavesALanguageOfOtherApplicationsStored)
{
    ApplicationInfo::Settings().SetResourceFileName(L"Paint.res");
    Install("ENU DEU JPN");
    for (const char* const folder : {"ENU", "DEU"})
        world.MakeFile(std::string("suite/Languages/") + folder + "/Data/Paint.res");
    StoreText(L"JPN");
    locale.language = kGerman;
    EXPECT_EQ(Chosen(), L"DEU");
    EXPECT_EQ(StoredLanguage(), L"JPN");
    EXPECT_EQ(Warnings(), L"");
    std::vector<std::pair<CGlbLang, TvlString>> languages;
    EXPECT_EQ(IGLB_UILanguage::GetInst().GetLanguages(languages), 1);
    EXPECT_EQ(languages.size(), 2u);
}

TEST_F(Selection, WarnsOfAnInstallationWithoutLanguages)
{
    EXPECT_EQ(Chosen(), L"");
    EXPECT_EQ(Warnings(), L"The base UI Language directory is invalid\n");
    windowing.boxes.clear();
    world.MakeFolder("suite/Languages/EN");
    EXPECT_EQ(Chosen(), L"") << "it is looked for again";
    EXPECT_EQ(Warnings(), L"The UI Language registration list is invalid.\n");
    TvlString path = L"unchanged";
    EXPECT_EQ(IGLB_UILanguage::GetInst().GetLanguagePath(path), 0);
    EXPECT_EQ(IGLB_UILanguage::GetInst().LoadResourceDll(L"name"), nullptr);
}

TEST_F(Selection, StaysForTheLifeOfTheProcess)
{
    Install("ENU DEU");
    StoreText(L"DEU");
    EXPECT_EQ(Chosen(), L"DEU");
    StoreText(L"ENU");
    EXPECT_EQ(Chosen(), L"DEU");
    Forget();
    EXPECT_EQ(Chosen(), L"ENU");
}

TEST_F(Selection, SwitchesTextsAndTheirDrawing)
{
    using enum SkiaUtility::TextRendering;
    Install("ENU CHS CHT JPN");
    const std::string texts = R"({"version": 1, "texts": {"key": "japanese"}})";
    world.MakeFile("suite/Languages/JPN/Data/Texts/texts.json", texts);
    const std::pair<const wchar_t*, SkiaUtility::TextRendering> kRows[] = {
        {L"ENU", Standard}, {L"CHS", Chinese}, {L"CHT", FarEast}, {L"JPN", FarEast}};
    for (const auto& [code, rendering] : kRows) {
        Forget();
        StoreText(code);
        EXPECT_EQ(Chosen(), code);
        EXPECT_EQ(SkiaUtility::GetTextRendering(), rendering) << code;
    }
    EXPECT_EQ(Framework::Resources::GetString(L"key"), L"japanese");
}

TEST_F(Selection, TellsItsStepsAndBoundControls)
{
    Install("ENU DEU");
    StoreText(L"PLK");
    locale.language = kAustrian;
    const auto source = UILanguageDS::GetSource();
    EXPECT_EQ(std::get<TvlString>(source->GetProperty(L"LangDirCode")), L"");
    int changes = 0;
    const auto subscription = source->GetChangedEvent().Subscribe([&](void*) { ++changes; });
    Chosen();
    EXPECT_EQ(std::get<TvlString>(source->GetProperty(L"LangDirCode")), L"DEU");
    EXPECT_EQ(changes, 1);
    std::wstring steps;
    for (const auto& [step, finding] : TvlUtl::GetUILanguageSteps())
        steps += std::wstring(step) + L"=" + finding.Std() + L"\n";
    for (const wchar_t* const step :
        {L"installed languages=DEU ENU\n", L"stored language=PLK: not installed\n",
            L"language of the system=DEA: taken as DEU\n", L"question=not asked: nobody wants it\n", L"language=DEU\n"})
        EXPECT_THAT(steps, HasSubstr(step));
}

struct Question {
    std::optional<DWORD> query;   // "QueryStartupLang"
    DWORD offer;                  // "ShowLangSelection"
    std::wstring stored;
    int asked;
};

TEST_F(Selection, AsksWhenTheUserOrTheAdministratorWantsIt)
{
    const Question kRows[] = {
        {{}, 0, L"DEU", 0}, {{}, 1, L"DEU", 1}, {1, 0, L"DEU", 1}, {1, 1, L"DEU", 1}, {0, 0, L"DEU", 0},
        {0, 1, L"DEU", 0}, {0, 0, L"PLK", 1},   // what is stored is gone
    };
    Install("ENU DEU");
    for (const Question& row : kRows) {
        SCOPED_TRACE(testing::Message() << row.query.value_or(99) << row.offer << row.stored);
        Forget();
        const MemoryRegistry registry;
        dialogs.shown = 0;
        dialogs.window = {};
        if (row.query)
            StoreNumber(L"QueryStartupLang", *row.query);
        StoreNumber(L"ShowLangSelection", row.offer, kMachine);
        StoreText(row.stored);
        Chosen();
        EXPECT_EQ(dialogs.shown, row.asked);
    }
}

TEST_F(Selection, DoesNotAskWithOneLanguageOrInASilentProcess)
{
    StoreNumber(L"QueryStartupLang", 1);
    Install("ENU");
    StoreText(L"ENU");
    EXPECT_EQ(Chosen(), L"ENU");
    EXPECT_EQ(dialogs.shown, 0);

    Forget();
    Install("DEU");
    const auto silent = IGLB_UILanguage::CreateSilentEvent();
    silent->set();
    EXPECT_EQ(Chosen(), L"ENU");
    EXPECT_EQ(dialogs.shown, 0);
    Forget();
    Chosen();
    EXPECT_EQ(dialogs.shown, 1) << "the event is reset by the test of it";
}

TEST_F(Selection, TakesAndStoresTheAnswer)
{
    Install("ENU DEU FRA");
    for (const bool always : {true, false}) {
        Forget();
        StoreNumber(L"QueryStartupLang", 1);
        StoreText(L"ENU");
        dialogs.window = {};
        dialogs.answer = [always](FakeDialogWindow& window) {
            EXPECT_EQ(window.choices[static_cast<std::size_t>(window.selected)], L"Name ENU");
            EXPECT_FALSE(window.checked);
            window.Send(1003, Ports::kComboSetSelection, 1, 0);   // by name: DEU, ENU, FRA
            window.selected = 2;
            window.checked = always;
            return true;
        };
        EXPECT_EQ(Chosen(), L"FRA");
        EXPECT_EQ(StoredLanguage(), L"FRA");
        EXPECT_EQ(IGLB_UILanguage::GetInst().ReadQueryStartupLang(), !always);
        EXPECT_EQ(dialogs.handles, 0);
        TvlString path;
        EXPECT_EQ(IGLB_UILanguage::GetInst().GetLanguagePath(path), 1);
        EXPECT_EQ(path, world.Path("suite/Languages/FRA"));
    }
    EXPECT_EQ(dialogs.shown, 2);
}

TEST_F(Selection, StoresAnAnswerThatIsTheLanguageInUse)
{
    Install("ENU DEU");
    StoreText(L"DEA");   // stands for DEU
    StoreNumber(L"QueryStartupLang", 1);
    dialogs.answer = [](FakeDialogWindow&) { return true; };
    EXPECT_EQ(Chosen(), L"DEU");
    EXPECT_EQ(StoredLanguage(), L"DEU");
}

TEST_F(Selection, WritesNothingWithoutAnAnswer)
{
    Install("ENU DEU");
    StoreText(L"DEA");
    StoreNumber(L"QueryStartupLang", 1);
    EXPECT_EQ(Chosen(), L"DEU");
    EXPECT_EQ(dialogs.shown, 1);
    EXPECT_EQ(StoredLanguage(), L"DEA");
    EXPECT_EQ(IGLB_UILanguage::GetInst().ReadQueryStartupLang(), 1);
}

}   // namespace

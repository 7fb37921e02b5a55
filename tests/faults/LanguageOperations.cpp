// The language of the user interface, and its texts: what could not be read for want of memory is read the next time.
#include "../language/FakeDialogs.h"
#include "FakeLocale.h"
#include "FaultWorld.h"
#include "GLB_UILanguage.h"
#include "HeapOperation.h"
#include "siblings/Tvl2D/SkiaUtility.h"
#include "siblings/TvlConfig/SuiteFolders.h"
#include "siblings/TvlResources/Resources.h"

#include <gtest/gtest.h>

namespace {
CGlbLang German()
{
    CGlbLang language;
    language.SetFromWinLangID(0x0407);
    return language;
}

/// A process that has not chosen its language, with two that it can choose.
struct Languages {
    Languages()
    {
        for (const auto& [folder, info] : {std::pair("EN", R"({"langCode":"ENU","dirName":"EN","uiName":"English"})"),
                 std::pair("DE", R"({"langCode":"DEU","dirName":"DE","uiName":"Deutsch"})")})
            world.Put(std::string("suite/Languages/") + folder + "/Data/info.json", info);
        Forget();
        Instance().WriteStoredLanguage(German());
    }
    ~Languages()
    {
        Forget();
        Framework::Resources::SetLanguageFolder(L"EN");
    }
    static void Forget()
    {
        GLB_UILanguage::ReleaseInstance(false);
        INIClearLangRelProgDirCache();
        SkiaUtility::ResetTextRendering();
    }
    static IGLB_UILanguage& Instance() { return IGLB_UILanguage::GetInst(); }
    static TvlString Stored()
    {
        CGlbLang language;
        return Instance().ReadStoredLanguage(language) == 1 ? language.GetIO_StrFmt() : TvlString(L"none");
    }

    /// Whether the text is a language that is installed, or none.
    bool IsKnown() const
    {
        return text == L"DEU" || text == L"ENU" || text.IsEmpty() || text == CGlbLang().GetIO_StrFmt();
    }

    FaultWorld world;
    FakeLocale locale;
    FakeDialogs dialogs;
    TvlString text;
    int result = 0;
    std::size_t count = 0;
};
}   // namespace

HeapOperations LanguageOperations()
{
    return {
        // A language whose description can't be read is skipped in this process: another one is chosen, or none.
        SilentRow<Languages>(
            "GetLanguage",
            [](Languages& languages) { languages.text = Languages::Instance().GetLanguage().GetIO_StrFmt(); },
            [](Languages& languages, const HeapRun& outcome) {
                EXPECT_TRUE(languages.text == L"DEU" || (outcome.hasFailed && languages.IsKnown()))
                    << languages.text.c_str();
                languages.text = L"";
                EXPECT_EQ(languages.world.registry.OpenKeys(), 0u);
                Languages::Forget();
                Languages::Instance().WriteStoredLanguage(German());
            }),
        Row<Languages>(
            "WriteStoredLanguage",
            [](Languages& languages) {
                CGlbLang english;
                english.SetFromWinLangID(0x0409);
                languages.result = Languages::Instance().WriteStoredLanguage(english);
            },
            [](Languages& languages, const HeapRun& outcome) {
                const TvlString stored = Languages::Stored();
                EXPECT_TRUE(stored == L"ENU" || (stored == L"DEU" && outcome.hasFailed)) << stored.c_str();
                EXPECT_EQ(languages.world.registry.OpenKeys(), 0u);
                languages.result = 0;
            },
            [](Languages& languages) { return languages.result == 0; }),
        SilentRow<Languages>(
            "GetLanguages",
            [](Languages& languages) {
                std::vector<std::pair<CGlbLang, TvlString>> found;
                Languages::Instance().GetLanguages(found);
                languages.count = found.size();
            },
            [](Languages& languages, const HeapRun& outcome) {
                // Read once in a process: a language whose file could not be read is skipped in that one.
                EXPECT_TRUE(languages.count == 2 || (languages.count < 2 && outcome.hasFailed)) << languages.count;
                languages.count = 0;
                Languages::Forget();
            }),
        SilentRow<Languages>(
            "GetLanguageDataPath",
            [](Languages& languages) {
                Languages::Instance().GetLanguage();
                languages.result = Languages::Instance().GetLanguageDataPath(languages.text);
            },
            [](Languages& languages, const HeapRun& outcome) {
                const bool isGerman = languages.text.Find(L"DE") > 0;
                const bool isEnglish = languages.text.Find(L"EN") > 0;
                EXPECT_TRUE((languages.result == 1 && isGerman) || outcome.hasFailed);
                EXPECT_TRUE(languages.result == 0 || isGerman || isEnglish) << languages.text.c_str();
                languages.result = 0;
                languages.text = L"";
                Languages::Forget();
                Languages::Instance().WriteStoredLanguage(German());
            }),
        Row<Languages>(
            "GetDefaultId",
            [](Languages& languages) {
                languages.result = Languages::Instance().GetDefaultId(1234567890, languages.text);
            },
            [](Languages& languages, const HeapRun& outcome) {
                EXPECT_TRUE(languages.text == L"TovelDefaultID_1234567890" || outcome.hasFailed);
                languages.text = L"";
            }),
        Row<Languages>(
            "GetString",
            [](Languages& languages) {
                Framework::Resources::SetLanguageFolder(L"EN");
                languages.text = Framework::Resources::GetString(L"0d278df0-faf6-4fae-8605-bcecd6358b22");
            },
            [](Languages& languages, const HeapRun& outcome) {
                const TvlString there = Framework::Resources::GetString(L"0d278df0-faf6-4fae-8605-bcecd6358b22");
                EXPECT_FALSE(there.IsEmpty()) << "texts that are there";
                EXPECT_TRUE(languages.text == there || outcome.hasFailed);
                languages.text = L"";
            }),
    };
}

// The dialog: its template, its steps, its texts.
#include "LanguageCaptions.h"
#include "LanguageSelectionDialog.h"
#include "LanguageWorld.h"

#include <gmock/gmock.h>
#include <set>

namespace {
using testing::ElementsAre;

class Dialog : public LanguageWorld {
protected:
    Dialog()
    {
        Install("ENU DEU FRA");
        StoreText(L"ENU");
        StoreNumber(L"QueryStartupLang", 1);
    }
};

unsigned Word(const std::vector<BYTE>& bytes, std::size_t at) { return bytes[at] | bytes[at + 1] << 8; }

TEST_F(Dialog, TemplateIsOneOfWindows)
{
    const std::vector<BYTE> bytes = MakeLanguageDialogTemplate({L"T", L"P", L"&C", L"OK"});
    EXPECT_EQ(Word(bytes, 0) & 0x40, 0u) << "the system's font";
    EXPECT_EQ(Word(bytes, 8), 4u) << "controls";
    EXPECT_EQ(Word(bytes, 18), 0u) << "no menu";
    EXPECT_EQ(Word(bytes, 20), 0u) << "the class of dialogs";
    EXPECT_EQ(Word(bytes, 22), unsigned{'T'});
    EXPECT_EQ(Word(bytes, 24), 0u);
    EXPECT_EQ(Word(bytes, 28 + 16), 1002u) << "the first control begins at a multiple of four bytes";
    EXPECT_EQ(Word(bytes, 28 + 18), 0xFFFFu);
    EXPECT_EQ(Word(bytes, 28 + 20), 0x82u);
    // 18 bytes and four words to a control, and two or three units of text each; every control is aligned.
    EXPECT_EQ(bytes.size(), 28u + 28u + 28u + 32u + 30u);
}

TEST_F(Dialog, TemplateGrowsWithItsTexts)
{
    const std::wstring longText(5000, L'\x6F22');
    const std::vector<BYTE> bytes = MakeLanguageDialogTemplate({L"T", longText, L"C", L"OK"});
    EXPECT_GT(bytes.size(), 10000u);
    EXPECT_EQ(Word(bytes, 8), 4u);
}

TEST_F(Dialog, TakesItsStepsInOrder)
{
    dialogs.answer = [](FakeDialogWindow&) { return true; };
    Chosen();
    EXPECT_THAT(dialogs.window.calls,
        ElementsAre("menu 61536 2", "icon 78", "send 368 to 1002", "combo 1003 1342177283", "font 80",
            "send 48 to 1004", "send 48 to 1003", "send 48 to 1005", "send 48 to 1", "send 323 to 1003",
            "send 323 to 1003", "send 323 to 1003", "send 344 to 1003", "send 334 to 1003", "send 241 to 1005",
            "focus 1003", "send 240 to 1005", "send 327 to 1003", "send 329 to 1003", "send 328 to 1003"));
    EXPECT_THAT(dialogs.window.choices, ElementsAre(L"Name DEU", L"Name ENU", L"Name FRA"));
    EXPECT_FALSE(dialogs.window.places.contains(1003)) << "the list ends with the dialog";
}

TEST_F(Dialog, CheckBoxStartsAsTheOppositeOfAskingAgain)
{
    for (const DWORD query : {0u, 1u}) {
        Forget();
        dialogs.window = {};
        StoreNumber(L"QueryStartupLang", query);
        StoreText(L"PLK");   // gone, so that it asks in either case
        dialogs.answer = [query](FakeDialogWindow& window) {
            EXPECT_EQ(window.checked, query == 0);
            return true;
        };
        Chosen();
        EXPECT_EQ(IGLB_UILanguage::GetInst().ReadQueryStartupLang(), static_cast<int>(query));
    }
    EXPECT_EQ(dialogs.shown, 2);
}

TEST_F(Dialog, GrowsWithTheResolution)
{
    std::map<int, Ports::DialogRect> standard;
    for (const int dpi : {96, 192}) {
        Forget();
        dialogs.window = {};
        dialogs.window.dpi = dpi;
        std::map<int, Ports::DialogRect> places;
        dialogs.answer = [&](FakeDialogWindow& window) {
            places = window.places;
            return false;
        };
        Chosen();
        EXPECT_EQ(places[1003].width, places[0].width * 7 / 10);
        if (dpi == 96)
            standard = places;
        const int scale = dpi / 96;
        const auto& [x, y, all, high] = standard[0];
        EXPECT_EQ(places[0],
            (Ports::DialogRect{x - all * (scale - 1) / 2, y - high * (scale - 1) / 2, all * scale, high * scale}))
            << "about its middle";
        places.erase(0);
        for (const auto& [id, place] : places) {
            const auto& [left, top, width, height] = standard[id];
            EXPECT_EQ(place, (Ports::DialogRect{left * scale, top * scale, width * scale, height * scale})) << id;
        }
    }
    EXPECT_EQ(standard[1004], FakeDialogWindow().places[1004]) << "nothing grows at 96";
}

TEST_F(Dialog, HasItsSizeWhateverTheSystemsFontIs)
{
    std::map<int, Ports::DialogRect> places;
    dialogs.answer = [&](FakeDialogWindow& window) {
        places = window.places;
        return false;
    };
    const FakeDialogWindow standard;
    dialogs.window.places[1004] = {119, 64, 592, 80};   // as a system font that has grown lays it out
    dialogs.window.places[0] = {-100, -200, 720, 492};
    Chosen();
    EXPECT_EQ(places[1004], standard.places.at(1004));
    EXPECT_EQ(places[0], (Ports::DialogRect{50, -36, 420, 164}));
}

TEST_F(Dialog, GrowsWithItsTexts)
{
    dialogs.window.textWidths = {{1004, 500}, {1, 150}};
    Chosen();
    const auto& places = dialogs.window.places;
    EXPECT_GE(places.at(1004).width, 500);
    EXPECT_GE(places.at(0).width, places.at(1004).left + places.at(1004).width);
    EXPECT_GE(places.at(1).width, 150);
    EXPECT_LE(places.at(1).left + places.at(1).width, places.at(0).width);
}

TEST_F(Dialog, HasTextsOfEveryLanguageOfTheSuite)
{
    constexpr const wchar_t* kNames[] = {
        L"br", L"cs", L"ct", L"cz", L"de", L"en", L"es", L"fr", L"it", L"jp", L"nl", L"pl", L"ru", L"sv", L"tr"};
    std::set<std::vector<TvlString>> all;
    for (const wchar_t* const name : kNames) {
        const std::vector<TvlString>& captions = LanguageCaptions(name);
        ASSERT_EQ(captions.size(), 4u);
        EXPECT_TRUE(name == std::wstring(L"en") || captions != LanguageCaptions(L"en")) << name;
        EXPECT_GE(captions[2].Find(L'&'), 0) << name << ": the check box has a key";
        all.insert(captions);
    }
    EXPECT_EQ(all.size(), 14u) << "both kinds of Chinese share theirs";
    EXPECT_EQ(LanguageCaptions(L"ru")[3], L"\x041E\x041A") << "in Cyrillic letters";
    EXPECT_EQ(LanguageCaptions(L"de")[1],
        L"W\x00E4hlen Sie die Sprache, die Sie verwenden m\x00F6"
        "chten:");
    EXPECT_EQ(LanguageCaptions(L"xx"), LanguageCaptions(L"en")) << "a language without texts of its own";
}

}   // namespace

#include "siblings/TvlCharacter/CGlbLang.h"

#include <gtest/gtest.h>

namespace {
struct Row {
    const wchar_t* code;
    LANGID id;
    bool simplified = false;
    bool traditional = false;
    bool farEast = false;
    bool rightToLeft = false;
};

// Windows' own ids and abbreviations: the languages of the suite and others of interest.
constexpr Row kRows[] = {
    {L"ENU", 0x0409},
    {L"DEU", 0x0407},
    {L"FRA", 0x040C},
    {L"ESP", 0x040A},
    {L"ITA", 0x0410},
    {L"PTB", 0x0416},
    {L"NLD", 0x0413},
    {L"PLK", 0x0415},
    {L"CSY", 0x0405},
    {L"RUS", 0x0419},
    {L"SVE", 0x041D},
    {L"TRK", 0x041F},
    {L"JPN", 0x0411, false, false, true},
    {L"CHS", 0x0804, true, false, true},
    {L"CHT", 0x0404, false, true, true},
    {L"ZHI", 0x1004, true, false, true},
    {L"ZHH", 0x0C04, false, true, true},
    {L"ZHM", 0x1404, false, true, true},
    {L"KOR", 0x0412, false, false, true},
    {L"ENG", 0x0809},
    {L"DEA", 0x0C07},
    {L"ESN", 0x0C0A},
    {L"PTG", 0x0816},
    {L"ARA", 0x0401, false, false, false, true},
    {L"HEB", 0x040D, false, false, false, true},
    {L"URD", 0x0420, false, false, false, true},
    {L"FAR", 0x0429, false, false, false, true},
};

TEST(CGlbLang, HasWindowsIdsBothWays)
{
    for (const Row& row : kRows) {
        CGlbLang language;
        EXPECT_TRUE(language.SetFromIO_StrFmt(row.code));
        EXPECT_EQ(language.GetIO_StrFmt(), row.code);
        EXPECT_EQ(language.GetWinLangID(), row.id) << row.code;
        CGlbLang back;
        back.SetFromWinLangID(row.id);
        EXPECT_EQ(back, language) << row.code;
        EXPECT_EQ(language.IsCS(), row.simplified) << row.code;
        EXPECT_EQ(language.IsCT(), row.traditional) << row.code;
        EXPECT_EQ(language.IsFarEast(), row.farEast) << row.code;
        EXPECT_EQ(language.IsRTL(), row.rightToLeft) << row.code;
    }
}

TEST(CGlbLang, EveryIdGivesACodeThatLeadsBackToItsGroup)
{
    int known = 0;
    for (unsigned id = 0; id <= 0xFFFF; ++id) {
        CGlbLang language;
        language.SetFromWinLangID(static_cast<LANGID>(id));
        if (!language)
            continue;
        ++known;
        EXPECT_EQ(language.GetWinLangID() & 0x3FF, id & 0x3FF) << id;
        CGlbLang again;
        again.SetFromWinLangID(language.GetWinLangID());
        EXPECT_EQ(again, language) << id;
    }
    EXPECT_GT(known, 200);
    CGlbLang german;
    german.SetFromWinLangID(0x0007);   // neutral
    EXPECT_EQ(german.GetIO_StrFmt(), L"DEU");
}

TEST(CGlbLang, PacksThreeCharacters)
{
    const std::pair<const wchar_t*, ULONG> kCodes[] = {{L"ENU", 5590597}, {L"CHS", 5457987}, {L"CHT", 5523523},
        {L"enu", 5590597}, {L"A01", 0x313041}, {L"", 0}, {L"EN", 0}, {L"ENUS", 0}, {L"E U", 0}, {L"EN\x00DC", 0},
        {L"E\x0001U", 0}};
    for (const auto& [text, code] : kCodes) {
        CGlbLang language(1);
        EXPECT_EQ(language.SetFromIO_StrFmt(text), code != 0) << text;
        EXPECT_EQ(language.GetCode(), code) << text;
    }
    EXPECT_EQ(CGlbLang().GetIO_StrFmt(), L"");
    EXPECT_EQ(CGlbLang(0x313041).GetWinLangID(), 0);
}
}   // namespace

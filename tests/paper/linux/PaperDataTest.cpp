// Sizes of predefined papers against the tables of the printing system and of libpaper.
#include "../PaperFolders.h"

#include <cups/cups.h>
#include <cups/pwg.h>
#include <paper.h>

namespace {

class PaperData : public PaperFolders {
protected:
    static PaperTypeInformation Paper(int type)
    {
        PaperTypeInformation paper;
        EXPECT_TRUE(Papers().GetPaperInfoAt(type, paper)) << type;
        return paper;
    }
};

struct MediaRow {
    const char* name;   // of PWG 5101.1
    const wchar_t* paper;
};

TEST_F(PaperData, AgreesWithTheRegisterOfMediaNames)
{
    constexpr MediaRow kRows[] = {{"na_govt-letter_8x10in", L"Government letter"}, {"na_letter_8.5x11in", L"Letter"},
        {"na_legal_8.5x14in", L"Legal"}, {"na_ledger_11x17in", L"Tabloid"}, {"na_invoice_5.5x8.5in", L"Statement"},
        {"na_executive_7.25x10.5in", L"Executive"}, {"na_c_17x22in", L"ANSI C"}, {"na_d_22x34in", L"ANSI D"},
        {"na_e_34x44in", L"ANSI E"}, {"na_number-9_3.875x8.875in", L"Envelope No. 9"},
        {"na_number-10_4.125x9.5in", L"Envelope No. 10"}, {"na_number-11_4.5x10.375in", L"Envelope No. 11"},
        {"na_number-12_4.75x11in", L"Envelope No. 12"}, {"na_number-14_5x11.5in", L"Envelope No. 14"},
        {"na_monarch_3.875x7.5in", L"Envelope Monarch"}, {"na_personal_3.625x6.5in", L"Envelope Personal"},
        {"na_arch-a_9x12in", L"Arch A"}, {"na_arch-b_12x18in", L"Arch B"}, {"na_arch-c_18x24in", L"Arch C"},
        {"na_arch-d_24x36in", L"Arch D"}, {"na_arch-e_36x48in", L"Arch E"}, {"na_super-a_8.94x14in", L"Super A"},
        {"na_super-b_13x19in", L"Super B"}, {"na_oficio_8.5x13.4in", L"Oficio"}, {"na_quarto_8.5x10.83in", L"Quarto"},
        {"iso_2a0_1189x1682mm", L"2A0"}, {"iso_a0_841x1189mm", L"A0"}, {"iso_a3_297x420mm", L"A3"},
        {"iso_a4_210x297mm", L"A4"}, {"iso_a5_148x210mm", L"A5"}, {"iso_a10_26x37mm", L"A10"},
        {"iso_a4-extra_235.5x322.3mm", L"A4 Extra"}, {"iso_b0_1000x1414mm", L"B0 (ISO)"},
        {"iso_b4_250x353mm", L"B4 (ISO)"}, {"iso_b10_31x44mm", L"B10 (ISO)"}, {"iso_c3_324x458mm", L"Envelope C3"},
        {"iso_c6_114x162mm", L"Envelope C6"}, {"iso_c6c5_114x229mm", L"Envelope C6/C5"},
        {"iso_dl_110x220mm", L"Envelope DL"}, {"iso_ra0_860x1220mm", L"RA0"}, {"iso_sra0_900x1280mm", L"SRA0"},
        {"jis_b0_1030x1456mm", L"B0 (JIS)"}, {"jis_b3_364x515mm", L"B3 (JIS)"}, {"jis_b10_32x45mm", L"B10 (JIS)"},
        {"jpn_chou3_120x235mm", L"Envelope Chou 3"}, {"jpn_chou4_90x205mm", L"Envelope Chou 4"},
        {"jpn_kaku2_240x332mm", L"Envelope Kaku 2"}, {"jpn_you4_105x235mm", L"Envelope You 4"},
        {"prc_16k_146x215mm", L"PRC 16K"}, {"prc_32k_97x151mm", L"PRC 32K"},
        {"om_small-photo_100x150mm", L"Small photo"}, {"om_italian_110x230mm", L"Envelope Italian"},
        {"om_invite_220x220mm", L"Envelope Invitation"}};
    for (const auto& [name, wanted] : kRows) {
        const pwg_media_t* const media = pwgMediaForPWG(name);
        ASSERT_NE(media, nullptr) << name;
        int matches = 0;
        for (int type = 2; type < kPaperTypeCount; ++type) {
            const PaperTypeInformation paper = Paper(type);
            if (paper.DisplayName != wanted)
                continue;
            ++matches;
            // Their lengths are hundredths of a millimetre, cut.
            EXPECT_NEAR(paper.Width / 100, media->width, 1) << name;
            EXPECT_NEAR(paper.Height / 100, media->length, 1) << name;
        }
        EXPECT_EQ(matches, 1) << name;
    }
}

TEST_F(PaperData, AgreesWithLibpaperWhereBothNameAPaper)
{
    ASSERT_EQ(paperinit(), 0);
    int common = 0;
    for (const paper* known = paperfirst(); known; known = papernext(known)) {
        const std::string name = papername(known);
        for (int type = 2; type < kPaperTypeCount; ++type) {
            const PaperTypeInformation paper = Paper(type);
            const std::wstring wide(name.begin(), name.end());
            if (paper.DisplayName.CompareNoCase(wide) != 0)
                continue;
            ++common;
            constexpr double kBasePerPoint = 254000.0 / 72.0;
            constexpr double kMillimetre = 10000.0;   // points are whole or nearly so there
            EXPECT_NEAR(paper.Width, paperpswidth(known) * kBasePerPoint, kMillimetre) << name;
            EXPECT_NEAR(paper.Height, paperpsheight(known) * kBasePerPoint, kMillimetre) << name;
        }
    }
    paperdone();
    EXPECT_GT(common, 10);
}

}   // namespace

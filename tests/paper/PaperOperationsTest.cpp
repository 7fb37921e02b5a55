// Questions to the store and changes of it.
#include "PaperFolders.h"

#include <gmock/gmock.h>
#include <set>
#include <span>
#include <stdexcept>

namespace {

using testing::ElementsAre;

class PaperOperations : public PaperFolders { };

struct Listener : IListener {
    void Update(const TvlString& subject) override
    {
        EXPECT_EQ(subject, L"PaperTypeManager");
        ++updates;
    }
    int updates = 0;
};

TEST_F(PaperOperations, FindPapersBySize)
{
    PaperTypeInformation paper;
    EXPECT_EQ(Papers().FindPredefinedPaper(2970000, 2100000, paper), kPaperA4);
    EXPECT_EQ(paper.Width, 2100000) << "as it stands in the store";
    EXPECT_EQ(Papers().FindPredefinedPaperByName(2970000, 2100000, L"A4", paper), kPaperA4);
    EXPECT_EQ(Papers().FindPredefinedPaperByName(2970000, 2100000, L"a4", paper), -1);
    EXPECT_EQ(Papers().FindPredefinedPaperIndex(Custom(L"", 2970000, 2100000), false), -1);
    EXPECT_EQ(Papers().FindPredefinedPaperIndex(Custom(L"", 2970000, 2100000), true), kPaperA4);
    EXPECT_TRUE(Papers().IsPredefinedPaper(Custom(L"", 2970000, 2100000), true));
    EXPECT_EQ(Papers().FindPredefinedPaperIndex(kPaperA4), kPaperA4);
    EXPECT_EQ(Papers().GetPaperSize(kPaperA4), 210 * 297);
    EXPECT_EQ(Papers().GetPaperSize(kPaperLetter), 215 * 279);

    EXPECT_FALSE(Papers().GetPaperInfo(kPaperCustom, 1000, 2000, paper));
    EXPECT_TRUE(paper.Type == kPaperCustom && paper.Width == 1000 && paper.Height == 2000 && paper.Rotatable);
    Papers().AddCustomPaper(Custom(L"own", 1000, 2000), false);
    EXPECT_TRUE(Papers().GetPaperInfo(kPaperCustom, 1000, 2000, paper));
    EXPECT_EQ(paper.DisplayName, L"own");
    EXPECT_EQ(Papers().FindCustomPaper(2000, 1000, paper), -1) << "never turned";
    EXPECT_TRUE(Papers().IsCustomPaper(Custom(L"", 2000, 1000), true));
    EXPECT_FALSE(Papers().IsCustomPaper(Custom(L"", 2000, 1000), false));
    EXPECT_EQ(Papers().FindCustomPaperIndex(Custom(L"", 1000, 2000, 1)), -1) << "other units";
    EXPECT_EQ(Papers().FindCustomPaperIndex(Custom(L"", 1000, 2000)), 149);
    TvlString guid;
    EXPECT_TRUE(Papers().GetPaperGUIDAt(149, guid));
    EXPECT_EQ(Papers().FindPaperIndexByGUID(guid), 149);
    EXPECT_EQ(Papers().FindPaperIndexByGUID(L""), -1);
}

TEST_F(PaperOperations, RefuseWhatIsOutOfRange)
{
    PaperTypeInformation paper;
    TvlString text;
    for (const int index : {-1, 149, INT32_MAX, INT32_MIN}) {
        EXPECT_FALSE(Papers().GetPaperInfoAt(index, paper)) << index;
        EXPECT_FALSE(Papers().GetPaperNameAt(index, text)) << index;
        EXPECT_FALSE(Papers().GetPaperInfo(static_cast<PaperType>(index), paper)) << index;
        EXPECT_FALSE(Papers().GetPaperName(static_cast<PaperType>(index), text)) << index;
        EXPECT_FALSE(Papers().GetPaperGUIDAt(index, text)) << index;
        EXPECT_FALSE(Papers().IsHidden(index)) << index;
        EXPECT_EQ(Papers().GetPaperSize(static_cast<PaperType>(index)), 0) << index;
        EXPECT_EQ(Papers().CheckPaperTypeID(index), 0) << index;
        EXPECT_EQ(CPaperTypeMgr::GetTypeFromInt(index), kPaperCustom) << index;
    }
    EXPECT_EQ(Papers().CheckPaperTypeID(15), 15);
    EXPECT_EQ(CPaperTypeMgr::GetTypeFromInt(148), 148);
    // Types are places: the two forms are one operation.
    PaperTypeInformation same;
    TvlString name;
    EXPECT_TRUE(Papers().GetPaperInfo(static_cast<PaperType>(15), paper) && Papers().GetPaperInfoAt(15, same));
    EXPECT_EQ(paper.Width, same.Width);
    EXPECT_TRUE(Papers().GetPaperInfo(static_cast<PaperType>(15), 1, 2, paper)) << "sizes are those of the type";
    EXPECT_EQ(paper.Width, same.Width);
    EXPECT_TRUE(Papers().GetPaperName(static_cast<PaperType>(15), text) && Papers().GetPaperNameAt(15, name));
    EXPECT_STREQ(text.c_str(), name.c_str());
    EXPECT_FALSE(text.IsEmpty());
    const std::int64_t count = Papers().GetCount();
    Papers().SetLastPaperCustomTypeID(1234);
    EXPECT_EQ(Papers().GetLastPaperCustomTypeID(), 1234);
    EXPECT_EQ(Papers().GetCount(), count);
}

TEST_F(PaperOperations, TellListenersOfEdits)
{
    Listener listener;
    Papers().AddListener(&listener);
    EXPECT_TRUE(Papers().AddCustomPaper(Custom(L"a", 1, 1), true));
    EXPECT_TRUE(Papers().AddCustomPaper(Custom(L"a", 2, 2), true)) << "in the place of the first";
    EXPECT_EQ(Papers().GetCount(), 150);
    EXPECT_EQ(listener.updates, 2);
    EXPECT_TRUE(Papers().UpdateCustomPaper(Custom(L"a", 3, 3)));
    EXPECT_FALSE(Papers().UpdateCustomPaper(Custom(L"b", 3, 3)));
    EXPECT_EQ(listener.updates, 3);
    // The record's own number replaces the old one, so that the paper can't be found for deletion any more.
    EXPECT_FALSE(Papers().DeletePaper(Custom(L"", 3, 3)));
    Papers().DeletePaper(149, true);
    EXPECT_EQ(listener.updates, 4);
    Papers().AddMRUItem(4);
    EXPECT_EQ(listener.updates, 4);
    Papers().RemoveListener(&listener);
    Papers().AddCustomPaper(Custom(L"a", 1, 1), true);
    EXPECT_EQ(listener.updates, 4);
}

TEST_F(PaperOperations, MoveNumbersDownBehindADeletedPaper)
{
    for (const wchar_t* name : {L"a", L"b", L"c"})
        Papers().AddCustomPaper(Custom(name, 1000 + *name, 2000), true);
    EXPECT_EQ(Papers().GetLastPaperCustomTypeID(), 151);
    Papers().AddMRUItem(150);
    Papers().AddMRUItem(151);
    Papers().DeletePaper(150, true);
    EXPECT_EQ(Papers().GetLastPaperCustomTypeID(), 0);
    PaperTypeInformation paper;
    ASSERT_TRUE(Papers().GetPaperInfoAt(150, paper));
    EXPECT_EQ(paper.DisplayName, L"c");
    EXPECT_EQ(paper.CustomId, 150);
    EXPECT_EQ(Papers().GetPaperOrder().back(), 150);
    EXPECT_EQ(Papers().GetPaperOrder().size(), 151u);
    EXPECT_EQ(Papers().GetMRUList().front(), 150);
    EXPECT_EQ(Papers().GetMRUList().size(), 4u);

    // A predefined paper of the same size goes first, and is only hidden.
    Papers().AddCustomPaper(Custom(L"own A4", 2100000, 2970000), true);
    EXPECT_TRUE(Papers().DeletePaper(Custom(L"", 2100000, 2970000)));
    EXPECT_TRUE(Papers().IsHidden(kPaperA4));
    EXPECT_EQ(Papers().GetCount(), 152);
    EXPECT_TRUE(Papers().DeletePaper(Custom(L"", 2100000, 2970000)));
    EXPECT_EQ(Papers().GetCount(), 151);

    Papers().ResetCustomPaperTypeOrder();
    EXPECT_EQ(Papers().GetPaperOrder().back(), 150);
    Papers().DeletePaper(-1, true);
    Papers().DeletePaper(9999, false);
    EXPECT_EQ(Papers().GetCount(), 151);
}

TEST_F(PaperOperations, KeepTheListOfPapersUsedLast)
{
    for (const std::int64_t index : {3, 4, 5})
        Papers().RemoveMRUItem(index);
    for (const std::int64_t index : {7, 8, 7})
        Papers().AddMRUItem(index);
    const auto list = Papers().GetMRUList();
    EXPECT_THAT(std::vector(list.begin(), list.end()), ElementsAre(7, 8));
    Papers().AddMRUItem(9);
    Papers().SetMaxMRUSize(10);
    EXPECT_EQ(Papers().GetMRUList().size(), 50u) << "filled up to the limit that was";
    EXPECT_EQ(Papers().GetMRUList().back(), 0);
    Papers().AddMRUItem(11);
    EXPECT_EQ(Papers().GetMRUList().size(), 50u);
    Papers().SetMaxMRUSize(-5);
    EXPECT_EQ(Papers().GetMaxMRUSize(), 0);
    Papers().AddMRUItem(12);
    EXPECT_EQ(Papers().GetMRUList().size(), 10u);
    Papers().SetMaxMRUSize(INT64_MAX);
    EXPECT_THROW(Papers().SetMaxMRUSize(10), std::length_error) << "no list is so long";
    EXPECT_EQ(Papers().GetMRUList().size(), 10u);
}

// DMPAPER_ constants of the platform's headers, in tenths of a millimetre.
struct CodeCase {
    int code;
    int width;
    int height;
};
constexpr int Tenths(double inches) { return static_cast<int>(inches * 254 + 0.5); }
const CodeCase kCodes[] = {{1, Tenths(8.5), 2794}, {2, Tenths(8.5), 2794}, {3, 2794, 4318}, {4, 4318, 2794},
    {5, Tenths(8.5), Tenths(14)}, {6, Tenths(5.5), Tenths(8.5)}, {7, Tenths(7.25), Tenths(10.5)}, {8, 2970, 4200},
    {9, 2100, 2970}, {10, 2100, 2970}, {11, 1480, 2100}, {14, Tenths(8.5), Tenths(13)}, {15, 2150, 2750},
    {16, Tenths(10), Tenths(14)}, {17, 2794, 4318}, {18, Tenths(8.5), 2794}, {19, Tenths(3.875), Tenths(8.875)},
    {20, Tenths(4.125), Tenths(9.5)}, {21, Tenths(4.5), Tenths(10.375)}, {22, Tenths(4.75), 2794},
    {23, Tenths(5), Tenths(11.5)}, {24, Tenths(17), Tenths(22)}, {25, Tenths(22), Tenths(34)},
    {26, Tenths(34), Tenths(44)}, {27, 1100, 2200}, {28, 1620, 2290}, {29, 3240, 4580}, {30, 2290, 3240},
    {31, 1140, 1620}, {32, 1140, 2290}, {33, 2500, 3530}, {34, 1760, 2500}, {35, 1760, 1250}, {36, 1100, 2300},
    {37, Tenths(3.875), Tenths(7.5)}, {38, Tenths(3.625), Tenths(6.5)}, {39, Tenths(14.875), 2794},
    {40, Tenths(8.5), Tenths(12)}, {41, Tenths(8.5), Tenths(13)}, {42, 2500, 3530}, {44, Tenths(9), 2794},
    {45, Tenths(10), 2794}, {46, Tenths(15), 2794}, {47, 2200, 2200}, {52, Tenths(11.69), Tenths(18)},
    {53, Tenths(9.27), Tenths(12.69)}, {55, 2100, 2970}, {57, 2270, 3560}, {58, 3050, 4870},
    {59, Tenths(8.5), Tenths(12.69)}, {61, 1480, 2100}, {62, 1820, 2570}, {63, 3220, 4450}, {64, 1740, 2350},
    {66, 4200, 5940}, {67, 2970, 4200}, {68, 3220, 4450}, {69, 2000, 1480}, {70, 1050, 1480}, {79, 3640, 2570},
    {80, 2570, 1820}, {81, 1480, 1000}};
// Deliberately other than the constants, as docs/papers.md lists them.
const CodeCase kOtherCodes[] = {{12, 2500, 3530}, {13, 1760, 2500}, {50, Tenths(9), Tenths(12)},
    {51, Tenths(9), Tenths(15)}, {54, Tenths(8.5), 2794}, {56, Tenths(9), Tenths(12)}, {60, 2100, 3000},
    {65, 2100, 2760}, {75, Tenths(8.5), 2794}, {76, 2970, 4200}, {77, 2100, 2970}, {78, 1480, 2100}, {82, 2000, 1480},
    {83, 1050, 1480}};

TEST_F(PaperOperations, LeadPrinterCodesToTheSizesOfTheirConstants)
{
    std::set<int> codes = {43, 48, 49, 71, 72, 73, 74};   // without a paper
    for (const auto& table : {std::span<const CodeCase>(kCodes), std::span<const CodeCase>(kOtherCodes)})
        for (const auto& [code, width, height] : table) {
            const PaperTypeInformation paper = CPaperTypeMgr::GetPaperFromDevMode(code);
            EXPECT_NEAR(paper.Width, width * 1000, 500) << code;
            EXPECT_NEAR(paper.Height, height * 1000, 500) << code;
            EXPECT_TRUE(codes.insert(code).second) << code;
        }
    EXPECT_EQ(codes.size(), 83u) << "each code is in one of the tables";
    for (const int code : {0, -1, 43, 48, 49, 71, 72, 73, 74, 84, 256, INT32_MAX, INT32_MIN})
        EXPECT_EQ(CPaperTypeMgr::GetPaperFromDevMode(code).Units, 0) << code;
}

TEST_F(PaperOperations, GiveCodesBackThatLeadToTheSamePaper)
{
    constexpr int kNone = 256;
    for (int type = -2; type < kPaperTypeCount + 2; ++type) {
        const int code = CPaperTypeMgr::GetDevModeFromPaper(static_cast<PaperType>(type));
        EXPECT_TRUE(code == kNone || (type >= 3 && type <= 41)) << type;
        EXPECT_TRUE(code == kNone || CPaperTypeMgr::GetPaperFromDevMode(code).Type == type) << type;
    }
    EXPECT_EQ(CPaperTypeMgr::GetDevModeFromPaper(kPaperA4), 9);
    EXPECT_EQ(CPaperTypeMgr::GetDevModeFromPaper(static_cast<PaperType>(9)), kNone);
}

TEST_F(PaperOperations, WriteSizesAsText)
{
    PaperTypeInformation paper;
    Papers().GetPaperInfo(kPaperA4, paper);
    EXPECT_EQ(TvlUtl::GetPageDimensions(paper), L"210 \u00D7 297 millimeters");
    Papers().GetPaperInfo(kPaperLetter, paper);
    EXPECT_EQ(TvlUtl::GetPageDimensions(paper), L"8.5 \u00D7 11 inches.");
    Papers().GetPaperInfo(kPaperNone, paper);
    EXPECT_EQ(TvlUtl::GetPageDimensions(paper), L"");
}

TEST_F(PaperOperations, FollowTheLocalesUsualPaper)
{
    struct Row {
        const wchar_t* setting;
        int type;
    };
    for (const Row& row : {Row{L"1", 3}, {L"5", 4}, {L"8", 14}, {L"9", 15}, {L"7", -5}, {L"", -5}, {L"x", -5}}) {
        locale.settings[Ports::LocaleSetting::PaperSize] = row.setting;
        auto type = static_cast<PaperType>(-5);
        EXPECT_EQ(OSUtils::LocaleEnvironment::GetPaperType(type), row.type >= 0);
        EXPECT_EQ(type, row.type);
    }
    locale.settings.clear();
    EXPECT_EQ(OSUtils::LocaleEnvironment::GetUnits(), 2u);
}

}   // namespace

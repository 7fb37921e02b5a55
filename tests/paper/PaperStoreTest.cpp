// The user's file: reading, writing, and what becomes of it when the master or the file itself changes.
#include "PaperFolders.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <algorithm>
#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class PaperStore : public PaperFolders { };

std::vector<std::int64_t> List(const CPaperTypeMgr::Indices& indices) { return {indices.begin(), indices.end()}; }

TEST_F(PaperStore, StartsAsACopyOfTheMaster)
{
    EXPECT_EQ(Papers().GetCount(), kPaperTypeCount);
    EXPECT_EQ(Papers().GetPredefinedCount(), kPaperTypeCount);
    EXPECT_TRUE(std::filesystem::exists(User()));
    PaperTypeInformation paper;
    for (int type = 0; type < kPaperTypeCount; ++type) {
        ASSERT_TRUE(Papers().GetPaperInfoAt(type, paper));
        EXPECT_EQ(paper.Type, type);
        EXPECT_FALSE(paper.Hidden) << type;
        EXPECT_FALSE(paper.DisplayName.IsEmpty()) << type;
        EXPECT_EQ(paper.PaperGuid.GetLength(), 36) << type;
        EXPECT_EQ(paper.Width > 0 && paper.Height > 0, type > 1) << type;
    }
    EXPECT_EQ(Papers().GetPaperOrder().size(), 149u);
    EXPECT_EQ(Papers().GetPaperOrder(), Papers().GetPaperDisplayOrder());
    EXPECT_THAT(List(Papers().GetMRUList()), ElementsAre(3, 4, 5));
    EXPECT_EQ(Papers().GetMaxMRUSize(), 50);
}

TEST_F(PaperStore, KeepsWhatTheUserChanged)
{
    PaperTypeInformation a4;
    ASSERT_TRUE(Papers().GetPaperInfo(kPaperA4, a4));
    EXPECT_TRUE(Papers().DeletePaper(a4));
    Papers().AddCustomPaper(Custom(L"größe <&> \"\x4E2D\"", 1234567, 7654321), true);
    Papers().AddCustomPaper(Custom(L"inches", 254000, 508000, 1), false);
    PaperTypeInformation pixels = Custom(L"pixels", 254000 * 5, 254000 * 4, 6);
    pixels.ResolutionX = pixels.ResolutionY = 3779528;   // 96 to an inch
    Papers().AddCustomPaper(pixels, false);
    Papers().AddMRUItem(20);
    Restart();

    PaperTypeInformation paper;
    EXPECT_EQ(Papers().GetCount(), 152);
    EXPECT_TRUE(Papers().IsHidden(kPaperA4));
    ASSERT_TRUE(Papers().GetPaperInfoAt(149, paper));
    EXPECT_EQ(paper.DisplayName, L"größe <&> \"\x4E2D\"");
    EXPECT_EQ(paper.Width, 1234567);
    EXPECT_EQ(paper.Height, 7654321);
    EXPECT_EQ(paper.CustomId, 149);
    ASSERT_TRUE(Papers().GetPaperInfoAt(151, paper));
    EXPECT_EQ(paper.Units, 6);
    EXPECT_EQ(paper.Width, 254000 * 5);
    EXPECT_EQ(paper.ResolutionX, 3779528);
    EXPECT_THAT(List(Papers().GetMRUList()), ElementsAre(20, 3, 4, 5));
    // What is equal to its default is not written.
    const std::string file = FileBytes(User());
    EXPECT_THAT(file,
        HasSubstr("<size id=\"0\" customid=\"150\" name=\"inches\" nameid=\"0\" width=\"1\" height=\"2\" "
                  "units=\"in\" fixedorientation=\"true\" />"));
    EXPECT_THAT(file,
        HasSubstr("<size id=\"15\" customid=\"0\" name=\"A4\" nameid=\"15\" width=\"210\" height=\"297\" units=\"mm\" "
                  "hidden=\"true\" />"));
}

struct SizeCase {
    const char* size;
    bool isRead;
    int width;
};

TEST_F(PaperStore, RefusesPapersThatCannotBe)
{
    const SizeCase kCases[] = {
        {R"(<size name="a" width="1" height="1" dpi="0"/>)", false, 0},
        {R"(<size name="a" width="1" height="1"/>)", true, 254000},
        {R"(<size name="a" width="10" height="1" units="MM"/>)", true, 100000},
        {R"(<size name="a" width="1" height="1" units="cm"/>)", false, 0},
        {R"(<size name="a" width="0" height="0"/>)", true, 0},
        {R"(<size name="a" width="-1" height="1"/>)", false, 0},
        {R"(<size name="a" width="96" height="1" units="px"/>)", true, 254000},
        {R"(<size name="a" width="1" height="1" units="px" dpi="-3"/>)", false, 0},
        {R"(<size name="a" width="1e300" height="1"/>)", true, INT32_MIN},
        {R"(<size name="a" width="10.0e400" height="1"/>)", true, INT32_MIN},
        {R"(<size name="a" width="0.001E+400" height="1"/>)", true, INT32_MIN},
        {R"(<size name="a" width="1000e-99999999999999999999" height="1"/>)", true, 0},
        {R"(<size name="a" width="0.1e-400" height="1"/>)", true, 0},
        {R"(<size name="a" width="nan" height="1"/>)", true, 0},
        {R"(<size name="a" width="8,5" height="1"/>)", true, 0},
        {R"(<size name="a" width="1" height="1" units="px" dpi="2147483647"/>)", true, 0},
    };
    for (const auto& [size, isRead, width] : kCases) {
        Write(User(), "<PageSizes><CustomPageSizes>" + std::string(size) + "</CustomPageSizes></PageSizes>");
        CPaperTypeMgr::ReleaseInstance(false);
        PaperTypeInformation paper;
        EXPECT_EQ(Papers().GetPaperInfoAt(0, paper), isRead) << size;
        EXPECT_EQ(paper.Width, width) << size;
    }
}

TEST_F(PaperStore, TakesANewerMasterOver)
{
    PaperTypeInformation a4;
    Papers().GetPaperInfo(kPaperA4, a4);
    Papers().DeletePaper(a4);
    Papers().AddCustomPaper(Custom(L"second", 20000, 30000), true);
    Papers().AddCustomPaper(Custom(L"first", 10000, 30000), true);
    Restart();
    const std::string before = FileBytes(User());
    CPaperTypeMgr::ReleaseInstance(false);

    Replace(Master(), "preset_version=\"1\"", "preset_version=\"2\"");
    Replace(Master(), "name=\"Letter\" nameid=\"3\" width=\"8.5\"", "name=\"Letter\" nameid=\"3\" width=\"8.25\"");
    std::filesystem::last_write_time(Master(), std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));
    PaperTypeInformation paper;
    ASSERT_TRUE(Papers().GetPaperInfo(kPaperLetter, paper));
    EXPECT_EQ(paper.Width, 2095500);
    EXPECT_TRUE(Papers().IsHidden(kPaperA4));
    EXPECT_EQ(Papers().FindCustomPaperIndex(L"second"), 149);
    EXPECT_EQ(Papers().FindCustomPaperIndex(L"first"), 150);
    EXPECT_EQ(FileBytes(Backup()), before);
    EXPECT_THAT(FileBytes(User()), HasSubstr("preset_version=\"2\""));
}

TEST_F(PaperStore, LeavesTheFileAloneWhenTheMasterIsNoNewer)
{
    Papers();
    Restart();
    const std::string before = FileBytes(User());
    Replace(Master(), "\"Letter\"", "\"Changed\"");
    std::filesystem::last_write_time(Master(), std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));
    Papers();
    EXPECT_EQ(FileBytes(User()), before);
    EXPECT_FALSE(std::filesystem::exists(Backup()));
}

TEST_F(PaperStore, NeverWritesOverAFileThatItCannotRead)
{
    for (const std::string& bytes :
        {std::string("<PageSizes><sizes>"), std::string(), std::string("\0\0\0", 3), "<a>" + std::string(1000, '<'),
            std::string("<!DOCTYPE x [<!ENTITY e SYSTEM \"file:///etc/passwd\">]>&e;")}) {
        Write(User(), bytes);
        CPaperTypeMgr::ReleaseInstance(false);
        EXPECT_EQ(Papers().GetCount(), 0) << bytes.substr(0, 20);
        Restart();
        EXPECT_EQ(FileBytes(User()), bytes);
    }
    std::string deep;
    for (int i = 0; i < 30000; ++i)
        deep += "<a>";
    for (int i = 0; i < 30000; ++i)
        deep += "</a>";
    Write(User(), deep);
    EXPECT_EQ(Papers().GetCount(), 0);
}

TEST_F(PaperStore, ComesBackAfterAnIdThatRaises)
{
    Write(User(), R"(<PageSizes><sizes><size id="7" width="1" height="1"/></sizes></PageSizes>)");
    EXPECT_THROW(Papers(), std::out_of_range);
    EXPECT_FALSE(CPaperTypeMgr::HasInstance());
    std::filesystem::remove(User());
    EXPECT_EQ(Papers().GetCount(), kPaperTypeCount);
}

TEST_F(PaperStore, IsEmptyWithoutAnyFile)
{
    std::filesystem::remove(Master());
    EXPECT_EQ(Papers().GetCount(), 0);
    PaperTypeInformation paper;
    EXPECT_EQ(Papers().FindPredefinedPaper(1, 1, paper), -1);
    EXPECT_FALSE(Papers().GetPaperInfo(kPaperA4, paper));
    Restart();
    EXPECT_FALSE(std::filesystem::exists(User()));
}

TEST_F(PaperStore, OffersPapersInTheOrderOfTheCountry)
{
    struct Row {
        const wchar_t* country;
        const wchar_t* system;   // "1" for inches
        std::int64_t first;      // paper behind the one without dimensions
    };
    for (const Row& row :
        {Row{L"US", L"0", 3}, {L"DE", L"1", 15}, {L"XX", L"1", 3}, {L"XX", L"0", 15}, {L"", L"", 15}}) {
        locale.settings[Ports::LocaleSetting::CountryCode] = row.country;
        locale.settings[Ports::LocaleSetting::MeasurementSystem] = row.system;
        CPaperTypeMgr::ReleaseInstance(false);
        EXPECT_EQ(*std::next(Papers().GetPaperOrder().begin()), row.first) << TvlPlatform::ToUtf8(row.country);
    }
}

TEST_F(PaperStore, HidesWhatAnOrderLeavesOut)
{
    std::string pages;
    for (int i = 0; i < 60; ++i)
        pages += "<page>" + std::to_string(3 + i % 3) + "</page>";
    Write(User(),
        R"(<PageSizes><sizes><size id="0"/><size id="1"/><size id="2"/><size id="3" hidden="true"/></sizes>)"
        R"(<pageset system="imperial"><order><p>2</p><p>-1</p><p>9</p><p>x</p><p>3</p></order><mru>)"
            + pages + "</mru></pageset></PageSizes>");
    EXPECT_THAT(List(Papers().GetPaperOrder()), ElementsAre(2));
    for (const int index : {0, 1, 3})
        EXPECT_TRUE(Papers().IsHidden(index)) << index;
    EXPECT_EQ(Papers().GetMaxMRUSize(), 60);
    EXPECT_EQ(Papers().GetMRUList().size(), 20u) << "what is no paper of the store is left out";
}

TEST_F(PaperStore, ReadsAMeasuringSystemOfAnyText)
{
    for (const char* name : {"it's", "']/*[", "metric", "\"", "a b"}) {
        Write(User(),
            std::string("<PageSizes><locales><l geoid=\"US\">") + name
                + "</l></locales><sizes><size id=\"0\"/></sizes></PageSizes>");
        CPaperTypeMgr::ReleaseInstance(false);
        EXPECT_EQ(Papers().GetCount(), 1) << name;
        Restart();
    }
}

}   // namespace

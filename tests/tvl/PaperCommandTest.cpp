// tvl paper: the store from outside.
#include "ChildProcess.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;

class PaperCommand : public testing::Test {
protected:
    ChildResult Paper(std::vector<std::string> arguments, const std::string& input = {}) const
    {
        arguments.insert(arguments.begin(), "paper");
        const std::string folder = m_folder.Path().string();
        return RunProgram(
            {"tvl", arguments, input, {{"TVL_USER_DIR", folder}, {"TVL_REGISTRY", folder + "/r.db"}}, {}});
    }

    ScratchFolder m_folder;
};

TEST_F(PaperCommand, KeepsPapersOfTheUsersOwn)
{
    EXPECT_THAT(Paper({"find", "297", "210"}).output, HasSubstr("A4"));
    EXPECT_EQ(Paper({"find", "1", "2"}).exitCode, 2);
    EXPECT_EQ(Paper({"add", "größer", "100", "200"}).exitCode, 0);
    EXPECT_THAT(Paper({"find", "200", "100"}).output, HasSubstr("größer"));
    EXPECT_EQ(Paper({"add", "none", "0", "200"}).exitCode, 2);
    EXPECT_THAT(
        Paper({"import"}, "A4,210,297,mm\n# remark\nOdd,300,301,mm\nPt 100 200\n*PaperDimension E/E: \"30 40\"\n")
            .output,
        HasSubstr("3 papers added"));
    EXPECT_THAT(Paper({"list", "--all", "--json"}).output, HasSubstr("\"name\":\"Pt\""));
    EXPECT_EQ(Paper({"delete", "größer"}).exitCode, 0);
    EXPECT_EQ(Paper({"delete", "größer"}).exitCode, 2);
    EXPECT_EQ(Paper({"hide", "a4"}).exitCode, 0);
    EXPECT_THAT(Paper({"list"}).output, testing::Not(HasSubstr(" A4  ")));
    EXPECT_EQ(Paper({"range", "1-3,5~", "--pages", "10"}).output.substr(0, 11), "1 2 3 5 7 9");
}

TEST_F(PaperCommand, ImportsNamesWithBlanksAndNoSizeThatCannotBeKept)
{
    const std::string table = "Super X, 333 ,444,mm\nBig,1e300,5,mm\nTiny,0.00001,5,mm\nnan,nan,5,mm\n,7,8,mm\n";
    EXPECT_EQ(Paper({"import", "--json"}, table).output.substr(0, 11), "{\"added\":1}");
    EXPECT_THAT(Paper({"find", "444", "333"}).output, HasSubstr("Super X"));
}

TEST_F(PaperCommand, SaysWhenNothingIsKept)
{
    EXPECT_EQ(Paper({"add", "", "10", "20"}).exitCode, 2);
    EXPECT_EQ(Paper({"add", "a\nb", "10", "20"}).exitCode, 2);
    EXPECT_NE(Paper({"range", "1-", "--pages", "4000000000"}).exitCode, 0);
    const auto file = m_folder.Path() / "Config" / "PaperTypes.xml";
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file) << "<PageSizes><sizes>";
    for (const char* command : {"list", "default"})
        EXPECT_EQ(Paper({command}).exitCode, 2) << command;
    EXPECT_EQ(Paper({"add", "own", "10", "20"}).exitCode, 2);
    // 2 million pixels are more than the file holds: they run over when they are written.
    std::ofstream(file) << R"(<PageSizes><sizes/><CustomPageSizes><size name="wide" width="2000000" height="1" )"
                           R"(units="px" dpi="1000"/></CustomPageSizes></PageSizes>)";
    const ChildResult result = Paper({"add", "own", "10", "20"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.output, testing::Not(HasSubstr("own")));
}

TEST_F(PaperCommand, FindsFaultsInFiles)
{
    const auto file = m_folder.Path() / "papers.xml";
    std::ofstream(file)
        << R"(<PageSizes><sizes><size id="3" width="1" height="x" dpi="0"/><size id="3" width="1" height="1"/>)"
           R"(<size id="200" width="1" height="1" units="cm"/></sizes><CustomPageSizes>)"
           R"(<size width="9000" height="1" units="px" dpi="21475"/></CustomPageSizes>)"
           R"(<pageset system="imperial"><order><page>3</page><page>4</page></order></pageset></PageSizes>)";
    const ChildResult result = Paper({"lint", file.string()});
    EXPECT_EQ(result.exitCode, 2);
    for (const char* fault : {"\"x\" is no number", "resolution 0", "3 stands there twice",
             "\"200\" is none of 0 to 148", "\"cm\" is none of", "the id 0 is missing", "\"metric\" is missing",
             "the id 3 is beyond the number of papers, 3", "the width 9000 is out of range", "resolution 21475",
             "\"4\" is no place"})
        EXPECT_THAT(result.output, HasSubstr(fault));
    EXPECT_THAT(Paper({"lint", file.string(), "--json"}).output, testing::StartsWith("[\"size 1"));
    EXPECT_EQ(Paper({"lint", (m_folder.Path() / "none").string()}).exitCode, 2);
}

}   // namespace

// tvl step and the user's own units, in a user's folder of the test's own.
#include "ChildProcess.h"
#include "FaultWalk.h"
#include "siblings/TvlUtils/FileLayer.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr int kBadInput = 2;

class CustomUnitsCommands : public testing::Test {
protected:
    ChildResult Run(const std::vector<std::string>& arguments, std::size_t lastFileOperation = 0) const
    {
        std::map<std::string, std::string> environment{{"TVL_USER_DIR", m_folder.Path().string()}};
        if (lastFileOperation > 0)
            environment["TVL_FILE_STOP_AT"] = std::to_string(lastFileOperation);
        ChildResult result = RunProgram({"tvl", arguments, {}, environment});
        for (std::string* const text : {&result.output, &result.errors})
            std::erase(*text, '\r');
        return result;
    }
    std::string Output(const std::vector<std::string>& arguments) const
    {
        const ChildResult result = Run(arguments);
        EXPECT_EQ(result.exitCode, 0) << testing::PrintToString(arguments) << result.errors;
        return result.output;
    }
    void ExpectRefused(const std::vector<std::string>& arguments, const char* message) const
    {
        const ChildResult result = Run(arguments);
        EXPECT_EQ(result.exitCode, kBadInput) << testing::PrintToString(arguments);
        EXPECT_THAT(result.errors, HasSubstr(message));
        EXPECT_EQ(result.output, "");
    }
    void Write(const std::string& records) const
    {
        std::ofstream(m_folder.Path() / "CustomUnits.txt", std::ios::binary) << "TvlCustomUnits 1\n" << records;
    }
    std::string File() const { return FileBytes(m_folder.Path() / "CustomUnits.txt"); }

private:
    ScratchFolder m_folder;
};

TEST_F(CustomUnitsCommands, StepMeasures)
{
    EXPECT_EQ(Output({"step", "3.2", "in", "--up", "--locale", "en-US"}), "3.21 in\n");
    EXPECT_EQ(
        Output({"step", "-3.2", "in", "--down", "--level", "large", "--count", "3", "--locale", "de-DE"}), "-3,5 in\n");
    EXPECT_EQ(Output({"step", "3", "in", "--like", "5", "mm", "--json", "--locale", "en-US"}),
        "{\"value\":3.0,\"unit\":1,\"step\":0.2,\"result\":3.2,\"text\":\"3.2 in\"}\n");
    ExpectRefused({"step", "nan", "in"}, "no finite number");
    ExpectRefused({"step", "3", "furlong"}, "is no unit");
    ExpectRefused({"step", "3", "rad"}, "plain measure");
}

TEST_F(CustomUnitsCommands, KeepUnits)
{
    EXPECT_EQ(Output({"units", "add", "fur", "220", "yd", "--plural", "furlongs", "--steps", "0.5", "1", "2"}),
        "42  fur,fur,furlongs,fur,220.000000,16,0.500000,1.000000,2.000000,0\n");
    EXPECT_THAT(Output({"units", "add", "league", "24", "FURLONGS"}), StartsWith("43  league,"));
    EXPECT_THAT(Output({"units", "add", "chain", "0.1", "42"}), StartsWith("44  chain,"));
    EXPECT_EQ(Output({"step", "7", "fur", "--locale", "en-US"}), "8 fur\n");
    ExpectRefused({"units", "add", "fur", "2", "in"}, "already");
    ExpectRefused({"units", "add", "x", "1e-9", "in"}, "six decimals");
    ExpectRefused({"units", "add", "x", "inf", "in"}, "finite");
    ExpectRefused({"units", "add", "x,y", "2", "in"}, "comma");
    ExpectRefused({"units", "add", std::string(21, 'x'), "2", "in"}, "20 characters");
    ExpectRefused({"units", "remove", "fur"}, "43 is based on");
    EXPECT_EQ(Output({"units", "remove", "league"}), "");
    EXPECT_EQ(Output({"units", "lint"}), "");
    EXPECT_EQ(Output({"units", "list"}),
        "42  fur,fur,furlongs,fur,220.000000,16,0.500000,1.000000,2.000000,0\n"
        "43  chain,chain,chain,chain,0.100000,42,0.000000,0.000000,0.000000,0\n");
}

TEST_F(CustomUnitsCommands, RemoveAUnitOrNoneWhereverTheyAreKilled)
{
    const std::string others = "bbx,b,c,d,2.000000,1,0.000000,0.000000,0.000000,0\nccx,b,c,d,3.000000,";
    const std::string steps = ",0.000000,0.000000,0.000000,0\n";
    const std::string before = "aax,b,c,d,1.000000,1" + steps + others + "43" + steps;
    WalkFaultPoints(8, [&](std::size_t point) {
        Write(before);
        const int exitCode = Run({"units", "remove", "aax"}, point).exitCode;
        const bool isKilled = exitCode == TvlUtils::SystemIO::kFileStopExitCode;
        EXPECT_TRUE(exitCode == 0 || isKilled) << exitCode;
        const bool isRemoved = File() == "TvlCustomUnits 1\n" + others + "42" + steps;
        EXPECT_TRUE(isRemoved || (isKilled && File() == "TvlCustomUnits 1\n" + before)) << File();
        return isKilled;
    });
}

TEST_F(CustomUnitsCommands, FindWhatIsWrong)
{
    const std::string records = "a,b,c,d\na,b,c,d,1e-9,1\ne,b,c,d,1e-5,1\nf,b,c,d,1.0000001,1\n"
                                "g,b,c,d,nan,1\nh,b,c,d,2,46\ni,b,c,d,1,1,0,0,0,99\n"
        + std::string(25, 'n') + ",b,c,d,1,1\n" + std::string(300, 'l') + ",b,c,d,1,1\n";
    Write(records);
    const ChildResult result = Run({"units", "lint"});
    EXPECT_EQ(result.exitCode, kBadInput);
    for (const char* const problem : {"record 1: it is passed over", "record 2: its factor is lost",
             "record 4: its factor changes", "record 5: its factor is no finite", "record 6: its base unit 46",
             "record 7: its decimals", "record 8: a name is cut", "record 9: it is cut"})
        EXPECT_THAT(result.output, HasSubstr(problem));
    EXPECT_THAT(result.output, testing::Not(HasSubstr("record 3")));
    EXPECT_EQ(File(), "TvlCustomUnits 1\n" + records);   // looked at, and no more
}

}   // namespace

// Processes that end in the middle: the user's file is whole, and no paper of the user's own is lost.
#include "../PaperFolders.h"
#include "FaultWalk.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/FileLayer.h"

#include <random>

namespace {

class KilledProcesses : public PaperFolders {
protected:
    ChildProcess Tvl(std::vector<std::string> arguments) const
    {
        const std::filesystem::path user = User().parent_path();
        return {"tvl", std::move(arguments), {},
            {{"TVL_SUITE_DIR", Master().parent_path().parent_path().string()},
                {"TVL_USER_DIR", user.parent_path().string()}, {"TVL_REGISTRY", (user / "registry.db").string()}},
            {}};
    }

    /// Lays an older user's file with a paper of the user's own, under a newer master that nobody has seen.
    void LayOlderFile()
    {
        for (const auto& entry : std::filesystem::directory_iterator(User().parent_path()))
            std::filesystem::remove(entry.path());
        Write(User(), m_older);
    }

    /// The user's file is the older or the merged one, and both have the user's paper.
    void ExpectWholeFile() const
    {
        const std::string bytes = FileBytes(User());
        EXPECT_NE(bytes.find("name=\"old\""), bytes.npos);
        if (bytes != m_older) {
            EXPECT_NE(bytes.find("preset_version=\"2\""), bytes.npos);
            EXPECT_TRUE(bytes.ends_with("</PageSizes>\n"));
        }
    }

    void MakeNewerMaster()
    {
        Papers().AddCustomPaper(Custom(L"old", 10000, 20000), true);
        Restart();
        m_older = FileBytes(User());
        Replace(Master(), "preset_version=\"1\"", "preset_version=\"2\"");
    }

private:
    std::string m_older;
};

TEST_F(KilledProcesses, LeaveAWholeFileWhereverAnUpdateEnds)
{
    MakeNewerMaster();
    ChildProcess child = Tvl({"paper", "list"});
    WalkFaultPoints(12, [&](std::size_t point) {
        LayOlderFile();
        child.environment["TVL_FILE_STOP_AT"] = std::to_string(point);
        const int exitCode = RunProgram(child).exitCode;
        ExpectWholeFile();

        child.environment.erase("TVL_FILE_STOP_AT");
        EXPECT_EQ(RunProgram(child).exitCode, 0);
        ExpectWholeFile();
        EXPECT_NE(FileBytes(User()).find("preset_version=\"2\""), std::string::npos) << "the next start goes on";
        return exitCode == TvlUtils::SystemIO::kFileStopExitCode;
    });
}

TEST_F(KilledProcesses, LeaveAWholeFileWheneverAnUpdateEnds)
{
    MakeNewerMaster();
    std::mt19937 random(5);
    constexpr int kKills = 200;
    constexpr unsigned kLongest = 40'000;   // microseconds
    ChildProcess child = Tvl({"paper", "list"});
    for (int kill = 0; kill < kKills; ++kill) {
        LayOlderFile();
        child.killAfter = std::chrono::microseconds(random() % kLongest);
        RunProgram(child);
        ExpectWholeFile();
    }
}

TEST_F(KilledProcesses, LeaveAWholeFile)
{
    Papers().AddCustomPaper(Custom(L"old", 10000, 20000), true);
    Restart();
    std::mt19937 random(3);
    constexpr int kKills = 200;
    constexpr unsigned kLongest = 60'000;   // microseconds; the whole run takes about a third of that
    int ended = 0;
    for (int kill = 0; kill < kKills; ++kill) {
        const std::string name = "paper" + std::to_string(kill);
        ChildProcess child = Tvl({"paper", "add", name, "100", "200"});
        child.killAfter = std::chrono::microseconds(random() % kLongest);
        const int exitCode = RunProgram(child).exitCode;
        ended += exitCode == 0;
        CPaperTypeMgr::ReleaseInstance(false);
        EXPECT_NE(Papers().FindCustomPaperIndex(L"old"), -1) << kill;
        EXPECT_TRUE(exitCode != 0 || Papers().FindCustomPaperIndex(TvlPlatform::FromUtf8(name)) != -1) << kill;
    }
    RecordProperty("runs that came to their end", ended);
}

}   // namespace

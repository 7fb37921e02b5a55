// Processes that end in the middle: the user's file is whole, and no paper of the user's own is lost.
#include "../PaperFolders.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <random>

namespace {

class KilledProcesses : public PaperFolders { };

TEST_F(KilledProcesses, LeaveAWholeFile)
{
    Papers().AddCustomPaper(Custom(L"old", 10000, 20000), true);
    Restart();
    const std::map<std::string, std::string> environment = {
        {"TVL_SUITE_DIR", (Master().parent_path().parent_path()).string()},
        {"TVL_USER_DIR", (User().parent_path().parent_path()).string()},
        {"TVL_REGISTRY", (User().parent_path() / "registry.db").string()},
    };
    std::mt19937 random(3);
    constexpr int kKills = 200;
    constexpr unsigned kLongest = 60'000;   // microseconds; the whole run takes about a third of that
    int ended = 0;
    for (int kill = 0; kill < kKills; ++kill) {
        const std::string name = "paper" + std::to_string(kill);
        ChildProcess child{"tvl", {"paper", "add", name, "100", "200"}, {}, environment, {}};
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

// Several processes on one registry, and processes that end in the middle.
#include "WUTLRegistry.h"
#include "siblings/TvlPref/IRegistry.h"

#include "ChildProcess.h"

#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <sstream>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

constexpr const wchar_t* kBase = L"HKEY_CURRENT_USER\\TvlUtlProcessTest";
const std::string kBaseArgument = "HKEY_CURRENT_USER\\TvlUtlProcessTest";

class RegistryProcesses : public testing::Test {
protected:
    RegistryProcesses()
    {
        WUTLRegistry::DeleteRegistryKey(kBase);
        WUTLRegistry::CreateKey(kBase, WUTLRegistry::kReadWriteAccess, 0);
    }
    ~RegistryProcesses() override { WUTLRegistry::DeleteRegistryKey(kBase); }

    static bool Holds(const std::wstring& name, ULONG wanted)
    {
        ULONG value = 0;
        return WUTLRegistry(kBase).GetValue(name.c_str(), value) == 0 && value == wanted;
    }
    /// How long a process takes that writes one value: a busy machine must not end those that are killed too early.
    static std::chrono::microseconds StartingTime()
    {
        const auto started = std::chrono::steady_clock::now();
        RunProgram({"registry_writer", {kBaseArgument, "starting", "1"}, {}, {}, {}});
        return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - started);
    }
    static void Set(const wchar_t* name, ULONG value) { WUTLRegistry(kBase).SetValue(name, value); }
};

TEST_F(RegistryProcesses, TwoAtOnceLoseNothing)
{
    constexpr ULONG kValues = 10'000;
    int exitCodes[2] = {-1, -1};
    {
        std::vector<std::jthread> starters;
        for (const int i : {0, 1})
            starters.emplace_back([&exitCodes, i] {
                const std::string name = i == 0 ? "first" : "second";
                exitCodes[i] = RunProgram(
                    {"registry_writer", {kBaseArgument, name, std::to_string(kValues)}, {}, {},
                        {}}).exitCode;
            });
    }
    for (const int exitCode : exitCodes)
        EXPECT_EQ(exitCode, 0);
    const WUTLRegistry key(kBase);
    for (ULONG i = 0; i < kValues; ++i)
        for (const wchar_t* name : {L"first", L"second"}) {
            ULONG value = kValues;
            ASSERT_EQ(key.GetValue((name + std::to_wstring(i)).c_str(), value), 0) << i;
            ASSERT_EQ(value, i);
        }
}

TEST_F(RegistryProcesses, WhatWasWrittenOutlastsAProcessThatIsKilled)
{
    constexpr int kKills = 200;
    const auto longest = static_cast<unsigned>(2 * StartingTime().count() + 50'000);   // microseconds
    std::mt19937 random(11);
    std::size_t written = 0;
    for (int kill = 0; kill < kKills; ++kill) {
        const std::string name = "run" + std::to_string(kill) + "_";
        ChildProcess child{"registry_writer", {kBaseArgument, name, "100000"}, {}, {}, {}};
        child.killAfter = std::chrono::microseconds(random() % longest);
        std::istringstream lines(RunProgram(child).output);
        ULONG last = 0;
        std::size_t count = 0;
        for (std::string line; std::getline(lines, line); ++count)
            if (!lines.eof())   // a line that was cut tells of nothing
                last = static_cast<ULONG>(std::stoul(line));
        written += count;
        const std::wstring wide(name.begin(), name.end());
        EXPECT_TRUE(count < 2 || Holds(wide + std::to_wstring(last), last)) << kill << " " << last;
        EXPECT_TRUE(count < 2 || Holds(wide + L"0", 0)) << kill;
    }
    EXPECT_GT(written, 100u) << "the processes ended before they did anything";
}

TEST_F(RegistryProcesses, TakeABatchBackThatIsNotCommitted)
{
    Set(L"old", 1);
    const std::wstring below = std::wstring(kBase) + L"\\below";
    WUTLRegistry kept;
    {
        const PREFUTILS::RegistryBatch batch;
        Set(L"old", 2);
        {
            const PREFUTILS::RegistryBatch inner;
            Set(L"inner", 1);
        }
        EXPECT_FALSE(Holds(L"inner", 1));
        EXPECT_TRUE(Holds(L"old", 2));
        WUTLRegistry::CreateKey(below.c_str(), WUTLRegistry::kReadWriteAccess, 0);
        kept.OpenKey(below.c_str());
    }
    EXPECT_TRUE(Holds(L"old", 1));
    EXPECT_NE(WUTLRegistry::IsValid(below.c_str()), 0);
    // The next key may be given the number of the one that was taken back.
    WUTLRegistry::CreateKey((std::wstring(kBase) + L"\\other").c_str(), WUTLRegistry::kReadWriteAccess, 0);
    EXPECT_EQ(kept.SetValue(L"stray", ULONG{1}), PREFUTILS::kRegistryKeyDeleted);
}

TEST_F(RegistryProcesses, SeeNothingOfABatchThatWasNotCommittedWhenItsProcessDied)
{
    Set(L"old", 1);
    ChildProcess child{"registry_writer", {kBaseArgument, "batch", "1000000", "--batch"}, {}, {}, {}};
    child.killAfter = 4 * StartingTime() + std::chrono::milliseconds(200);
    const std::string output = RunProgram(child).output;
    EXPECT_GT(output.size(), 0u) << "the process ended before it did anything";
    EXPECT_FALSE(Holds(L"batch0", 0));
    EXPECT_TRUE(Holds(L"old", 1));
}

/// No file of the process grows as long as it lives: what a full disk does to the registry.
class NoRoom {
public:
    NoRoom() : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_limit);
        const rlimit none = {1, m_limit.rlim_max};
        setrlimit(RLIMIT_FSIZE, &none);
    }
    NoRoom(const NoRoom&) = delete;
    NoRoom& operator=(const NoRoom&) = delete;
    ~NoRoom()
    {
        setrlimit(RLIMIT_FSIZE, &m_limit);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    rlimit m_limit = {};
    void (*m_handler)(int);
};

TEST_F(RegistryProcesses, LearnThatABatchCouldNotBeKept)
{
    Set(L"old", 1);
    for (const ULONG values : {1u, 20'000u}) {   // few change the file at the end alone, many before
        PREFUTILS::RegistryBatch batch;
        Set(L"old", 2);
        const NoRoom full;
        WUTLRegistry key(kBase);
        for (ULONG i = 0; i < values; ++i)
            key.SetValue(
                (L"a name of some length, so that the pages don't fit in memory " + std::to_wstring(i)).c_str(), i);
        EXPECT_NE(batch.Commit(), 0) << values;
    }
    EXPECT_TRUE(Holds(L"old", 1));
    Set(L"old", 3);
    EXPECT_TRUE(Holds(L"old", 3)) << "the registry works again";
}

struct Surroundings {
    const char* name;
    std::map<std::string, std::string> variables;
    const char* file;   // where the registry lies then, below the world's folder; null for nowhere
};

TEST(RegistryPlace, IsNeverTheFolderThatAProcessHappensToBeIn)
{
    const ScratchFolder folder;
    const std::string here = folder.Path().string();
    const Surroundings rows[] = {
        {"a home", {{"XDG_CONFIG_HOME", ""}, {"HOME", here + "/home"}}, "home/.config/TvlUtl/registry.db"},
        {"a folder of settings", {{"XDG_CONFIG_HOME", here + "/settings"}, {"HOME", ""}},
            "settings/TvlUtl/registry.db"},
        {"a relative folder of settings", {{"XDG_CONFIG_HOME", "relative"}, {"HOME", here + "/other"}},
            "other/.config/TvlUtl/registry.db"},
        {"a relative home", {{"XDG_CONFIG_HOME", ""}, {"HOME", "relative"}}, nullptr},
        {"nothing", {{"XDG_CONFIG_HOME", ""}, {"HOME", ""}}, nullptr},
    };
    for (const auto& [name, variables, file] : rows) {
        auto environment = variables;
        environment["TVL_REGISTRY"] = "";
        EXPECT_EQ(RunProgram({"registry_writer", {kBaseArgument, "n", "2"}, {}, environment, {}}).exitCode, 0) << name;
        EXPECT_FALSE(std::filesystem::exists("relative") || std::filesystem::exists(".config")) << name;
        if (!file)
            continue;
        const std::filesystem::path path = folder.Path() / file;
        EXPECT_TRUE(std::filesystem::exists(path)) << name;
        EXPECT_EQ(std::filesystem::status(path.parent_path()).permissions(), std::filesystem::perms::owner_all) << name;
    }
}

}   // namespace

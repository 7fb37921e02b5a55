// Several processes on one registry, and processes that end in the middle.
#include "WUTLRegistry.h"

#include "ChildProcess.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <sstream>
#include <thread>

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
    constexpr unsigned kLongest = 60'000;   // microseconds
    std::mt19937 random(11);
    std::size_t written = 0;
    for (int kill = 0; kill < kKills; ++kill) {
        const std::string name = "run" + std::to_string(kill) + "_";
        ChildProcess child{"registry_writer", {kBaseArgument, name, "100000"}, {}, {}, {}};
        child.killAfter = std::chrono::microseconds(random() % kLongest);
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

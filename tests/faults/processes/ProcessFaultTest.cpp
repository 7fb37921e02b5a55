// Processes that are killed while they write, starts that fail behind that, and processes that work at once. What the
// ledger says was done is there, and everything else is the old state or the new one.
#include "ProcessWorld.h"
#include "Tally.h"
#include "siblings/TvlUtils/FileLayer.h"

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <random>
#include <thread>

namespace {
constexpr const char* kWork[] = {"save", "switch", "extract", "apply"};

/// What holds after every start, whatever was killed before it.
void CheckState(const State& state, const Entries& ledger, const std::string& work)
{
    EXPECT_EQ(state.predefined, 149);
    for (const char* const name : {"_default", "A", "B"}) {
        const auto found = state.workspaces.find(name);
        EXPECT_TRUE(found != state.workspaces.end() && found->second == name) << name;
    }
    EXPECT_EQ(state.settings, state.current) << "each workspace with settings of its own";
    EXPECT_EQ(state.preferences, ProcessWorld::kPreferences);
    EXPECT_EQ(state.preferred, state.current);
    long long lost = 0;
    if (work == "save") {
        for (const std::string& name : ledger.done) {
            EXPECT_TRUE(state.papers.contains(name)) << name << " is lost";
            lost += state.papers.contains(name) ? 0 : 1;
        }
    }
    // Of these the last one counts: what was done, or what was begun behind it.
    if ((work == "switch" || work == "extract") && !ledger.lastDone.empty()) {
        const std::string& found = work == "switch" ? state.current : state.extracted;
        const bool isKept = found == ledger.lastDone || found == ledger.lastBegun;
        EXPECT_TRUE(isKept) << found << " where " << ledger.lastDone << " was done";
        lost += isKept ? 0 : 1;
    }
    Tally::Get().Add("entries of the ledger lost", lost);
    Tally::Get().Add("entries of the ledger found", static_cast<long long>(ledger.all.size()));
}

class KilledProcesses : public testing::TestWithParam<const char*> {
protected:
    /// The start behind a kill, and the same work once more: the old leftovers are gone then.
    void CheckNextStart(const std::string& work)
    {
        CheckState(world.Start(), world.Ledger(), work);
        Tally::Get().Add("kills survived", HasFailure() ? 0 : 1);
        world.ClearLedger();
    }
    void CheckNextSuccess(const std::string& work)
    {
        EXPECT_EQ(world.Work(work, 2).exitCode, 0);
        const State state = world.Start();
        CheckState(state, world.Ledger(), work);
        EXPECT_EQ(state.leftovers, std::vector<std::string>());
        world.ClearLedger();
    }

    ProcessWorld world;
};

TEST_P(KilledProcesses, AtEachFileOperationLoseNothing)
{
    const std::string work = GetParam();
    const int step = IsWholeRun() ? 1 : POINT_STEP;
    int points = 0;
    for (bool ended = false; !ended && !HasFailure(); points += step) {
        SCOPED_TRACE(testing::Message() << "file operation " << points + 1);
        const ChildResult result = world.Work(
            work, 1, [&](ChildProcess& child) { child.environment["TVL_FILE_STOP_AT"] = std::to_string(points + 1); });
        ended = result.exitCode == 0;
        EXPECT_TRUE(ended || result.exitCode == TvlUtils::SystemIO::kFileStopExitCode) << result.errors;
        Tally::Get().Add("kills at a numbered point", ended ? 0 : 1);
        CheckNextStart(work);
        if (points % (3 * step) == 0)
            CheckNextSuccess(work);
    }
    EXPECT_GE(points, 7) << "the work with the fewest writes has six operations";
}

TEST_P(KilledProcesses, AtAnyMomentLoseNothing)
{
    const std::string work = GetParam();
    constexpr int kTimes = 4;
    std::mt19937 random(11);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(world.Work(work, kTimes).exitCode, 0);
    const auto whole = std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - begin);
    world.ClearLedger();
    const int kills = IsWholeRun() ? 75 : TIMED_KILLS;
    for (int kill = 0; kill < kills && !HasFailure(); ++kill) {
        SCOPED_TRACE(testing::Message() << "kill " << kill);
        const auto moment = std::chrono::microseconds(random() % static_cast<unsigned>(whole.count() + 1));
        world.Work(work, kTimes, [&](ChildProcess& child) { child.killAfter = moment; });
        Tally::Get().Add("kills by time");
        CheckNextStart(work);
    }
    CheckNextSuccess(work);
}

/// The start behind a kill meets a fault of its own.
TEST_P(KilledProcesses, StartAgainBehindAStartThatFailed)
{
    const std::string work = GetParam();
    const int kills = IsWholeRun() ? 20 : STACKED_KILLS;
    const int faults = IsWholeRun() ? 6 : 2;
    std::mt19937 random(7);
    for (int kill = 0; kill < kills && !HasFailure(); ++kill) {
        const int point = 1 + kill * 60 / kills;
        SCOPED_TRACE(testing::Message() << "file operation " << point);
        world.Work(
            work, 1, [&](ChildProcess& child) { child.environment["TVL_FILE_STOP_AT"] = std::to_string(point); });
        for (int fault = 0; fault < faults; ++fault) {
            std::map<std::string, std::string> variables = {{"FAULT_ONWARD", fault % 2 == 0 ? "0" : "1"}};
            const bool isFile = fault % 4 < 2;
            variables[isFile ? "FAULT_FILE" : "FAULT_ALLOCATION"] = std::to_string(1 + random() % (isFile ? 60 : 4000));
            const int exitCode = world.StartWithFault(variables);
            constexpr int kOutOfMemory = 3;
            EXPECT_TRUE(exitCode == 0 || exitCode == kOutOfMemory)
                << exitCode << ' ' << variables.rbegin()->first << ' ' << variables.rbegin()->second;
            Tally::Get().Add("stacked faults");
        }
        CheckNextStart(work);
    }
    CheckNextSuccess(work);
}

INSTANTIATE_TEST_SUITE_P(
    Work, KilledProcesses, testing::ValuesIn(kWork), [](const auto& work) { return std::string(work.param); });

TEST(ProcessesAtOnce, HaveAllContainersAndWaitForNobodyLong)
{
    const ProcessWorld world;
    const int rounds = IsWholeRun() ? 200 : ROUNDS;
    constexpr long long kLongest = 30'000;   // milliseconds
    for (const int processes : {2, 4}) {
        std::vector<int> exitCodes(static_cast<std::size_t>(processes), -1);
        std::vector<std::thread> threads;
        for (std::size_t i = 0; i < exitCodes.size(); ++i)
            threads.emplace_back([&, i] {
                exitCodes[i] =
                    world.WorkBeside("rounds", rounds, "rounds" + std::to_string(processes * 10) + std::to_string(i))
                        .exitCode;
            });
        for (std::thread& thread : threads)
            thread.join();
        EXPECT_EQ(std::count(exitCodes.begin(), exitCodes.end(), 0), processes);
        for (std::size_t i = 0; i < exitCodes.size(); ++i) {
            const Entries ledger = world.Ledger("rounds" + std::to_string(processes * 10) + std::to_string(i));
            EXPECT_EQ(ledger.all.size(), static_cast<std::size_t>(rounds));
            for (const std::string& taken : ledger.all)
                EXPECT_LT(std::stoll(taken), kLongest) << "milliseconds of one round";
            Tally::Get().Add("rounds of processes at once", static_cast<long long>(ledger.all.size()));
        }
        // They share the settings on disk: whose settings a workspace has in the end is open, that it has some is not.
        const State state = world.Start();
        EXPECT_EQ(state.workspaces.size(), 3u);
        for (const auto& [name, settings] : state.workspaces)
            EXPECT_NE(settings, "?") << name;
        EXPECT_EQ(state.preferences, ProcessWorld::kPreferences);
        EXPECT_EQ(state.leftovers, std::vector<std::string>());
    }
}
}   // namespace

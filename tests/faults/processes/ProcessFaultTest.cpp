// Processes that are killed while they write, starts that fail behind that, and processes that work at once. What the
// ledger says was done is there, and everything else is the old state or the new one.
#include "CheckedWork.h"
#include "Tally.h"
#include "siblings/TvlUtils/FileLayer.h"
#include "worker/ExitCodes.h"

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <random>
#include <thread>

namespace {
using std::chrono::microseconds;
using TvlUtils::SystemIO::kFileStopExitCode;

// File operations are counted.
constexpr NamedWork kWork[] = {{"save", 13}, {"switch", 60}, {"extract", 13}, {"apply", 12}};
constexpr NamedWork kWorkBeforeStarts[] = {kWork[0], kWork[1], kWork[3]};   // a switch extracts as well

/// Numbers from 1 to `count`, `most` of them at most, evenly spread with the first and the last among them.
std::vector<int> Spread(int count, int most)
{
    std::vector<int> numbers;
    for (int i = 0; i < std::min(count, most); ++i)
        numbers.push_back(count <= most || most == 1 ? i + 1 : 1 + i * (count - 1) / (most - 1));
    return numbers;
}

class KilledProcesses : public CheckedWork {
protected:
    /// What the start behind a kill finds.
    void CheckBehindKill()
    {
        CheckNextStart();
        Tally::Get().Add("kills survived", !HasFailure());
    }
    /// Of work that finds what an earlier one has made.
    int CountFileOperations()
    {
        EXPECT_EQ(world.Work(work, 1).exitCode, 0);
        const WorkerResult result = world.Work(work, 1);
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_GE(result.counted.files, GetParam().recorded);
        return result.counted.files;
    }
    void KillAt(int point)
    {
        const WorkerResult result = world.Work(work, 1, {{"TVL_FILE_STOP_AT", std::to_string(point)}});
        EXPECT_EQ(result.exitCode, kFileStopExitCode) << result.errors;
    }
    /// Time of a sound run, of any number of pieces of work.
    microseconds Measure(int times)
    {
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_EQ(world.Work(work, times).exitCode, 0);
        return std::chrono::duration_cast<microseconds>(std::chrono::steady_clock::now() - begin);
    }
};

TEST_P(KilledProcesses, AtEachFileOperationLoseNothing)
{
    const int count = CountFileOperations();
    for (const int point : Spread(count, IsWholeRun() ? count : POINTS)) {
        SCOPED_TRACE(testing::Message() << "file operation " << point << " of " << count);
        KillAt(point);
        if (HasFailure())
            return;
        Tally::Get().Add("kills at a numbered point");
        CheckBehindKill();
        CheckNextSuccess();
    }
}

TEST_P(KilledProcesses, AtAnyMomentLoseNothing)
{
    constexpr int kTimes = 10;
    constexpr int kKillsToASuccess = 5;
    std::mt19937 random(11);
    // A process takes about as long to start as to end, and there is nothing to see in a kill then.
    const microseconds empty = Measure(0);
    const microseconds whole = std::max(Measure(kTimes) - empty, microseconds(1));
    const int kills = IsWholeRun() ? 75 : TIMED_KILLS;
    for (int kill = 0; kill < kills && !HasFailure();) {
        SCOPED_TRACE(testing::Message() << "kill " << kill);
        auto moment = empty / 2 + microseconds(random() % static_cast<unsigned>(whole.count()));
        WorkerResult result = world.WorkUntil(work, kTimes, moment);
        // One that came to its end before is no kill.
        for (; result.exitCode == 0; moment /= 2)
            result = world.WorkUntil(work, kTimes, moment / 2);
        EXPECT_EQ(result.exitCode, kKilledExitCode) << result.errors;
        Tally::Get().Add("kills by time");
        const Entries ledger = world.Ledger();
        Tally::Get().Add("kills by time within a piece of work", ledger.lastBegun != ledger.lastDone);
        CheckBehindKill();
        if (++kill % kKillsToASuccess == 0)
            CheckNextSuccess();
    }
    CheckNextSuccess();
}

INSTANTIATE_TEST_SUITE_P(
    Work, KilledProcesses, testing::ValuesIn(kWork), [](const auto& work) { return std::string(work.param.name); });

class StartsBehindKills : public KilledProcesses {
protected:
    /// One of the faults of a start that `sound` has measured: of files and allocations in turn, once and from then on, each
    /// time at another point.
    static Variables FaultOf(int number, const Counted& sound)
    {
        constexpr int kStride = 613;   // a prime, so that no point comes twice before all have come
        constexpr int kShift = 211;
        const bool isFile = number % 2 == 0;
        const int point = number / 4 * kStride + (1 + number % 4) * kShift;
        return {{isFile ? "FAULT_FILE" : "FAULT_ALLOCATION",
                    std::to_string(1 + point % (isFile ? sound.files : sound.allocations))},
            {"FAULT_ONWARD", number / 2 % 2 == 0 ? "0" : "1"}};
    }
};

TEST_P(StartsBehindKills, ThatMeetAFaultLeaveTheNextOneClean)
{
    const Counted sound = world.Start({}).counted;
    const int faults = IsWholeRun() ? 8 : 1;
    int tried = 0;
    int met = 0;
    for (const int point : Spread(CountFileOperations(), IsWholeRun() ? 20 : STACKED_KILLS)) {
        for (int fault = 0; fault < faults && !HasFailure(); ++fault, ++tried) {
            const Variables variables = FaultOf(tried, sound);
            SCOPED_TRACE(testing::Message()
                << "file operation " << point << ", " << variables.begin()->first << ' ' << variables.begin()->second
                << ", " << variables.rbegin()->first << ' ' << variables.rbegin()->second);
            KillAt(point);
            const WorkerResult start = world.Start(variables);
            EXPECT_TRUE(start.exitCode == 0 || start.exitCode == kOutOfMemory) << start.exitCode << start.errors;
            CheckBehindKill();
            CheckNextSuccess();
            met += start.counted.met;
        }
    }
    Tally::Get().Add("faults of a start behind a kill", met);
    EXPECT_GE(met * 4, tried * 3) << "faults that were met";
}

INSTANTIATE_TEST_SUITE_P(Work, StartsBehindKills, testing::ValuesIn(kWorkBeforeStarts),
    [](const auto& work) { return std::string(work.param.name); });

/// Processes that all do the same rounds in one world, each with a ledger of its own.
void RunAtOnce(const ProcessWorld& world, int processes, int rounds)
{
    const auto ledgerOf = [&](std::size_t i) { return "rounds" + std::to_string(processes * 10) + std::to_string(i); };
    std::vector<int> exitCodes(static_cast<std::size_t>(processes), -1);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < exitCodes.size(); ++i)
        threads.emplace_back([&, i] { exitCodes[i] = world.WorkBeside("rounds", rounds, ledgerOf(i)).exitCode; });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(std::count(exitCodes.begin(), exitCodes.end(), 0), processes);

    constexpr long long kLongest = 30'000;   // milliseconds
    for (std::size_t i = 0; i < exitCodes.size(); ++i) {
        const Entries ledger = world.Ledger(ledgerOf(i));
        EXPECT_EQ(ledger.all.size(), static_cast<std::size_t>(rounds));
        for (const std::string& taken : ledger.all)
            EXPECT_LT(std::stoll(taken), kLongest) << "milliseconds of one round";
        EXPECT_FALSE(ledger.begun.empty()) << "no settings were changed";
        Tally::Get().Add("rounds of processes at once", static_cast<long long>(ledger.all.size()));
        Tally::Get().Add("changes of settings by processes at once", static_cast<long long>(ledger.begun.size()));
    }
}

TEST(ProcessesAtOnce, HaveAllContainersAndWaitForNobodyLong)
{
    const ProcessWorld world;
    const int rounds = IsWholeRun() ? 200 : ROUNDS;
    for (const int processes : {2, 4}) {
        RunAtOnce(world, processes, rounds);
        // They share the settings on disk: whose settings a workspace has in the end is open, that it has them whole is not.
        EXPECT_EQ(StateChecks::CountTorn(world.Check()), 0);
        // One alone puts everything in order, and what it changes is saved.
        EXPECT_EQ(world.Work("rounds", 4).exitCode, 0);
        const State state = world.Check();
        EXPECT_EQ(StateChecks::CountTorn(state), 0);
        StateChecks::CheckNoLeftovers(state);
        int changed = 0;
        for (const auto& [name, owner] : state.workspaces)
            changed += owner.age > 0;
        EXPECT_GT(changed, 0) << "no change of settings was saved";
    }
}
}   // namespace

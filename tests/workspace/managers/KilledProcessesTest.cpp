// Processes that end in the middle: what was there is whole, and the next start has a workspace with its settings.
#include "FaultWalk.h"
#include "ManagerFixture.h"

#include <nlohmann/json.hpp>
#include <random>
#include <set>
#include <sstream>
#include <thread>

namespace {

/// An operation that is killed, by its command line. "%" stands for a number that is new each time.
struct Operation {
    const char* what;
    std::vector<std::string> arguments;
};

const Operation kOperations[] = {
    {"switch", {"workspace", "--mode", "desktop", "switch", "A"}},
    {"switch back", {"workspace", "--mode", "desktop", "switch", "B"}},
    {"create", {"workspace", "--mode", "desktop", "new", "N%", "--from", "A"}},
    {"export", {"workspace", "--mode", "desktop", "export", "X%.tvws", "--application-data"}},
};

class KilledProcesses : public Managers {
protected:
    KilledProcesses()
    {
        for (const char* const name : {"_default", "A", "B"})
            Make(name);
        world.MakeFolder("suite/Workspaces");
        EXPECT_EQ(Run({"workspace", "--mode", "desktop", "switch", "B"}).exitCode, 0);
    }
    ~KilledProcesses() override { Run({"registry", "delete", "HKCU\\SOFTWARE\\Tovel\\Suite\\Tovel"}); }

    std::string Native(const std::string& name) const { return TvlPlatform::ToUtf8(world.Path(name)); }
    std::map<std::string, std::string> Environment() const
    {
        return {{"TVL_USER_DIR", Native("user")}, {"TVL_SUITE_DIR", Native("suite")},
            {"TVL_REGISTRY", Native("registry.db")}};
    }
    ChildResult Run(const std::vector<std::string>& arguments) const
    {
        return RunProgram({"tvl", arguments, {}, Environment(), {}});
    }

    /// Runs an operation that is killed in a place of the caller's choice; whether it came to its end.
    template <class Kill>
    bool RunKilled(const Operation& operation, Kill kill)
    {
        ++m_number;
        ChildProcess child{"tvl", operation.arguments, {}, Environment(), {}};
        for (std::string& argument : child.arguments) {
            const std::size_t mark = argument.find('%');
            if (mark == std::string::npos)
                continue;
            argument.replace(mark, 1, std::to_string(m_number));
            if (argument[0] == 'X')
                argument = Native(argument);
            else
                m_created = argument;
        }
        kill(child);
        const bool ended = RunProgram(child).exitCode == 0;
        if (ended && !m_created.empty())
            m_committed.insert(m_created);
        m_created.clear();
        return ended;
    }

    /// Everything that was committed is there, each workspace with its own settings.
    void CheckFiles()
    {
        for (const char* const name : {"_default", "A", "B"})
            EXPECT_EQ(SettingsOf(name), Settings(name)) << name;
        for (const std::string& path : WorkspacesIn("user/Workspaces", 'N'))
            EXPECT_EQ(SettingsIn(TvlPlatform::FromUtf8(path)), Settings("A")) << path;
        for (const std::string& path : WorkspacesIn("", 'X'))
            EXPECT_TRUE(WorkspaceFile(TvlString(TvlPlatform::FromUtf8(path))).InitializeMetadata()) << path;
    }

    /// Full paths of the workspaces in a folder whose names begin with a letter.
    std::vector<std::string> WorkspacesIn(const std::string& folder, char letter) const
    {
        std::vector<std::string> paths;
        for (const auto& entry : std::filesystem::directory_iterator(Native(folder)))
            if (entry.path().extension() == ".tvws" && entry.path().stem().string()[0] == letter)
                paths.push_back(entry.path().string());
        return paths;
    }

    /// A new process lists all workspaces, and has the preferences of the current one.
    void CheckNextStart()
    {
        const ChildResult list = Run({"workspace", "--mode", "desktop", "list", "--json"});
        EXPECT_EQ(list.exitCode, 0) << list.errors;
        std::set<std::string> names;
        std::istringstream lines(list.output);
        int current = 0;
        for (std::string line; std::getline(lines, line);) {
            const auto workspace = nlohmann::json::parse(line);
            names.insert(workspace["name"].get<std::string>());
            if (!workspace["current"].get<bool>())
                continue;
            ++current;
            EXPECT_EQ(workspace["changed preferences"], 0) << line << list.errors;
        }
        EXPECT_EQ(current, 1);
        for (const std::string& name : m_committed)
            EXPECT_TRUE(names.contains(name)) << name;
    }

    std::set<std::string> m_committed = {"_default", "A", "B"};

private:
    int m_number = 0;
    std::string m_created;
};

TEST_F(KilledProcesses, AtAnyFileOperationLeaveEverythingWhole)
{
    for (const Operation& operation : kOperations) {
        SCOPED_TRACE(operation.what);
        int points = 0;
        for (bool ended = false; !ended && !HasFailure(); ++points) {
            SCOPED_TRACE(points);
            ended = RunKilled(operation, [&](ChildProcess& child) {
                child.environment["TVL_FILE_STOP_AT"] = std::to_string(1 + points * KILL_STEP);
            });
            CheckFiles();
            CheckNextStart();
        }
        EXPECT_GE(points * KILL_STEP, 30);
    }
}

TEST_F(KilledProcesses, AtAnyMomentLeaveEverythingWhole)
{
    std::mt19937 random(8);
    const auto started = std::chrono::steady_clock::now();
    Run(kOperations[0].arguments);
    const auto whole =
        std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - started);
    int ended = 0;
    for (int kill = 0; kill < RANDOM_KILLS && !HasFailure(); ++kill) {
        SCOPED_TRACE(kill);
        const auto moment = std::chrono::microseconds(random() % static_cast<unsigned>(whole.count() + 1));
        ended += RunKilled(kOperations[static_cast<std::size_t>(kill) % std::size(kOperations)],
            [&](ChildProcess& child) { child.killAfter = moment; });
        CheckFiles();
        CheckNextStart();
    }
    RecordProperty("operations that came to their end", ended);
}

/// What two processes have written of their changes, in its order.
struct Turns {
    explicit Turns(const std::string& ledger)
    {
        std::istringstream lines(ledger);
        std::string inside, last;
        for (std::string name, what; lines >> name >> what;) {
            if (what == "ready")
                continue;
            // A change begins when none is under way, and ends by who has begun it.
            isAlone = isAlone && inside == (what == "begin" ? "" : name);
            inside = what == "begin" ? name : "";
            changes += what == "end";
            turns += name != std::exchange(last, name);
        }
        isAlone = isAlone && inside.empty();
    }

    bool isAlone = true;
    int changes = 0;
    int turns = 0;   // that one process has taken over from the other
};

TEST_F(KilledProcesses, HaveNoPartInTwoThatChangeAtATime)
{
    int exitCodes[2] = {-1, -1};
    const std::string ledger = Native("ledger");
    const auto run = [&](int which, const char* first, const char* second) {
        exitCodes[which] = RunProgram(
            {"workspace_switcher", {ledger, std::to_string(which), std::to_string(SWITCHES), first, second}, {},
                Environment(),
                {}}).exitCode;
    };
    std::thread other(run, 0, "A", "B");
    run(1, "B", "_default");
    other.join();
    EXPECT_EQ(exitCodes[0], 0);
    EXPECT_EQ(exitCodes[1], 0);
    const Turns turns(FileBytes(ledger));
    EXPECT_TRUE(turns.isAlone);
    EXPECT_GE(turns.changes, 2 * SWITCHES - 2) << "the first change of each may lead to what is current";
    EXPECT_GE(turns.turns, 2) << "the processes have not run side by side";
    for (const char* const name : {"_default", "A", "B"}) {
        EXPECT_TRUE(WorkspaceFile(WorkspacePath(name)).InitializeMetadata()) << name;
        EXPECT_NE(SettingsOf(name), "") << name;
    }
    EXPECT_EQ(Run({"workspace", "list"}).exitCode, 0);
}
}   // namespace

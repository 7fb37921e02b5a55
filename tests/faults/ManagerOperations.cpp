// What an application does with its workspaces: none is lost, and each keeps settings of its own.
#include "HeapOperation.h"
#include "ManagerWorld.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <gtest/gtest.h>

namespace {
using Result = WorkspaceManagerTypes::Result;

constexpr const char* kNew = "user/Workspaces/New.tvws";

/// With a manager that has come up before.
struct Started : ManagerWorld {
    Started() { Restart(); }
    std::size_t count = 0;
};

bool IsNotOk(Started& managers) { return managers.result != Result::Ok; }

void CheckResult(ManagerWorld& managers, const HeapRun& outcome)
{
    EXPECT_TRUE(managers.result == Result::Ok || outcome.hasFailed) << static_cast<int>(managers.result);
    managers.result = Result::InitFailed;
    managers.CheckNextStart();
}
}   // namespace

HeapOperations ManagerOperations()
{
    return {
        Row<ManagerWorld>(
            "Initialize",
            [](ManagerWorld& managers) {
                managers.manager.reset();
                managers.Restart();
                managers.result = Result::Ok;
            },
            [](ManagerWorld& managers, const HeapRun& outcome) { CheckResult(managers, outcome); }),
        Row<Started>(
            "SetCurrentWorkspace",
            [](Started& managers) { managers.result = managers.Manager().SetCurrentWorkspace(L"A", false, false); },
            [](Started& managers, const HeapRun& outcome) { CheckResult(managers, outcome); }, IsNotOk),
        Row<Started>(
            "CreateNewWorkspace",
            [](Started& managers) {
                managers.Manager().DeleteWorkspace(L"New");
                managers.result = managers.Manager().CreateNewWorkspace(L"New", L"A", L"a title", L"a description");
            },
            [](Started& managers, const HeapRun& outcome) {
                const bool isDone = managers.result == Result::Ok;
                CheckResult(managers, outcome);
                const bool isThere = managers.world.Get(kNew).has_value();
                EXPECT_TRUE(isThere || !isDone);
                EXPECT_EQ(managers.EntryOf(kNew, kOtherEntry), isThere ? "other" : "none");
                const auto title = WorkspaceFile(FaultWorld::Path(kNew)).GetTitle();
                EXPECT_TRUE(!isDone || title.GetDefaultLangString() == L"a title");
            },
            IsNotOk),
        // A file that can't be deleted leaves the list all the same, until the next start.
        SilentRow<Started>(
            "DeleteWorkspace",
            [](Started& managers) {
                managers.Manager().CreateNewWorkspace(L"New", L"A", L"a title", L"a description");
                managers.result = managers.Manager().DeleteWorkspace(L"New");
            },
            [](Started& managers, const HeapRun& outcome) {
                CheckResult(managers, outcome);
                const bool isThere = managers.world.Get(kNew).has_value();
                EXPECT_TRUE(!isThere || outcome.hasFailed);
                EXPECT_EQ(managers.EntryOf(kNew, kOtherEntry), isThere ? "other" : "none");
            }),
        // Callers see a copy that failed from the absence of the target.
        SilentRow<Started>(
            "ExportWorkspace",
            [](Started& managers) {
                TvlUtils::SystemIO::File::Delete(FaultWorld::Path("user/exported.tvws"));
                managers.result = managers.Manager().ExportWorkspace(FaultWorld::Path("user/exported.tvws"), {});
            },
            [](Started& managers, const HeapRun& outcome) {
                const bool isThere = managers.world.Get("user/exported.tvws").has_value();
                EXPECT_TRUE(isThere || outcome.hasFailed);
                EXPECT_EQ(managers.EntryOf("user/exported.tvws", kOtherEntry), isThere ? "other" : "none");
                EXPECT_TRUE(outcome.hasFailed || managers.EntryOf("user/exported.tvws", kSettingsEntry) == "none")
                    << "it was to be left out";
                CheckResult(managers, outcome);
            }),
        Row<Started>(
            "AppShuttingDown",
            [](Started& managers) {
                managers.Manager().AppShuttingDown();
                managers.result = Result::Ok;
            },
            [](Started& managers, const HeapRun& outcome) { CheckResult(managers, outcome); }),
        Row<Started>(
            "GetCategoriedWorkspaces",
            [](Started& managers) {
                managers.count = managers.Manager().GetNamedWorkspaces().size()
                    + managers.Manager().GetCategoriedWorkspaces().front().second.size();
                managers.result = Result::Ok;
            },
            [](Started& managers, const HeapRun& outcome) {
                EXPECT_TRUE(managers.count == 8 || outcome.hasFailed) << managers.count;
                CheckResult(managers, outcome);
            }),
    };
}

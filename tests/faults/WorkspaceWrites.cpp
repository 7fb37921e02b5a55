// What is written of workspaces.
#include "FileOperation.h"
#include "ManagerWorld.h"
#include "WorkspaceFile.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <gtest/gtest.h>
#include <string_view>

namespace {
using Result = WorkspaceManagerTypes::Result;
namespace File = TvlUtils::SystemIO::File;

constexpr const char* kDefault = "user/Workspaces/_default.tvws";
constexpr const char* kSettings = "user/Workspaces/settings.ini";

struct Managing : ManagerWorld {
    void Forget() { manager.reset(); }
};

void CheckNextStart(Managing& managing, const FileRun&)
{
    managing.CheckNextStart();
    managing.Forget();
}

/// A copy is whole or not there, and there when it was told to be.
void CheckCopy(Managing& managing, const char* name, const FileRun& run)
{
    const bool isThere = managing.world.Get(name).has_value();
    EXPECT_TRUE(isThere || !run.isDone);
    EXPECT_EQ(ManagerWorld::EntryOf(name, kOtherEntry), isThere ? "other" : "none");
    managing.CheckNextStart();
    managing.Forget();
}

/// The current workspace's settings have changed since they were taken from it.
struct Changed : Managing {
    Changed()
    {
        Restart();
        world.Put(kSettings, changed);
    }
    const std::string changed = SettingsText("changed");
};

struct OneFile : WorkspaceFaultWorld {
    OneFile()
    {
        PutWorkspace("user/a.tvws", "old");
        world.Put("user/source.ini", "new");
        world.Put("user/target.ini", "before");
        WorkspaceFile(path).InitializeMetadata();
    }
    void Forget() { }
    void Check(const std::string& next, const FileRun& run)
    {
        const std::string settings = EntryOf("user/a.tvws", kSettingsEntry);
        EXPECT_TRUE(settings == next || (settings == "old" && !run.isDone)) << settings;
        EXPECT_EQ(EntryOf("user/a.tvws", kOtherEntry), "other");
    }

    const TvlString path = FaultWorld::Path("user/a.tvws");
};
}   // namespace

FileOperations WritesOfWorkspaces()
{
    FileOperations operations = {
        FileRow<Managing>(
            "start", 20,
            [](Managing& managing) {
                managing.Restart();
                return managing.manager->GetCurrentWorkspace() != nullptr;
            },
            CheckNextStart),
        FileRow<Managing>(
            "switch", 60,
            [](Managing& managing) {
                managing.Restart();
                const Result result = managing.manager->SetCurrentWorkspace(L"A", false, false);
                managing.End();
                return result == Result::Ok;
            },
            [](Managing& managing, const FileRun& run) {
                managing.mayMix = managing.mayMix || run.hasFailed;
                CheckNextStart(managing, run);
            }),
        FileRow<Managing>(
            "create", 60,
            [](Managing& managing) {
                managing.Restart();
                managing.manager->DeleteWorkspace(L"New");
                const Result result = managing.manager->CreateNewWorkspace(L"New", L"A", L"title", L"about");
                managing.End();
                return result == Result::Ok;
            },
            [](Managing& managing, const FileRun& run) { CheckCopy(managing, "user/Workspaces/New.tvws", run); }),
        FileRow<Managing>(
            "export", 60,
            [](Managing& managing) {
                managing.Restart();
                const TvlString path = FaultWorld::Path("user/exported.tvws");
                File::Delete(path);
                // The result does not tell: there is no target when the copy failed.
                const bool isDone = managing.manager->ExportWorkspace(path, {}) == Result::Ok && File::Exists(path);
                managing.End();
                return isDone;
            },
            [](Managing& managing, const FileRun& run) { CheckCopy(managing, "user/exported.tvws", run); }),
        FileRow<Managing>(
            "delete", 60,
            [](Managing& managing) {
                managing.Restart();
                managing.manager->CreateNewWorkspace(L"New", L"A", L"title", L"about");
                const Result result = managing.manager->DeleteWorkspace(L"New");
                managing.End();
                return result == Result::Ok;
            },
            [](Managing& managing, const FileRun& run) {
                // The result does not tell whether the file has gone.
                const std::string copy = ManagerWorld::EntryOf("user/Workspaces/New.tvws", kOtherEntry);
                EXPECT_TRUE(copy == "none" || (copy == "other" && run.hasFailed)) << copy;
                managing.CheckNextStart();
                managing.Forget();
            }),
        FileRow<Changed>(
            "shutdown", 20,
            [](Changed& changed) {
                changed.Manager().AppShuttingDown();
                return true;
            },
            [](Changed& changed, const FileRun& run) {
                const std::string settings = ManagerWorld::EntryOf(kDefault, kSettingsEntry);
                const bool isSaved = settings == changed.changed;
                EXPECT_TRUE(isSaved || (settings == SettingsText("_default") && run.hasFailed)) << settings;
                EXPECT_EQ(ManagerWorld::EntryOf(kDefault, kOtherEntry), "other");
                const std::string kept = changed.world.Get(kSettings).value_or("none");
                EXPECT_TRUE(kept == changed.changed) << "what was not saved is still there: " << kept;
            }),
        FileRow<OneFile>(
            "save_settings", 14,
            [](OneFile& file) {
                return WorkspaceFile(file.path).SaveSettings(FaultWorld::Path("user/source.ini"), {});
            },
            [](OneFile& file, const FileRun& run) { file.Check("new", run); }),
        FileRow<OneFile>(
            "extract", 10,
            [](OneFile& file) {
                return WorkspaceFile(file.path).GetFile(kSettingsEntry, FaultWorld::Path("user/target.ini"));
            },
            [](OneFile& file, const FileRun& run) {
                const std::string target = file.world.Get("user/target.ini").value_or("none");
                EXPECT_TRUE(target == "old" || (target == "before" && !run.isDone)) << target;
                file.Check("old", run);
            }),
    };
    // A second switch to the workspace that is current already saves nothing to the one before; where a first run made a
    // workspace that it could not delete, the second one only deletes it.
    for (FileOperation& operation : operations)
        operation.writesAgain =
            operation.name != std::string_view("switch") && operation.name != std::string_view("delete");
    return operations;
}

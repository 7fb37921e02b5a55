// Containers, and workspaces as files: the file is the old one or the new one, and opens.
#include "FaultWorld.h"
#include "HeapOperation.h"
#include "WorkspaceFaultWorld.h"
#include "WorkspaceFile.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "siblings/TvrContainer/WorkspaceContainer.h"

#include <gtest/gtest.h>

namespace {
using OpenMode = ZipFile::OpenMode;

/// Of a world that keeps what an operation has told.
template <class State>
bool IsNotDone(State& state)
{
    return !state.isDone;
}

struct Containers : WorkspaceFaultWorld {
    Containers() { PutWorkspace("user/a.tvws", "old"); }

    void Check(const std::string& wanted, const HeapRun& outcome)
    {
        const std::string settings = EntryOf("user/a.tvws", kSettingsEntry);
        EXPECT_TRUE(settings == wanted || (settings == "old" && !isDone)) << settings;
        EXPECT_EQ(EntryOf("user/a.tvws", kOtherEntry), "other") << "what was not touched";
        EXPECT_TRUE(isDone || outcome.hasFailed);
        isDone = false;
    }

    bool isDone = false;
    std::vector<TvlString> names;
    const TvlString path = FaultWorld::Path("user/a.tvws");
};

/// From before there were identifiers: a first read gives it some.
struct OldWorkspace : WorkspaceFaultWorld {
    OldWorkspace() { PutOldWorkspace("user/a.tvws"); }

    bool isDone = false;
    const TvlString path = FaultWorld::Path("user/a.tvws");
};

struct Workspaces : Containers {
    Workspaces()
    {
        world.Put("user/source.ini", "new");
        WorkspaceFile(path).InitializeMetadata();   // it has its identity before
    }
    /// What an earlier run has made stands in the way of the next.
    static void RemoveMade() { TvlUtils::SystemIO::File::Delete(FaultWorld::Path("user/made.tvws")); }
    /// A workspace that was to be made is whole or not there.
    void CheckMade(const HeapRun& outcome)
    {
        const bool isThere = world.Get("user/made.tvws").has_value();
        EXPECT_TRUE(isThere || !isDone);
        EXPECT_EQ(EntryOf("user/made.tvws", kOtherEntry), isThere ? "other" : "none");
        const bool wasDone = isDone;
        Check("old", outcome);
        isDone = wasDone;
    }

    WorkspaceFileExportSettings settings;
};
}   // namespace

HeapOperations ContainerOperations()
{
    return {
        Row<Containers>(
            "Open",
            [](Containers& containers) {
                auto container = WorkspaceContainer::Open(containers.path, OpenMode::Read);
                containers.isDone = static_cast<bool>(container) && container.GetFileNames(L".*", true).size() >= 2;
            },
            [](Containers& containers, const HeapRun& outcome) { containers.Check("old", outcome); },
            IsNotDone<Containers>),
        Row<Containers>(
            "AddFile_and_Close",
            [](Containers& containers) {
                auto container = WorkspaceContainer::Open(containers.path, OpenMode::ReadWrite);
                static const std::string bytes = "new";
                if (container.AddFile(
                        kSettingsEntry, TvlUtils::Stream::OverMemory(bytes.data(), bytes.size()), false, nullptr))
                    containers.isDone = container.Close();
            },
            [](Containers& containers, const HeapRun& outcome) { containers.Check("new", outcome); },
            IsNotDone<Containers>),
        Row<Containers>(
            "ExtractFile",
            [](Containers& containers) {
                auto container = WorkspaceContainer::Open(containers.path, OpenMode::Read);
                containers.isDone = container.ExtractFile(kSettingsEntry, FaultWorld::Path("user/extracted"));
            },
            [](Containers& containers, const HeapRun& outcome) {
                const auto bytes = containers.world.Get("user/extracted");
                EXPECT_TRUE(bytes == "old" || (!bytes && !containers.isDone));
                containers.Check("old", outcome);
            },
            IsNotDone<Containers>),
        Row<Containers>(
            "SetStringMetadata",
            [](Containers& containers) {
                auto container = WorkspaceContainer::Open(containers.path, OpenMode::ReadWrite);
                if (container
                    && container.SetStringMetadata(
                        ZipContainerSchema::Metadata::Title, L"de", L"ein Titel von einiger Länge"))
                    containers.isDone = container.Close();
            },
            [](Containers& containers, const HeapRun& outcome) {
                const auto title = WorkspaceFile(containers.path).GetTitle();
                EXPECT_TRUE(!containers.isDone || title.GetLangString(L"de") == L"ein Titel von einiger Länge");
                containers.Check("old", outcome);
            },
            IsNotDone<Containers>),
        Row<Containers>(
            "Create",
            [](Containers& containers) {
                auto container = WorkspaceContainer::Create(FaultWorld::Path("user/made.tvws"));
                static const std::string bytes = "other";
                if (container.AddFile(
                        kOtherEntry, TvlUtils::Stream::OverMemory(bytes.data(), bytes.size()), false, nullptr))
                    containers.isDone = container.Close();
            },
            [](Containers& containers, const HeapRun& outcome) {
                const bool isThere = containers.world.Get("user/made.tvws").has_value();
                EXPECT_TRUE(isThere || !containers.isDone);
                EXPECT_EQ(containers.EntryOf("user/made.tvws", kOtherEntry), isThere ? "other" : "none");
                containers.Check("old", outcome);
            },
            IsNotDone<Containers>),
    };
}

HeapOperations WorkspaceOperations()
{
    return {
        Row<OldWorkspace>(
            "InitializeMetadata", [](OldWorkspace& old) { old.isDone = WorkspaceFile(old.path).InitializeMetadata(); },
            [](OldWorkspace& old, const HeapRun& outcome) {
                EXPECT_TRUE(old.isDone || outcome.hasFailed);
                OldWorkspace::CheckOldWorkspace("user/a.tvws");
                old.isDone = false;
            },
            IsNotDone<OldWorkspace>),
        Row<Workspaces>(
            "AddFile",
            [](Workspaces& workspaces) {
                workspaces.isDone =
                    WorkspaceFile(workspaces.path).AddFile(FaultWorld::Path("user/source.ini"), kSettingsEntry);
            },
            [](Workspaces& workspaces, const HeapRun& outcome) { workspaces.Check("new", outcome); },
            IsNotDone<Workspaces>),
        Row<Workspaces>(
            "SaveSettings",
            [](Workspaces& workspaces) {
                workspaces.isDone =
                    WorkspaceFile(workspaces.path).SaveSettings(FaultWorld::Path("user/source.ini"), {});
            },
            [](Workspaces& workspaces, const HeapRun& outcome) { workspaces.Check("new", outcome); },
            IsNotDone<Workspaces>),
        Row<Workspaces>(
            "LoadSettings",
            [](Workspaces& workspaces) {
                workspaces.isDone =
                    WorkspaceFile(workspaces.path).LoadSettings(FaultWorld::Path("user/loaded.ini"), {});
            },
            [](Workspaces& workspaces, const HeapRun& outcome) {
                const auto bytes = workspaces.world.Get("user/loaded.ini");
                EXPECT_TRUE(bytes == "old" || (!bytes && !workspaces.isDone));
                workspaces.Check("old", outcome);
            },
            IsNotDone<Workspaces>),
        Row<Workspaces>(
            "CreateFrom",
            [](Workspaces& workspaces) {
                workspaces.RemoveMade();
                workspaces.isDone = static_cast<bool>(WorkspaceFile::CreateFrom(FaultWorld::Path("user/made.tvws"),
                    workspaces.path, L"a title", L"what it is for, at some length"));
            },
            [](Workspaces& workspaces, const HeapRun& outcome) {
                workspaces.CheckMade(outcome);
                const WorkspaceFile made(FaultWorld::Path("user/made.tvws"));
                EXPECT_TRUE(!workspaces.isDone || made.GetTitle().GetDefaultLangString() == L"a title");
                workspaces.isDone = false;
            },
            IsNotDone<Workspaces>),
        Row<Workspaces>(
            "Export",
            [](Workspaces& workspaces) {
                workspaces.RemoveMade();
                workspaces.settings.Version = L"19";
                workspaces.isDone = static_cast<bool>(WorkspaceFile::Export(
                    FaultWorld::Path("user/made.tvws"), workspaces.path, kSettingsEntry, {}, workspaces.settings));
            },
            [](Workspaces& workspaces, const HeapRun& outcome) {
                workspaces.CheckMade(outcome);
                WorkspaceFileExportSettings read;
                EXPECT_TRUE(!workspaces.isDone
                    || (WorkspaceFile::ReadExportSettings(FaultWorld::Path("user/made.tvws"), read)
                        && Workspaces::EntryOf("user/made.tvws", kSettingsEntry) == "none"))
                    << "described, and without what was to be left out";
                const WorkspaceFile made(FaultWorld::Path("user/made.tvws"));
                EXPECT_TRUE(made.GetTitle().GetDefaultLangString() != L"made"
                    || Workspaces::EntryOf("user/made.tvws", kSettingsEntry) == "none")
                    << "changed, and with what was to be left out";
                workspaces.isDone = false;
            },
            IsNotDone<Workspaces>),
    };
}

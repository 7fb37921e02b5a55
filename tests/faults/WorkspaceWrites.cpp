// What is written of workspaces as files.
#include "FileOperation.h"
#include "OldOrNew.h"
#include "WorkspaceFaultWorld.h"
#include "WorkspaceFile.h"
#include "siblings/TvrContainer/WorkspaceContainer.h"

#include <gtest/gtest.h>

namespace {
using TvlUtils::Guid;

struct OneFile : WorkspaceFaultWorld {
    OneFile()
    {
        PutWorkspace("user/a.tvws", "old");
        world.Put("user/source.ini", "new");
        world.Put("user/target.ini", "before");
        world.Put("user/extra", "before");
        WorkspaceFile(path).InitializeMetadata();
    }
    void Forget() { }
    void Check(const std::string& next, const FileRun& run, const wchar_t* entry = kSettingsEntry,
        const std::string& old = "old") const
    {
        const std::string found = EntryOf("user/a.tvws", entry);
        ExpectOldOrNew(found, old, next, run.isDone);
        EXPECT_EQ(EntryOf("user/a.tvws", kOtherEntry), "other");
    }
    /// The file has the old bytes or the workspace's, or is missing.
    void CheckExtracted(const char* name, const std::string& next, const FileRun& run) const
    {
        const std::string target = world.Get(name).value_or("none");
        EXPECT_TRUE(target == next || ((target == "before" || target == "none") && run.hasFailed)) << name << target;
    }

    const TvlString path = FaultWorld::Path("user/a.tvws");
    const std::vector<WorkspaceFile::FilePair> extra = {{kExtraEntry, FaultWorld::Path("user/extra")}};
};

/// A workspace from before there were identifiers, whose configuration carries one.
struct Unidentified : WorkspaceFaultWorld {
    Unidentified() { PutOldWorkspace("user/a.tvws"); }
    void Forget() { }
    void Check(const FileRun& run) const
    {
        const Guid onDisk = StoredInstance();
        EXPECT_TRUE(!onDisk.IsNil() || run.hasFailed) << "it was given none";
        CheckOldWorkspace("user/a.tvws");
        EXPECT_TRUE(onDisk.IsNil() || onDisk == StoredInstance()) << "it had one already";
    }
    Guid StoredInstance() const
    {
        const auto container = WorkspaceContainer::Open(path, ZipFile::OpenMode::Read);
        return container.GetMetadata(ZipContainerSchema::Metadata::InstanceID).GetOr(Guid());
    }

    const TvlString path = FaultWorld::Path("user/a.tvws");
};
}   // namespace

FileOperations WritesOfWorkspaces()
{
    return {
        FileRow<OneFile>(
            "save_settings", 14,
            [](OneFile& file) {
                return WorkspaceFile(file.path).SaveSettings(FaultWorld::Path("user/source.ini"), file.extra);
            },
            [](OneFile& file, const FileRun& run) {
                file.Check("new", run);
                // The result does not tell of it.
                const std::string saved = OneFile::EntryOf("user/a.tvws", kExtraEntry);
                EXPECT_TRUE(saved == "before" || (saved == ExtraOf("old") && run.hasFailed)) << saved;
            }),
        FileRow<OneFile>(
            "load_settings", 20,
            [](OneFile& file) {
                return WorkspaceFile(file.path).LoadSettings(FaultWorld::Path("user/target.ini"), file.extra);
            },
            [](OneFile& file, const FileRun& run) {
                file.CheckExtracted("user/target.ini", "old", run);
                file.CheckExtracted("user/extra", ExtraOf("old"), run);
                EXPECT_TRUE(file.world.Get("user/target.ini") == "old" || !run.isDone);
                file.Check("old", run);
            }),
        FileRow<OneFile>(
            "extract", 10,
            [](OneFile& file) {
                return WorkspaceFile(file.path).GetFile(kSettingsEntry, FaultWorld::Path("user/target.ini"));
            },
            [](OneFile& file, const FileRun& run) {
                const std::string target = file.world.Get("user/target.ini").value_or("none");
                ExpectOldOrNew(target, "before", "old", run.isDone);
                file.Check("old", run);
            }),
        FileRow<OneFile>(
            "save_configuration", 10,
            [](OneFile& file) {
                WXmlDoc document(false);
                return document.CreateFromString(L"<ui/>") && WorkspaceFile(file.path).SaveUIConfigFromXML(document);
            },
            [](OneFile& file, const FileRun& run) {
                const std::string entry = OneFile::EntryOf(
                    "user/a.tvws", ZipContainerSchema::GetContentFilename(WorkspaceContainerSchema::workspaceFile));
                EXPECT_TRUE(entry.find("<ui") != entry.npos || (entry == "none" && !run.isDone)) << entry;
                file.Check("old", run);
            }),
        FileRow<OneFile>(
            "delete_entry", 20,
            [](OneFile& file) {
                WorkspaceFile workspace(file.path);
                return workspace.AddFile(FaultWorld::Path("user/source.ini"), L"content/more")
                    && workspace.DeleteFile(L"content/more");
            },
            [](OneFile& file, const FileRun& run) {
                const std::string entry = OneFile::EntryOf("user/a.tvws", L"content/more");
                ExpectOldOrNew(entry, "new", "none", run.isDone);
                file.Check("old", run);
            }),
        FileRow<Unidentified>(
            "identity", 15, [](Unidentified& file) { return WorkspaceFile(file.path).InitializeMetadata(); },
            [](Unidentified& file, const FileRun& run) { file.Check(run); }),
    };
}

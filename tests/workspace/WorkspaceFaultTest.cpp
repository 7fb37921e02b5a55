// Files and memory that fail: nothing that was committed is lost, and nothing is half there.
#include "FailingHeap.h"
#include "MemoryFiles.h"
#include "WorkspaceWorld.h"

#include <optional>

namespace {

using TvlUtils::SystemIO::ToFilePath;

class WorkspaceFaults : public WorkspaceWorld {
protected:
    WorkspaceFaults()
    {
        const TvlString path = Make("a.tvws", {{kSettings, "old"}, {kConfiguration, "<ui/>"}, {L"content/x", "x"}});
        WorkspaceFile(path).InitializeMetadata();   // has its identity now
        m_workspace = world.Bytes("a.tvws");
    }
    void Prepare(MemoryFiles& files) const
    {
        files.Put(ToFilePath(m_path), m_workspace);
        files.Put(ToFilePath(m_source), "new");
        files.Put(ToFilePath(m_target), "before");
    }
    /// Lets everything fail in an operation: each file operation, and the disk at steps of its bytes.
    template <class Operation, class Check>
    void Walk(std::size_t operations, Operation operation, Check check)
    {
        const auto prepare = [&](MemoryFiles& files) { Prepare(files); };
        WalkFileFaults(operations, prepare, operation, check);
        constexpr std::size_t kStep = 61;
        for (std::size_t room = 0; room < m_workspace.size() + kStep; room += kStep)
            RunOnFaultyFiles(
                prepare, [&](MemoryFiles& files) { files.SetCapacity(files.UsedBytes() + room); }, operation, check);
    }

    const TvlString m_path = world.Path("a.tvws");
    const TvlString m_source = world.Path("source");
    const TvlString m_target = world.Path("target");
    std::string m_workspace;
};

TEST_F(WorkspaceFaults, LeaveTheOldEntryOrTheNewOne)
{
    bool isAdded = false;
    const auto operation = [&] {
        isAdded = false;
        isAdded = WorkspaceFile(m_path).AddFile(m_source, kSettings);
    };
    // Two looks at the file for each mark, opening, two reads; the source's four; and the seven of writing aside.
    Walk(14, operation, [&](MemoryFiles&) {
        const std::string settings = Entry(m_path, kSettings);
        EXPECT_TRUE(settings == "new" || (settings == "old" && !isAdded)) << settings << ' ' << isAdded;
        EXPECT_EQ(Entry(m_path, L"content/x"), "x");
    });
}

TEST_F(WorkspaceFaults, LeaveSettingsAndTheirFilesTogether)
{
    bool isSaved = false;
    const auto operation = [&] {
        isSaved = false;
        isSaved = WorkspaceFile(m_path).SaveSettings(m_source, {{L"content/x", m_source}});
    };
    Walk(14, operation, [&](MemoryFiles&) {
        const std::string settings = Entry(m_path, kSettings);
        const std::string other = Entry(m_path, L"content/x");
        EXPECT_TRUE(settings == "new" || (settings == "old" && !isSaved)) << settings << ' ' << isSaved;
        EXPECT_TRUE(other == "new" || other == "x") << other;
    });
}

TEST_F(WorkspaceFaults, NeverLeaveAPartOfWhatIsExtracted)
{
    bool isExtracted = false;
    const auto operation = [&] {
        isExtracted = false;
        isExtracted = WorkspaceFile(m_path).GetFile(kSettings, m_target);
    };
    Walk(10, operation, [&](MemoryFiles& files) {
        const auto target = files.Get(ToFilePath(m_target));
        EXPECT_TRUE(target == "old" || (target == "before" && !isExtracted)) << target.value_or("none");
        EXPECT_EQ(Entry(m_path, kSettings), "old");
    });
}

TEST_F(WorkspaceFaults, CreateWholeWorkspacesOrNone)
{
    const TvlString made = world.Path("made.tvws");
    bool isMade = false;
    const auto create = [&] {
        isMade = false;
        isMade = static_cast<bool>(WorkspaceFile::CreateFrom(made, m_path, L"title", L"about"));
    };
    Walk(20, create, [&](MemoryFiles& files) {
        EXPECT_TRUE(files.Get(ToFilePath(made)) || !isMade);
        EXPECT_EQ(Entry(made, kSettings), files.Get(ToFilePath(made)) ? "old" : "none") << "a copy, or more than that";
        EXPECT_TRUE(!isMade || WorkspaceFile(made).GetTitleInUILang() == TvlString(L"title"));
        EXPECT_EQ(Entry(m_path, kSettings), "old");
    });
    const auto replace = [&] {
        isMade = false;
        isMade = static_cast<bool>(WorkspaceFile::CreateDefault(m_path));
    };
    Walk(10, replace, [&](MemoryFiles& files) {
        const bool isOld = files.Get(ToFilePath(m_path)) == m_workspace;
        EXPECT_TRUE(isOld ? !isMade : WorkspaceFile(m_path).GetUIOrder() == 400);
    });
    WorkspaceFileExportSettings settings;
    settings.Version = L"19";
    const auto exporting = [&] {
        isMade = false;
        isMade = static_cast<bool>(WorkspaceFile::Export(made, m_path, kSettings, {}, settings));
    };
    Walk(20, exporting, [&](MemoryFiles& files) {
        EXPECT_TRUE(files.Get(ToFilePath(made)) || !isMade);
        if (isMade) {
            WorkspaceFileExportSettings read;
            EXPECT_TRUE(WorkspaceFile::ReadExportSettings(made, read));
            EXPECT_EQ(Entry(made, kSettings), "none");
        }
        EXPECT_EQ(Entry(made, L"content/x"), files.Get(ToFilePath(made)) ? "x" : "none");
    });
}

TEST_F(WorkspaceFaults, WriteNothingWithoutAChange)
{
    MemoryFiles files;
    Prepare(files);
    files.SetCapacity(files.UsedBytes());
    {
        auto container = WorkspaceContainer::Open(m_path, ZipFile::OpenMode::ReadWrite);
        const auto& reader = container;
        container.SetMetadata(
            ZipContainerSchema::Metadata::InstanceID, reader.GetMetadata(ZipContainerSchema::Metadata::InstanceID));
        EXPECT_TRUE(container.Close());
        container = WorkspaceContainer::Open(m_path, ZipFile::OpenMode::ReadWrite);
        container.CreateFileW(L"content/never", false, false, nullptr);
        EXPECT_TRUE(container.Close());
    }
    EXPECT_FALSE(files.FaultReached());
    EXPECT_EQ(files.Get(ToFilePath(m_path)), m_workspace);
}

TEST_F(WorkspaceFaults, FailInAFolderThatCantBeWritten)
{
    MemoryFiles files;
    Prepare(files);
    files.SetCapacity(0);
    WorkspaceFile file(m_path);
    EXPECT_FALSE(file.AddFile(m_source, kSettings));
    EXPECT_FALSE(file.DeleteFile(kSettings));
    EXPECT_FALSE(file.SaveSettings(m_source, {}));
    EXPECT_FALSE(file.GetFile(kSettings, m_target));
    EXPECT_FALSE(file.LoadSettings(m_target, {}));
    WXmlDoc document(false);
    EXPECT_TRUE(file.LoadUIConfigIntoXML(document));
    EXPECT_FALSE(file.SaveUIConfigFromXML(document));
    EXPECT_FALSE(WorkspaceFile::CreateFrom(world.Path("b.tvws"), file));
    EXPECT_FALSE(WorkspaceFile::Export(world.Path("b.tvws"), m_path, kSettings, {}, {}));
    EXPECT_EQ(files.Get(ToFilePath(m_path)), m_workspace);
}

/// Whether `call` is true; false when memory runs out in it.
template <class Call>
bool Succeeds(Call call)
try {
    return call();
} catch (const std::bad_alloc&) {
    return false;
}

TEST_F(WorkspaceFaults, OutliveAFullHeap)
{
    // Of what the libraries allocate only linux counts all, which is far more.
    constexpr int kRecorded = 4;
    std::optional<MemoryFiles> files;
    const auto begin = [&] {
        files.reset();
        Prepare(files.emplace());
    };
    begin();
    WorkspaceFile file(m_path);
    bool isDone = false;
    FailEachAllocation(
        kRecorded, [&] { isDone = Succeeds([&] { return file.AddFile(m_source, kSettings); }); },
        [&](bool) {
            const std::string settings = Entry(m_path, kSettings);
            EXPECT_TRUE(settings == "new" || (settings == "old" && !isDone)) << settings;
            begin();
        });
    FailEachAllocation(
        kRecorded, [&] { isDone = Succeeds([&] { return file.GetFile(kSettings, m_target); }); },
        [&](bool) {
            const auto target = files->Get(ToFilePath(m_target));
            EXPECT_TRUE(target == "old" || (target == "before" && !isDone)) << target.value_or("none");
            EXPECT_EQ(files->Get(ToFilePath(m_path)), m_workspace);
            begin();
        });
    FailEachAllocation(
        kRecorded, [&] { isDone = Succeeds([&] { return WorkspaceFile(m_path).InitializeMetadata(); }); },
        [&](bool) {
            EXPECT_EQ(Entry(m_path, kSettings), "old");
            begin();
        });
}

}   // namespace

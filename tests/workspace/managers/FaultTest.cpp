// Changes of workspaces on disks that fail, are full or can't be written: nothing that was there is lost.
#include "ManagerFixture.h"
#include "MemoryFiles.h"

#include <limits>

namespace {

class Faults : public Managers {
protected:
    using Path = std::filesystem::path;

    Faults()
    {
        for (const char* const name : {"_default", "A"}) {
            const WorkspaceFile file = Make(name);
            m_files[TvlUtils::SystemIO::ToFilePath(file.GetFilename())] =
                FileBytes(TvlUtils::SystemIO::ToFilePath(file.GetFilename()));
        }
        m_files[TvlUtils::SystemIO::ToFilePath(world.Path("user/Workspaces/settings.ini"))] = Settings("_default");
    }

    void Prepare(MemoryFiles& files) const
    {
        files.AddFolder(TvlUtils::SystemIO::ToFilePath(world.Path("suite/Workspaces")));
        for (const auto& [path, bytes] : m_files)
            files.Put(path, bytes);
    }
    void Change()
    {
        const MemoryRegistry registry;
        const auto manager = Started();
        manager->SetCurrentWorkspace(L"A", false, false);
        manager->AppShuttingDown();
    }
    /// The next start finds both workspaces with settings of their own.
    void Check()
    {
        const MemoryRegistry registry;
        const auto manager = Started();
        EXPECT_EQ(manager->GetWorkspaces().end() - manager->GetWorkspaces().begin(), 2);
        for (const wchar_t* const name : {L"_default", L"A"}) {
            const TvlString target = world.Path("checked.ini");
            EXPECT_TRUE(WorkspaceFile(WorkspacePath(TvlPlatform::ToUtf8(name))).LoadSettings(target, {}));
            std::string bytes;
            static_cast<void>(TvlUtils::SystemIO::File::ReadAll(target, bytes));
            EXPECT_EQ(bytes, Settings(TvlPlatform::ToUtf8(name)));
        }
    }

    std::map<Path, std::string> m_files;
};

TEST_F(Faults, AtTheEndOfAProcessLeaveEachWorkspaceItsSettings)
{
    using Fault = MemoryFiles::Fault;
    for (const Fault fault : {Fault::StopDropped, Fault::StopTorn, Fault::StopKept})
        WalkFaultPoints(60, [&](std::size_t point) {
            return RunOnFaultyFiles([&](MemoryFiles& files) { Prepare(files); },
                [&](MemoryFiles& files) { files.Inject(point, fault); }, [&] { Change(); },
                [&](MemoryFiles&) { Check(); });
        });
}

TEST_F(Faults, InAResetLeaveTheNextStartItsSettings)
{
    const auto stock = TvlUtils::SystemIO::ToFilePath(MakeStock("_default").GetFilename());
    m_files[stock] = FileBytes(stock);
    const auto reset = [] {
        const MemoryRegistry registry;
        WSM_INIT init = Init();
        init.Reset = true;
        OpenManager().Initialize(init, [] { return true; });
    };
    const auto check = [&](MemoryFiles&) {
        const MemoryRegistry registry;
        const auto manager = Started();
        std::string bytes;
        static_cast<void>(TvlUtils::SystemIO::File::ReadAll(manager->GetProfileSettingsFile(), bytes));
        EXPECT_TRUE(bytes == Settings("_default") || bytes == Settings("stock _default")) << bytes;
    };
    WalkFaultPoints(40, [&](std::size_t point) {
        return RunOnFaultyFiles([&](MemoryFiles& files) { Prepare(files); },
            [&](MemoryFiles& files) { files.Inject(point, MemoryFiles::Fault::StopKept); }, reset, check);
    });
}

TEST_F(Faults, OfAFullDiskLeaveTheOldFilesWhole)
{
    for (std::size_t room = 0; room < 6000; room += 97)
        RunOnFaultyFiles([&](MemoryFiles& files) { Prepare(files); },
            [&](MemoryFiles& files) { files.SetCapacity(files.UsedBytes() + room); }, [&] { Change(); },
            [&](MemoryFiles&) {
                const MemoryRegistry registry;
                EXPECT_NE(Started()->GetCurrentWorkspace(), nullptr);
                for (const char* const name : {"_default", "A"})
                    EXPECT_TRUE(WorkspaceFile(WorkspacePath(name)).LoadSettings(world.Path("checked.ini"), {})) << room;
            });
}

TEST_F(Faults, OfAFullDiskPutNoSettingsIntoAnotherWorkspace)
{
    for (const std::size_t room : {0u, 10u, 6000u}) {
        SCOPED_TRACE(room);
        const MemoryRegistry registry;
        MemoryFiles files;
        Prepare(files);
        {
            const auto manager = Started();
            files.SetCapacity(files.UsedBytes() + room);
            manager->SetCurrentWorkspace(L"A", false, false);
            // There is room again when the settings are saved, which are not those of A.
            files.SetCapacity(std::numeric_limits<std::size_t>::max());
            manager->AppShuttingDown();
        }
        Started()->AppShuttingDown();
        Check();
    }
}

TEST_F(Faults, OfAFolderThatCanNotBeWrittenAreToldByTheirResults)
{
    MemoryFiles files;
    Prepare(files);
    const auto manager = Started();
    files.SetCapacity(0);
    EXPECT_EQ(manager->CreateNewWorkspace(L"New", L"A", {}, {}), WorkspaceManagerTypes::Result::CreateFailed);
    EXPECT_EQ(manager->ExportWorkspace(world.Path("out.tvws"), {}), WorkspaceManagerTypes::Result::Ok);
    EXPECT_FALSE(files.Get(TvlUtils::SystemIO::ToFilePath(world.Path("out.tvws"))));
    TvlString icon = WorkspacePath("A");
    EXPECT_EQ(manager->AddIconResource(icon), L"");
    EXPECT_EQ(manager->SetCurrentWorkspace(L"A", false, false), WorkspaceManagerTypes::Result::Ok);
    std::erase_if(m_files, [](const auto& file) { return file.first.extension() != ".tvws"; });
    for (const auto& [path, bytes] : m_files)
        EXPECT_EQ(files.Get(path), bytes) << path;
}
}   // namespace

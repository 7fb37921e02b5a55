// What a change of the workspace asks of the file system.
#include "ManagerFixture.h"
#include "PassingFiles.h"

namespace {
/// The system's files; counts how often each is opened, by its name. The files that replace others count together with
/// "+" behind the name of the one that they replace.
class CountingFiles : public PassingFiles {
public:
    FileResult Open(const Path& path, OpenMode mode, std::unique_ptr<FileHandle>& handle) override
    {
        const bool isAside = path.extension() == ".aside";
        ++opened[isAside ? path.stem().stem().string() + "+" : path.filename().string()];
        return PassingFiles::Open(path, mode, handle);
    }

    std::map<std::string, int> opened;
};

using Counts = std::map<std::string, int>;

class SwitchCost : public Managers {
protected:
    /// Workspaces A, which is current, and B.
    SwitchCost()
    {
        for (const char* const name : {"_default", "A", "B"})
            Make(name);
    }
};

TEST_F(SwitchCost, IsOneOpenOfEachContainer)
{
    const auto manager = Started();
    manager->SetCurrentWorkspace(L"A", false, false);
    CountingFiles files;
    ASSERT_EQ(manager->SetCurrentWorkspace(L"B", false, false), WorkspaceManagerTypes::Result::Ok);
    const Counts counts = {
        {"A.tvws", 1},                        // takes the settings in
        {"A.tvws+", 1},                       // what it becomes
        {"B.tvws", 1},                        // gives its settings, and tells what they were exported by
        {"settings.ini", 2},                  // for A, and for the registry
        {"settings.ini+", 1},                 // out of B
        {"settings.ini.extracting.new", 1},   // marks, and a note of where the settings come from
        {"settings.ini.applying.new", 1},
        {"settings.ini.origin+", 1},
    };
    EXPECT_EQ(files.opened, counts);
}

TEST_F(SwitchCost, IsTheSameWithFilesOfTheApplication)
{
    const TvlString extra = world.MakeFile("extra.bin");
    OpenManager manager;
    WSM_INIT init = Init();
    init.AdditionalFiles = {{L"content/extra.bin", extra}};
    manager.Initialize(init);
    manager.SetCurrentWorkspace(L"A", false, false);
    world.MakeFile("extra.bin");
    manager.SetCurrentWorkspace(L"B", false, false);
    world.MakeFile("extra.bin");
    CountingFiles files;
    manager.SetCurrentWorkspace(L"A", false, false);
    EXPECT_EQ(files.opened["A.tvws"], 1);
    EXPECT_EQ(files.opened["B.tvws"], 1);
    EXPECT_EQ(files.opened["extra.bin"], 1);
    EXPECT_EQ(files.opened["extra.bin+"], 1);
}

TEST_F(SwitchCost, IsNothingForTheCurrentWorkspace)
{
    const auto manager = Started();
    CountingFiles files;
    EXPECT_EQ(manager->SetCurrentWorkspace(L"", false, false), WorkspaceManagerTypes::Result::Ok);
    EXPECT_EQ(files.opened, Counts());
}
}   // namespace

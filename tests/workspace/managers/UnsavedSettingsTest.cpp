// Settings that can't be saved into their workspace when another one is chosen.
#include "ManagerFixture.h"

#include <filesystem>

namespace {
using WorkspaceManagerTypes::Result;

class UnsavedSettings : public Managers {
protected:
    UnsavedSettings()
    {
        Make("_default");
        Make("A");
        world.MakeFile(kSettings, Settings("_default"));
        manager = Started();
        world.MakeFile(kSettings, changed);
    }

    /// Makes a workspace one that nothing can be saved into, and gives what it was.
    std::string Break(const std::string& name) const
    {
        const std::string file = "user/Workspaces/" + name + ".tvws";
        const std::string bytes = world.Bytes(file);
        world.MakeFile(file, "broken");
        return bytes;
    }
    static std::string Kept(const std::string& name) { return kSettings + (".unsaved." + name); }
    Result ChangeTo(const wchar_t* name) const { return manager->SetCurrentWorkspace(name, false, false); }
    void ExpectPutBackAndSaved() const
    {
        EXPECT_EQ(SettingsOnDisk(), changed);
        EXPECT_EQ(StoredName(), L"changed");
        manager->AppShuttingDown();
        EXPECT_EQ(SettingsOf("_default"), changed);
        EXPECT_FALSE(world.Has(Kept("_default")));
    }

    static constexpr const char* kSettings = "user/Workspaces/settings.ini";
    const std::string changed = Settings("changed");
    MemoryRegistry registry;
    std::unique_ptr<OpenManager> manager;
};

TEST_F(UnsavedSettings, AreKeptAndPutBack)
{
    const std::string bytes = Break("_default");
    EXPECT_EQ(ChangeTo(L"A"), Result::Ok);
    EXPECT_EQ(SettingsOnDisk(), Settings("A"));
    world.MakeFile("user/Workspaces/_default.tvws", bytes);
    EXPECT_EQ(SettingsOf("_default"), Settings("_default"));
    EXPECT_EQ(ChangeTo(L"_default"), Result::Ok);
    ExpectPutBackAndSaved();
    EXPECT_EQ(SettingsOf("A"), Settings("A"));
}

TEST_F(UnsavedSettings, StayWhereTheyAreWhenTheyCanNotBeKept)
{
    WorkspaceFile(WorkspacePath("_default")).DeleteFile(L"content/settings.ini");
    const auto obstacle = TvlUtils::SystemIO::ToFilePath(world.Path(Kept("_default")));
    std::filesystem::create_directories(obstacle / "full");
    EXPECT_EQ(ChangeTo(L"A"), Result::Ok);
    EXPECT_EQ(SettingsOnDisk(), changed);
    EXPECT_EQ(ChangeTo(L"_default"), Result::Ok);
    EXPECT_EQ(ChangeTo(L"A"), Result::Ok);
    EXPECT_EQ(SettingsOnDisk(), changed) << "nothing of A's either";
    EXPECT_EQ(SettingsOf("A"), Settings("A"));
    std::filesystem::remove_all(obstacle);
    EXPECT_EQ(ChangeTo(L"_default"), Result::Ok);
    ExpectPutBackAndSaved();
}

TEST_F(UnsavedSettings, StayKeptUntilLaterOnesAre)
{
    const std::string bytes = Break("_default");
    EXPECT_EQ(ChangeTo(L"A"), Result::Ok);
    const std::string kept = world.Bytes(Kept("_default"));
    EXPECT_NE(kept, "");
    EXPECT_EQ(ChangeTo(L"_default"), Result::Ok);
    EXPECT_EQ(SettingsOnDisk(), changed);
    // They can't be read for now.
    const auto settings = TvlUtils::SystemIO::ToFilePath(world.Path(kSettings));
    world.Remove(kSettings);
    std::filesystem::create_directory(settings);
    EXPECT_EQ(ChangeTo(L"A"), Result::Ok);
    EXPECT_EQ(world.Bytes(Kept("_default")), kept);
    std::filesystem::remove(settings);
    world.MakeFile(kSettings, changed);
    world.MakeFile("user/Workspaces/_default.tvws", bytes);
    EXPECT_EQ(ChangeTo(L"_default"), Result::Ok);
    ExpectPutBackAndSaved();
}

TEST_F(UnsavedSettings, GoWithTheirWorkspace)
{
    EXPECT_EQ(ChangeTo(L"A"), Result::Ok);
    world.MakeFile(kSettings, Settings("changed A"));
    Break("A");
    EXPECT_EQ(ChangeTo(L"_default"), Result::Ok);
    const std::string kept = world.Bytes(Kept("A"));
    EXPECT_NE(kept, "");
    EXPECT_EQ(manager->DeleteWorkspace(L"A"), Result::Ok);
    EXPECT_FALSE(world.Has(Kept("A")));
    // One that is made behind another program's deletion begins anew.
    world.MakeFile(Kept("A"), kept);
    EXPECT_EQ(manager->CreateNewWorkspace(L"A", L"_default", {}, {}), Result::Ok);
    EXPECT_EQ(ChangeTo(L"A"), Result::Ok);
    EXPECT_EQ(SettingsOnDisk(), changed) << "of the workspace that it was made from";
}
}   // namespace

// What the next start does about a process that died.
#include "ManagerFixture.h"

#include <thread>

namespace {

class Interruptions : public Managers {
protected:
    Interruptions()
    {
        for (const char* const name : {"_default", "A", "B"})
            Make(name);
        Store(L"DesktopModeDefault", WorkspacePath("A"));
        world.MakeFile("user/Workspaces/settings.ini", Settings("present"));
    }
    void LeaveOrigin(const std::string& workspace) const
    {
        world.MakeFile("user/Workspaces/settings.ini.origin",
            "WSMANAGER_SESSION_nobody\n" + TvlPlatform::ToUtf8(WorkspacePath(workspace)));
    }
};

TEST_F(Interruptions, LeaveNoMarkAfterAProperEnd)
{
    const auto manager = Started();
    EXPECT_EQ(SettingsOnDisk(), Settings("present"));
    manager->SetCurrentWorkspace(L"B", false, false);
    EXPECT_TRUE(world.Has("user/Workspaces/settings.ini.origin"));
    manager->AppShuttingDown();
    EXPECT_TRUE(world.Has("user/Workspaces/settings.ini.origin")) << "the next start asks whose settings these are";
    for (const char* const mark : {".extracting", ".applying"})
        EXPECT_FALSE(world.Has(std::string("user/Workspaces/settings.ini") + mark)) << mark;
}

TEST_F(Interruptions, OfAChangeAreMadeGoodByTheCurrentSettings)
{
    LeaveOrigin("B");
    const auto manager = Started();
    EXPECT_EQ(manager->GetCurrentWorkspaceName(), L"A");
    EXPECT_EQ(SettingsOnDisk(), Settings("A"));
    EXPECT_EQ(StoredName(), L"A");
    manager->AppShuttingDown();
    EXPECT_EQ(SettingsOf("A"), Settings("A"));
}

TEST_F(Interruptions, BehindAChangeLeaveTheSettingsOfTheCurrentWorkspace)
{
    LeaveOrigin("A");
    Started();
    EXPECT_EQ(SettingsOnDisk(), Settings("present"));
    EXPECT_FALSE(StoredName());
}

TEST_F(Interruptions, AreNoneAsLongAsTheProcessLives)
{
    Started()->SetCurrentWorkspace(L"B", false, false);
    const auto other = Started();
    EXPECT_EQ(other->GetCurrentWorkspaceName(), L"A");
    EXPECT_EQ(SettingsOnDisk(), Settings("B"));
}

TEST_F(Interruptions, OfWhoHeldTheMutexAreMadeGoodByWhoTakesItNext)
{
    const auto manager = Started();
    LeaveOrigin("B");
    std::unique_ptr<WSManagerMutex> lost;
    std::thread([&] { lost = std::make_unique<WSManagerMutex>(); }).join();   // ends without giving it back
    EXPECT_EQ(manager->SetCurrentWorkspace(L"A", false, false), WorkspaceManagerTypes::Result::Ok);   // as it was
    EXPECT_EQ(SettingsOnDisk(), Settings("A"));
    EXPECT_EQ(StoredName(), L"A");
}

TEST_F(Interruptions, OfAnExtractionAreRepeated)
{
    world.MakeFile("user/Workspaces/settings.ini.extracting", "");
    world.MakeFile("user/Workspaces/settings.ini.applying", "");
    Started();
    EXPECT_EQ(SettingsOnDisk(), Settings("A"));
    EXPECT_EQ(StoredName(), L"A");
    EXPECT_FALSE(world.Has("user/Workspaces/settings.ini.extracting"));
    EXPECT_FALSE(world.Has("user/Workspaces/settings.ini.applying"));
}

TEST_F(Interruptions, OfTheRegistrysUpdateAreRepeated)
{
    world.MakeFile("user/Workspaces/settings.ini.applying", "");
    Started();
    EXPECT_EQ(SettingsOnDisk(), Settings("present"));
    EXPECT_EQ(StoredName(), L"present");
    EXPECT_FALSE(world.Has("user/Workspaces/settings.ini.applying"));
}

TEST_F(Interruptions, OfTheRegistrysUpdateCostNoPreferencesWhenTheSettingsCantBeRead)
{
    world.MakeFile("user/Workspaces/settings.ini.applying", "");
    world.Remove("user/Workspaces/settings.ini");
    world.MakeFolder("user/Workspaces/settings.ini");   // nobody can read it
    {
        const auto manager = Started();
        world.Remove("user/Workspaces/settings.ini");
        world.MakeFile("user/Workspaces/settings.ini", "");   // what the application makes of no preferences
        manager->AppShuttingDown();
    }
    EXPECT_EQ(SettingsOf("A"), Settings("A"));
    Started();
    EXPECT_EQ(SettingsOnDisk(), Settings("A"));
    EXPECT_EQ(StoredName(), L"A");
}

TEST_F(Interruptions, LeaveOddMarksAlone)
{
    for (const char* const bytes : {"", "no line end", "\n", "a/b\\c\n", "x\n\xff\xfe"}) {
        world.MakeFile("user/Workspaces/settings.ini", Settings("present"));
        world.MakeFile("user/Workspaces/settings.ini.origin", bytes);
        EXPECT_EQ(Started()->GetCurrentWorkspaceName(), L"A");
    }
}
}   // namespace

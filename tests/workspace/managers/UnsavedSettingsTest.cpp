// Settings that can't be saved into their workspace when another one is chosen.
#include "ManagerFixture.h"
#include "PassingFiles.h"
#include "siblings/TvlPref/CPrefObject.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <filesystem>

namespace {
using WorkspaceManagerTypes::Result;

/// A file that can't be read for now.
class UnreadableFile : public PassingFiles {
public:
    explicit UnreadableFile(const char* name) : m_name(name) { }
    FileResult Open(const Path& path, OpenMode mode, std::unique_ptr<FileHandle>& handle) override
    {
        if (path.filename() == m_name && mode == OpenMode::Read)
            return std::errc::io_error;
        return PassingFiles::Open(path, mode, handle);
    }

private:
    const Path m_name;
};

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
    static std::string Kept(const std::string& name) { return kSettings + ("." + name + ".unsaved"); }
    /// Another process of an application that has files of its own, each an entry of its workspaces and a file of the same name.
    void StartAs(const wchar_t* application, const std::vector<std::string>& files)
    {
        const std::string note = std::string(kSettings) + ".origin";
        const std::string bytes = world.Bytes(note);
        if (!bytes.empty())
            world.MakeFile(
                note, "WSMANAGER_SESSION_nobody" + bytes.substr(bytes.find('\n')));   // the one before has ended
        manager = std::make_unique<OpenManager>();
        WSM_INIT init = Init();
        init.Application = application;
        for (const std::string& file : files)
            init.AdditionalFiles.emplace_back(
                L"content/" + TvlString(TvlPlatform::FromUtf8(file)), world.Path("user/" + file));
        EXPECT_EQ(manager->Initialize(init), Result::Ok);
    }
    std::string EntryOf(const std::string& workspace, const wchar_t* entry) const
    {
        world.Remove("entry");
        WorkspaceFile(WorkspacePath(workspace)).GetFile(entry, world.Path("entry"));
        return world.Bytes("entry");
    }
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
    {
        const UnreadableFile settings("settings.ini");
        EXPECT_EQ(ChangeTo(L"A"), Result::Ok);
    }
    EXPECT_EQ(world.Bytes(Kept("_default")), kept);
    EXPECT_EQ(SettingsOnDisk(), changed);
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

TEST_F(UnsavedSettings, AreNoneOfWhatNoWorkspaceTakes)
{
    std::filesystem::create_directory(TvlUtils::SystemIO::ToFilePath(world.Path("user/folder")));
    world.MakeFile("user/large", std::string((1 << 20) + 1, 'x'));
    CAppPrefObject<TvlString>(L"Workspaces/MaxEntryMegabytes", L"64").SetValue(L"1");
    StartAs(L"Tovel", {"folder", "large"});
    world.MakeFile(kSettings, changed);
    EXPECT_EQ(ChangeTo(L"A"), Result::Ok);
    EXPECT_EQ(SettingsOnDisk(), Settings("A"));
    EXPECT_EQ(SettingsOf("_default"), changed);
    EXPECT_FALSE(world.Has(Kept("_default")));
}

TEST_F(UnsavedSettings, OfSeveralApplicationsAreKeptSideBySide)
{
    for (const auto* const file : {L"content/one", L"content/two"})
        EXPECT_TRUE(WorkspaceFile(WorkspacePath("_default")).AddFile(world.MakeFile("old", "old"), file));
    StartAs(L"One", {"one"});
    world.MakeFile("user/one", "one new");
    const std::string bytes = Break("_default");
    EXPECT_EQ(ChangeTo(L"A"), Result::Ok);
    EXPECT_TRUE(world.Has(Kept("_default")));
    world.MakeFile("user/Workspaces/_default.tvws", bytes);

    StartAs(L"Two", {"two"});
    EXPECT_EQ(ChangeTo(L"A"), Result::Ok);
    EXPECT_EQ(ChangeTo(L"_default"), Result::Ok);
    EXPECT_EQ(world.Bytes("user/two"), "old") << "of the workspace, for nothing else is kept";
    manager->AppShuttingDown();
    EXPECT_EQ(EntryOf("_default", L"content/one"), "one new");
    EXPECT_EQ(EntryOf("_default", L"content/two"), "old");
    EXPECT_FALSE(world.Has(Kept("_default")));
}

TEST_F(UnsavedSettings, AreRenewedWhenMarkedReadOnly)
{
    const std::string bytes = Break("_default");
    EXPECT_EQ(ChangeTo(L"A"), Result::Ok);
    EXPECT_TRUE(TvlUtils::SystemIO::File::MakeReadonly(world.Path(Kept("_default"))));
    world.MakeFile("user/Workspaces/_default.tvws", bytes);
    EXPECT_EQ(ChangeTo(L"_default"), Result::Ok);
    ExpectPutBackAndSaved();
}

TEST_F(UnsavedSettings, ThatAreDamagedStandInNobodysWay)
{
    for (const char* const damaged : {"garbage", ""}) {
        world.MakeFile(Kept("A"), damaged);
        EXPECT_EQ(ChangeTo(L"A"), Result::Ok);
        EXPECT_EQ(SettingsOnDisk(), Settings("A"));
        EXPECT_EQ(ChangeTo(L"_default"), Result::Ok);
        EXPECT_EQ(SettingsOnDisk(), changed);
        EXPECT_FALSE(world.Has(Kept("A")));
    }
}

TEST_F(UnsavedSettings, AreTheFilesAloneWhereThereAreNoSettings)
{
    StartAs(L"Tovel", {"extra"});
    world.Remove(kSettings);
    world.MakeFile("user/extra", "new");
    const std::string bytes = Break("_default");
    EXPECT_EQ(ChangeTo(L"A"), Result::Ok);
    world.MakeFile("user/Workspaces/_default.tvws", bytes);
    EXPECT_EQ(ChangeTo(L"_default"), Result::Ok);
    EXPECT_EQ(world.Bytes("user/extra"), "new");
    EXPECT_EQ(SettingsOnDisk(), Settings("_default")) << "of the workspace";
}

TEST_F(UnsavedSettings, AreKeptWithTheirFilesWhicheverApplicationHadThemBefore)
{
    StartAs(L"Other", {});
    EXPECT_EQ(ChangeTo(L"A"), Result::Ok);
    EXPECT_EQ(ChangeTo(L"_default"), Result::Ok);
    StartAs(L"Tovel", {"extra"});
    world.MakeFile(kSettings, changed);
    world.MakeFile("user/extra", "new");
    const std::string bytes = Break("_default");
    const auto obstacle = TvlUtils::SystemIO::ToFilePath(world.Path(Kept("_default")));
    std::filesystem::create_directories(obstacle / "full");
    EXPECT_EQ(ChangeTo(L"A"), Result::Ok);
    std::filesystem::remove_all(obstacle);
    manager->AppShuttingDown();   // they are kept now
    world.MakeFile("user/Workspaces/_default.tvws", bytes);
    StartAs(L"Tovel", {"extra"});
    EXPECT_EQ(ChangeTo(L"A"), Result::Ok);
    EXPECT_EQ(ChangeTo(L"_default"), Result::Ok);
    EXPECT_EQ(SettingsOnDisk(), changed);
    EXPECT_EQ(world.Bytes("user/extra"), "new");
}

TEST_F(UnsavedSettings, OutliveAStartWithTheDefaultOfItsMode)
{
    EXPECT_EQ(ChangeTo(L"A"), Result::Ok);
    manager->AppShuttingDown();
    Store(L"TabletModeToggling", L"1");
    Store(L"DesktopModeDefault", WorkspacePath("_default"));
    world.MakeFile(kSettings, Settings("changed A"));
    const auto obstacle = TvlUtils::SystemIO::ToFilePath(world.Path(Kept("A")));
    std::filesystem::create_directories(obstacle / "full");
    StartAs(L"Tovel", {});
    EXPECT_EQ(manager->GetCurrentWorkspaceName(), L"_default");
    EXPECT_EQ(SettingsOnDisk(), Settings("changed A")) << "they can't be kept";
    std::filesystem::remove_all(obstacle);
    StartAs(L"Tovel", {});
    EXPECT_EQ(SettingsOnDisk(), changed) << "of the default one";
    EXPECT_EQ(ChangeTo(L"A"), Result::Ok);
    EXPECT_EQ(SettingsOnDisk(), Settings("changed A"));
}

TEST_F(UnsavedSettings, OfAProcessThatHasDiedAreKeptByTheNextOne)
{
    struct Case {
        const wchar_t* next;   // application that starts then
        const char* extra;     // what the workspace's file is in the end
    };
    for (const auto& [next, extra] : {Case{L"Tovel", "new"}, Case{L"Other", "old"}}) {
        SCOPED_TRACE(TvlPlatform::ToUtf8(next));
        world.Remove("user/extra");
        EXPECT_TRUE(WorkspaceFile(WorkspacePath("_default")).AddFile(world.MakeFile("old", "old"), L"content/extra"));
        for (const wchar_t* const application : {L"Tovel", next}) {
            StartAs(application, {"extra"});
            EXPECT_EQ(ChangeTo(L"A"), Result::Ok);
            manager->AppShuttingDown();   // it begins with A from now on
        }
        StartAs(L"Tovel", {"extra"});
        EXPECT_EQ(ChangeTo(L"_default"), Result::Ok);
        world.MakeFile(kSettings, changed);
        world.MakeFile("user/extra", "new");

        StartAs(next, {"extra"});
        EXPECT_EQ(ChangeTo(L"A"), Result::Ok);
        EXPECT_EQ(SettingsOnDisk(), Settings("A"));
        EXPECT_EQ(ChangeTo(L"_default"), Result::Ok);
        EXPECT_EQ(SettingsOnDisk(), changed);
        EXPECT_EQ(world.Bytes("user/extra"), extra);
        manager->AppShuttingDown();
        world.MakeFile(kSettings, Settings("_default"));
    }
}
}   // namespace

// What applications do with their workspaces while they run.
#include "ManagerFixture.h"
#include "VirtualSlot.h"
#include "siblings/TvlConfig/DocumentFolders.h"
#include "siblings/TvlConfig/ProductAnalytics.h"
#include "siblings/TvlFeatureManagement/Features.h"
#include "siblings/TvlPref/CPrefObject.h"
#include "siblings/TvrContainer/WorkspaceContainer.h"

#include <gmock/gmock.h>

namespace {
using testing::ElementsAre;
using testing::IsEmpty;
using WorkspaceManagerTypes::Orientation;
using WorkspaceManagerTypes::Result;

class Manager : public Managers {
protected:
    Manager()
    {
        for (const char* const name : {"_default", "Default(TM)", "A", "B"})
            Make(name);
    }
};

TEST_F(Manager, KeepsTheOrderOfItsOperations)
{
    using I = IWorkspaceManager;
    const std::size_t slots[] = {Slot(&I::SetCurrentWorkspace), Slot(&I::SetWorkspaceChangedFailed),
        Slot(&I::SetDefaultDesktopWorkspace), Slot(&I::GetDefaultDesktopWorkspace), Slot(&I::SetDefaultTabletWorkspace),
        Slot(&I::GetDefaultTabletWorkspace), Slot(&I::SetTabletModeWorkspaceToggling),
        Slot(&I::GetTabletModeWorkspaceToggling), Slot(&I::SetWorkspaceSelectionChanging),
        Slot(&I::GetWorkspaceSelectionChanging), Slot(&I::CreateNewWorkspace), Slot(&I::ExportWorkspace),
        Slot(&I::ReadExportWorkspaceSettings), Slot(&I::DeleteWorkspace), Slot(&I::_NotifyAppWSChanging),
        Slot(&I::_NotifyAppWSChanged), Slot(&I::AddIconResource), Slot(&I::RemoveIconResource),
        Slot(&I::CopyIconsFromWorkspace), Slot(&I::GetWorkspaceDescription), Slot(&I::GetWorkspaceUIName),
        Slot(&I::_WSUINameToActualName), Slot(&I::GetLastImportExportDir), Slot(&I::SetLastImportExportDir),
        Slot(&I::ExtractSettingsFromWorkspace), Slot(&I::ProcessOrientationUpdate), Slot(&I::ProcessInteractionUpdate),
        Slot(&I::TrackWorkspaceChange)};
    static_assert(std::size(slots) == 28);
    for (std::size_t i = 0; i < std::size(slots); ++i)
        EXPECT_EQ(slots[i] - slots[0], i);
    using A = IWorkspaceManagedApp;
    const std::size_t appSlots[] = {Slot(&A::OnWorkspaceChanging), Slot(&A::OnWorkspaceChanged),
        Slot(&A::SaveWorkspaceState), Slot(&A::CanNotify), Slot(&A::OnInteractionModeChanged)};
    for (std::size_t i = 0; i < std::size(appSlots); ++i)
        EXPECT_EQ(appSlots[i], i);
}

TEST_F(Manager, WithoutNamesOrWorkspacesDoesNothing)
{
    OpenManager manager;
    WorkspaceFileExportSettings settings;
    EXPECT_EQ(manager.SetCurrentWorkspace(L"A", true, true), Result::NotInitialized);
    EXPECT_EQ(manager.CreateNewWorkspace(L"x", L"A", {}, {}), Result::NotInitialized);
    EXPECT_EQ(manager.ExportWorkspace(world.Path("x"), settings), Result::NotInitialized);
    EXPECT_EQ(manager.ReadExportWorkspaceSettings(world.Path("x"), settings), Result::NotInitialized);
    EXPECT_EQ(manager.DeleteWorkspace(L"A"), Result::NotInitialized);
    EXPECT_FALSE(manager.RemoveIconResource(L"x"));
    EXPECT_FALSE(manager.CopyIconsFromWorkspace(WorkspaceFile(WorkspacePath("A"))));
    TvlString path = world.MakeFile("i.ico");
    EXPECT_EQ(manager.AddIconResource(path), L"");
    manager.TrackWorkspaceChange(L"menu");
}

TEST_F(Manager, ChangesTheWorkspaceWithTheApplication)
{
    const auto manager = Started();
    world.MakeFile("user/Workspaces/settings.ini", Settings("before"));
    app.duringChange = [&] { world.MakeFile("user/Workspaces/settings.ini", Settings("as the application has it")); };
    EXPECT_EQ(manager->SetCurrentWorkspace(L"A", true, true), Result::Ok);
    EXPECT_THAT(app.Calls(),
        ElementsAre(L"Workspace_A", L"begin", L"lock", L"changing 11", L"unlock", L"end", L"begin", L"redraw 769",
            L"lock", L"changed 01", L"unlock", L"redraw 385", L"end", L"frame 0"));
    EXPECT_EQ(manager->GetCurrentWorkspaceName(), L"A");
    EXPECT_EQ(SettingsOf("_default"), Settings("as the application has it"));
    EXPECT_EQ(SettingsOnDisk(), Settings("A"));
    EXPECT_EQ(StoredName(), L"A");
    EXPECT_EQ(manager->GetDefaultDesktopWorkspace(), WorkspacePath("A"));
    EXPECT_EQ(manager->GetDefaultTabletWorkspace(), WorkspacePath("Default(TM)"));
    manager->AppShuttingDown();
    EXPECT_EQ(Started()->GetCurrentWorkspaceName(), L"A");
}

TEST_F(Manager, DoesNotNotifyWhereItCanNot)
{
    const auto manager = Started();
    EXPECT_EQ(manager->SetCurrentWorkspace(L"", true, true), Result::Ok);   // "_default" is current
    EXPECT_THAT(app.Calls(), IsEmpty());
    EXPECT_EQ(manager->SetCurrentWorkspace(L"A", false, true), Result::Ok);
    EXPECT_THAT(app.Calls(), ElementsAre(L"Workspace_A"));
    app.canNotify = false;
    EXPECT_EQ(manager->_NotifyAppWSChanging(true, true), 0);
    EXPECT_EQ(manager->_NotifyAppWSChanged(true, true), 0);
    app.windowing.gone.insert(app.window);
    EXPECT_EQ(manager->_NotifyAppWSChanging(true, true), 1);
    EXPECT_EQ(manager->_NotifyAppWSChanged(true, true), 1);
    EXPECT_THAT(app.Calls(), IsEmpty());
}

TEST_F(Manager, NotifiesWithoutALockThatTheSystemRefuses)
{
    const auto manager = Started();
    app.windowing.canLock = false;
    EXPECT_EQ(manager->_NotifyAppWSChanged(true, false), 1);
    EXPECT_THAT(app.Calls(), ElementsAre(L"begin", L"lock", L"changed 10", L"end", L"frame 0"));
}

TEST_F(Manager, GoesBackWhenTheApplicationRefuses)
{
    const auto manager = Started();
    app.duringChange = [&] { manager->SetWorkspaceChangedFailed(); };
    EXPECT_EQ(manager->SetCurrentWorkspace(L"A", true, false), Result::ChangeFailed);
    EXPECT_EQ(manager->GetCurrentWorkspaceName(), L"_default");
    EXPECT_EQ(SettingsOnDisk(), Settings("A"));   // not taken back
    const auto calls = app.Calls();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), L"changed 01"), 2);
    EXPECT_EQ(manager->GetDefaultDesktopWorkspace(), WorkspacePath("_default"));
}

TEST_F(Manager, TakesPathsFromElsewhereAndFallsBackToTheDefault)
{
    const auto manager = Started();
    manager->SetCurrentWorkspace(L"A", false, false);
    const WorkspaceFile elsewhere = MakeAt(world.Path("elsewhere.tvws"), "x");
    EXPECT_EQ(manager->SetCurrentWorkspace(elsewhere.GetFilename(), false, false), Result::Ok);
    EXPECT_EQ(manager->GetCurrentWorkspaceName(), L"_default");
    EXPECT_EQ(manager->SetCurrentWorkspace(world.Folder("folder"), false, false), Result::WorkspaceInvalid);
}

TEST_F(Manager, MakesAWorkspaceFromAnother)
{
    const auto manager = Started();
    world.MakeFile("user/Workspaces/settings.ini", Settings("present"));
    EXPECT_EQ(manager->CreateNewWorkspace(L"New", L"A", L"Title", L"About"), Result::Ok);
    EXPECT_THAT(app.Calls(), ElementsAre(L"save"));
    EXPECT_EQ(SettingsOf("_default"), Settings("present"));
    EXPECT_EQ(SettingsOf("New"), Settings("A"));
    EXPECT_EQ(manager->GetWorkspaceUIName(L"New"), L"Title");
    EXPECT_EQ(manager->GetWorkspaceDescription(L"New").GetDefaultLangString(), L"About");
    EXPECT_EQ(manager->CreateNewWorkspace(L"New", L"B", L"", L""), Result::CreateFailed);
    EXPECT_EQ(SettingsOf("New"), Settings("A"));
    TvlString name;
    EXPECT_EQ(manager->_WSUINameToActualName(L"Title", name), 1);
    EXPECT_EQ(name, L"New");
    EXPECT_EQ(manager->_WSUINameToActualName(L"nobody's", name), 0);
    EXPECT_EQ(name, L"nobody's");
    EXPECT_EQ(manager->GetWorkspaceUIName(L"nobody's"), L"nobody's");
    EXPECT_TRUE(manager->GetWorkspaceDescription(L"nobody's").IsEmpty());
}

TEST_F(Manager, ExportsTheCurrentWorkspaceWithTheApplicationsState)
{
    const auto manager = Started();
    app.duringChange = [&] { world.MakeFile("user/Workspaces/settings.ini", Settings("present")); };
    WorkspaceFileExportSettings settings, read;
    settings.Name = L"Mine";
    settings.ExportApplicationData = true;
    EXPECT_EQ(manager->ExportWorkspace(world.Path("out.tvws"), settings), Result::Ok);
    EXPECT_THAT(app.Calls(), ElementsAre(L"begin", L"lock", L"changing 01", L"unlock", L"end"));
    EXPECT_EQ(SettingsIn(world.Path("out.tvws")), Settings("present"));
    EXPECT_EQ(manager->ReadExportWorkspaceSettings(world.Path("out.tvws"), read), Result::Ok);
    EXPECT_EQ(read.Name, L"Mine");
    EXPECT_EQ(manager->ReadExportWorkspaceSettings(WorkspacePath("A"), read), Result::InitFailed);
    settings.ExportApplicationData = false;
    EXPECT_EQ(manager->ExportWorkspace(world.Path("without.tvws"), settings), Result::Ok);
    EXPECT_EQ(
        WorkspaceFile(world.Path("without.tvws")).GetFilesInDirectory(L"content/settings.*"), std::vector<TvlString>());
    EXPECT_EQ(manager->ExportWorkspace(world.Path("no/folder.tvws"), settings), Result::Ok);
    EXPECT_FALSE(world.Has("no/folder.tvws"));
}

TEST_F(Manager, DeletesWorkspacesButTheDefaults)
{
    const auto manager = Started();
    for (const wchar_t* const name : {L"_default", L"_DEFAULT", L"Default(TM)", L"default(tm)"})
        EXPECT_EQ(manager->DeleteWorkspace(name), Result::DefaultProtected);
    manager->SetCurrentWorkspace(L"B", false, false);
    EXPECT_EQ(manager->DeleteWorkspace(L"A"), Result::Ok);   // stands before "B" in the list
    EXPECT_FALSE(world.Has("user/Workspaces/A.tvws"));
    EXPECT_EQ(manager->GetCurrentWorkspaceName(), L"B");
    EXPECT_EQ(manager->DeleteWorkspace(L"A"), Result::FileNotWritable);
    TvlUtils::SystemIO::File::MakeReadonly(WorkspacePath("B"));
    app.Calls();
    EXPECT_EQ(manager->DeleteWorkspace(L"B"), Result::Ok);   // saving its settings has made it writable
    EXPECT_EQ(app.Calls().front(), L"Workspace__default");
    EXPECT_EQ(manager->GetCurrentWorkspaceName(), L"_default");
    EXPECT_EQ(manager->GetWorkspaces().end() - manager->GetWorkspaces().begin(), 2);
}

TEST_F(Manager, DoesNotDeleteWhatIsReadOnly)
{
    const auto manager = Started();
    TvlUtils::SystemIO::File::MakeReadonly(WorkspacePath("A"));
    EXPECT_EQ(manager->DeleteWorkspace(L"A"), Result::FileNotWritable);
    EXPECT_TRUE(world.Has("user/Workspaces/A.tvws"));
    TvlUtils::SystemIO::File::MakeWritable(WorkspacePath("A"));
}

TEST_F(Manager, FollowsTheModeOfInteraction)
{
    const auto manager = Started();
    manager->ProcessOrientationUpdate(Orientation{1});
    EXPECT_FALSE(manager->ProcessInteractionUpdate(kDesktopInteraction));
    EXPECT_THAT(app.Calls(), IsEmpty());
    EXPECT_TRUE(manager->ProcessInteractionUpdate(kTabletInteraction));
    EXPECT_EQ(app.Calls().back(), L"mode");
    EXPECT_EQ(manager->GetCurrentWorkspaceName(), L"Default(TM)");
    EXPECT_EQ(manager->SetCurrentWorkspace(L"B", false, false), Result::Ok);
    EXPECT_EQ(manager->GetDefaultTabletWorkspace(), WorkspacePath("B"));
    EXPECT_TRUE(manager->ProcessInteractionUpdate(kDesktopInteraction));
    EXPECT_EQ(manager->GetCurrentWorkspaceName(), L"_default");
    manager->SetDefaultTabletWorkspace(L"nowhere");
    EXPECT_FALSE(manager->ProcessInteractionUpdate(kTabletInteraction));
    EXPECT_EQ(manager->GetUserInteractionMode(), kTabletInteraction);
}

TEST_F(Manager, StaysWhereTogglingIsOff)
{
    const auto manager = Started();
    const FeatureManagement::Feature& feature = FeatureManagement::Features::OptionsTabletMode_func();
    FeatureManagement::FeatureSet().Switch(feature, false);
    EXPECT_FALSE(manager->ProcessInteractionUpdate(kTabletInteraction));
    FeatureManagement::FeatureSet().Reset(feature);
    manager->SetTabletModeWorkspaceToggling(false);
    EXPECT_FALSE(manager->ProcessInteractionUpdate(kTabletInteraction));
    EXPECT_EQ(manager->GetUserInteractionMode(), kDesktopInteraction);
    EXPECT_THAT(app.Calls(), IsEmpty());
}

TEST_F(Manager, CopiesNoMoreIconsThanTheUserAllows)
{
    const auto manager = Started();
    const TvlString small = world.MakeFile("small.bin");
    const TvlString large = world.MakeFile("large.bin", std::string(700 << 10, '\0'));
    manager->SetCurrentWorkspace(L"A", false, false);
    WorkspaceFile& target = *manager->GetCurrentWorkspace();
    CAppPrefObject<TvlString>(L"Workspaces/MaxEntryMegabytes", L"64").SetValue(L"1");
    CAppPrefObject<TvlString>(L"Workspaces/MaxIcons", L"1000").SetValue(L"3");
    struct Row {
        const char* name;
        TvlString icon;
        int count;
        bool isWhole;
        std::size_t copied;
    };
    for (const auto& [name, icon, count, isWhole, copied] :
        {Row{"three", small, 3, true, 3}, Row{"four", small, 4, false, 3}, Row{"large", large, 3, false, 2}}) {
        WorkspaceFile source = Make(name);
        for (int i = 0; i < count; ++i)
            source.AddFile(icon, L"content/icons/" + TvlString(std::to_wstring(i)) + L".ico");
        EXPECT_EQ(manager->CopyIconsFromWorkspace(source), isWhole) << name;
        const auto icons = target.GetFilesInDirectory(L"content/icons/.*");
        EXPECT_EQ(icons.size(), copied) << name;
        for (const TvlString& entry : icons)
            target.DeleteFile(entry);
    }
}

TEST_F(Manager, AddsRemovesAndCopiesIcons)
{
    const auto manager = Started();
    const TvlString source = world.MakeFile("i.ico", "picture");
    TvlString path = source;
    const TvlString name = manager->AddIconResource(path);
    EXPECT_EQ(name.GetLength(), 36);
    EXPECT_NE(path, source);
    EXPECT_EQ(FileBytes(TvlUtils::SystemIO::ToFilePath(path)), "picture");
    TvlString missing = world.Path("none.ico");
    EXPECT_EQ(manager->AddIconResource(missing), L"");
    manager->SetCurrentWorkspace(L"A", false, false);
    EXPECT_TRUE(manager->CopyIconsFromWorkspace(WorkspaceFile(WorkspacePath("_default"))));
    ASSERT_EQ(manager->ExtractIconResources().size(), 1u);
    EXPECT_EQ(manager->ExtractIconResources()[0].Name, name);
    EXPECT_TRUE(manager->CopyIconsFromWorkspace(*manager->GetCurrentWorkspace())) << "onto itself";
    EXPECT_FALSE(manager->CopyIconsFromWorkspace(WorkspaceFile()));
    EXPECT_FALSE(manager->CopyIconsFromWorkspace(WorkspaceFile(world.MakeFile("no.tvws"))));
    EXPECT_TRUE(manager->RemoveIconResource(name));
    EXPECT_FALSE(manager->RemoveIconResource(name));
    EXPECT_TRUE(manager->ExtractIconResources().empty());
    manager->AppShuttingDown();
}

TEST_F(Manager, KeepsNoIconThatItTellsNoNameOf)
{
    const auto manager = Started();
    const TvlString source = world.MakeFile("i.ico", "picture");
    world.MakeFile("user/Temp", "a file");
    TvlString path = source;
    EXPECT_EQ(manager->AddIconResource(path), L"");
    EXPECT_EQ(path, source);
    EXPECT_TRUE(manager->GetCurrentWorkspace()->GetFilesInDirectory(L"content/icons/.*").empty());
}

TEST_F(Manager, RemembersWhereFilesWereExchanged)
{
    const auto manager = Started();
    EXPECT_EQ(manager->GetLastImportExportDir(), GetUserDocumentsTovelDir());
    manager->SetLastImportExportDir(L"x");
    EXPECT_EQ(manager->GetLastImportExportDir(), L"x");
}

class RecordingAnalytics : public IProductAnalyticsCore {
public:
    RecordingAnalytics() { ProductAnalytics::SetInstanceForTests(this); }
    ~RecordingAnalytics() { ProductAnalytics::SetInstanceForTests(nullptr); }
    bool IsSharing() const override { return true; }
    TvlString GetEventFile() const override { return {}; }
    void SetCommonProperty(const TvlString&, const TvlString&) override { }
    void SendEvent(
        const TvlString& name, const ProductAnalytics::PropertyMap& properties, const TvlString& detail) override
    {
        sent += name + L"(" + detail + L")";
        for (const auto& [key, value] : properties)
            sent += L" " + TvlString(std::wstring(std::wstring_view(key))) + L"=" + value;
    }
    TvlString sent;
};

TEST_F(Manager, TracksStockWorkspacesAlone)
{
    WorkspaceContainer container = WorkspaceContainer::Open(WorkspacePath("_default"), ZipFile::OpenMode::ReadWrite);
    container.SetMetadata(ZipContainerSchema::Metadata::Title,
        MultiLanguageString(L"en:[My D\xe9"
                            L"fault\t1];de:[x];"));
    ASSERT_TRUE(container.Close());
    RecordingAnalytics analytics;
    const auto manager = Started();
    manager->TrackWorkspaceChange(L"menu");
    EXPECT_EQ(analytics.sent, L"workspace.stock() workspace.location=menu workspace.selected=MyDfault1");
    manager->SetCurrentWorkspace(L"A", false, false);
    analytics.sent.Empty();
    manager->TrackWorkspaceChange(L"menu");
    EXPECT_EQ(analytics.sent, L"");
}
}   // namespace

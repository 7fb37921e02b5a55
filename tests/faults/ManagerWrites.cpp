// What is written when an application changes, makes, exports and deletes workspaces.
#include "FileOperation.h"
#include "IniUpdateRegistry.h"
#include "ManagerWorld.h"
#include "OldOrNew.h"
#include "WUTLRegistry.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "siblings/TvrContainer/WorkspaceContainer.h"

#include <gtest/gtest.h>

namespace {
using Result = WorkspaceManagerTypes::Result;
namespace File = TvlUtils::SystemIO::File;

constexpr const char* kDefault = "user/Workspaces/_default.tvws";
constexpr const char* kNew = "user/Workspaces/New.tvws";
constexpr const char* kExported = "user/exported.tvws";
constexpr const char* kSettings = "user/Workspaces/settings.ini";
constexpr const char* kKept = "user/Workspaces/settings.ini._default.unsaved";

void CheckNextStart(ManagerWorld& managing, const FileRun&) { managing.CheckNextStart(); }

/// A copy is whole or not there, and there when it was told to be.
void CheckCopy(const ManagerWorld& managing, const char* name, const FileRun& run)
{
    const bool isThere = managing.world.Get(name).has_value();
    EXPECT_TRUE(isThere || !run.isDone);
    EXPECT_EQ(ManagerWorld::EntryOf(name, kOtherEntry), isThere ? "other" : "none");
}

std::string ReadFile(const TvlString& path)
{
    std::string bytes;
    return File::ReadAll(path, bytes) ? bytes : "none";
}

/// The current workspace's settings have changed since they were taken from it.
struct Changed : ManagerWorld {
    Changed()
    {
        Restart();
        world.Put(kSettings, changed);
    }
    const std::string changed = SettingsText("changed");
};

/// So have the files that go with them.
struct ChangedWithFiles : Changed {
    ChangedWithFiles()
    {
        world.Put("user/extra", ExtraOf(changed));
        IniUpdateRegistry(FaultWorld::Path(kSettings).c_str());   // as the application that has changed them
    }
};

/// Earlier changes of the settings are kept beside them.
struct ChangedWithKept : ChangedWithFiles {
    ChangedWithKept() { PutWorkspace(kKept, earlier); }
    const std::string earlier = SettingsText("B");
};

/// Changes the workspace and back, as a user does who has changed the settings.
bool SwitchChanged(ChangedWithFiles& changed)
{
    const Result there = changed.Manager().SetCurrentWorkspace(L"A", false, false);
    const Result back = changed.Manager().SetCurrentWorkspace(L"_default", false, false);
    const Result again = changed.Manager().SetCurrentWorkspace(L"A", false, false);
    changed.End();
    return there == Result::Ok && back == Result::Ok && again == Result::Ok;
}

/// Saved, or kept beside the settings: what the user has changed never goes.
void CheckChanged(ChangedWithFiles& changed)
{
    changed.Restart();
    changed.manager->SetCurrentWorkspace(L"_default", false, false);
    EXPECT_EQ(changed.world.Get(kSettings), changed.changed);
    changed.defaultSettings = changed.changed;
    changed.CheckNextStart();
    EXPECT_FALSE(changed.world.Get(kKept)) << "it has been saved";
}

/// What is kept is whole, and goes when later changes have been saved alone.
void CheckKept(const ChangedWithKept& changed)
{
    const std::string kept = ManagerWorld::EntryOf(kKept, kSettingsEntry);
    const std::string saved = ManagerWorld::EntryOf(kDefault, kSettingsEntry);
    EXPECT_EQ(ManagerWorld::EntryOf(kKept, kExtraEntry), kept == "none" ? kept : ExtraOf(kept));
    EXPECT_TRUE(kept == changed.changed || saved == (kept == "none" ? changed.changed : changed.defaultSettings))
        << kept;
}

/// A process has ended while it replaced the preferences: they are gone.
struct HalfApplied : ManagerWorld {
    HalfApplied()
    {
        world.Put(std::string(kSettings) + ".applying", "");
        WUTLRegistry::DeleteRegistryKey(
            L"HKEY_CURRENT_USER\\SOFTWARE\\Tovel\\Suite\\Tovel\\Application Preferences\\Test");
    }
    /// An application takes the preferences that it has found for its own, and stores them.
    void StorePreferences()
    {
        const std::string name = Preference();
        static_cast<void>(
            File::WriteAside(FaultWorld::Path(kSettings), name == "none" ? std::string() : SettingsText(name)));
    }
};

/// A user who has no workspaces and no settings yet.
struct NewUser : ManagerWorld {
    NewUser()
    {
        for (const char* const name : {kDefault, kSettings, "user/Workspaces/settings.ini.origin", "user/extra"})
            File::Delete(FaultWorld::Path(name));
        for (const char* const name : {"A", "B"})
            File::Delete(FaultWorld::Path(std::string("user/Workspaces/") + name + ".tvws"));
    }
};

/// The default workspace has a stock one that takes its place.
struct ForReset : ManagerWorld {
    ForReset() { PutWorkspace("suite/Workspaces/_default.tvws", SettingsText("stock")); }
};

/// A picture on disk, and an icon in the workspace "A".
struct Icons : ManagerWorld {
    Icons()
    {
        world.Put("user/picture.ico", "icon");
        EXPECT_TRUE(WorkspaceFile(FaultWorld::Path(kIconSource)).AddFile(FaultWorld::Path("user/picture.ico"), kIcon));
    }
    static TvlString EntryName(const TvlString& icon)
    {
        return TvlString(ZipContainerSchema::contentDir) + WorkspaceContainerSchema::iconsDir + icon + L".ico";
    }
    void Check()
    {
        // Temporary files are the system's to take away.
        TvlUtils::SystemIO::Folder::DeleteRecursive(TvlUtils::SystemIO::Path::GetTempFolder(), false);
        CheckNextStart();
    }

    static constexpr const wchar_t* kIcon = L"content/icons/one.ico";
    static constexpr const char* kIconSource = "user/Workspaces/A.tvws";
    TvlString added;   // name of the icon that was added last
};

Result Create(ManagerWorld& managing)
{
    return managing.Manager().CreateNewWorkspace(L"New", L"A", L"title", L"about");
}

/// Makes the workspace "New". What an attempt that failed has left there stands in its way, as the user sees, who deletes it.
Result CreateAgain(ManagerWorld& managing)
{
    if (const Result result = Create(managing); result == Result::Ok)
        return result;
    managing.Manager().DeleteWorkspace(L"New");
    return Create(managing);
}
}   // namespace

FileOperations WritesOfManagers()
{
    return {
        FileRow<ManagerWorld>(
            "start", 20,
            [](ManagerWorld& managing) {
                managing.Restart();
                return managing.manager->GetCurrentWorkspace() != nullptr;
            },
            CheckNextStart),
        FileRow<NewUser>(
            "first_start", 40,
            [](NewUser& user) {
                user.Restart();
                WorkspaceFile* const current = user.manager->GetCurrentWorkspace();
                const bool isDone = current != nullptr && current->InitializeMetadata();
                if (isDone)
                    user.manager->ExtractSettingsFromWorkspace(*current);   // as applications do without settings
                user.End();
                return isDone;
            },
            [](NewUser& user, const FileRun& run) {
                user.Forget();
                user.Restart();
                const WorkspaceFile* const current = user.manager->GetCurrentWorkspace();
                ASSERT_NE(current, nullptr);
                EXPECT_EQ(current->GetUIOrder(), 400) << "the default one is whole";
                EXPECT_EQ(ManagerWorld::EntryOf("user/Workspaces/Stock.tvws", kOtherEntry), "other");
                EXPECT_TRUE(user.world.Get(kDefault) || !run.isDone);
                user.Forget();
            }),
        FileRow<HalfApplied>(
            "start_behind_a_kill", 20,
            [](HalfApplied& managing) {
                managing.Restart();
                managing.StorePreferences();
                const bool isDone = managing.manager->GetCurrentWorkspace() != nullptr;
                managing.End();
                return isDone;
            },
            [](HalfApplied& managing, const FileRun&) { managing.CheckNextStart(); }),
        FileRow<ForReset>(
            "reset", 60,
            [](ForReset& managing) {
                managing.manager = ManagerWorld::Start(true);
                const WorkspaceFile* const current = managing.manager->GetCurrentWorkspace();
                const bool isDone = current && current->GetName() == L"_default";
                managing.End();
                return isDone;
            },
            [](ForReset& managing, const FileRun& run) {
                managing.Forget();
                managing.Restart();
                // What was reset is the stock one, and what was not its own. When the stock one can't be copied there is a
                // new one, without settings.
                const std::string settings = ManagerWorld::EntryOf(kDefault, kSettingsEntry);
                const bool isNew = settings == "none" && WorkspaceFile(FaultWorld::Path(kDefault)).GetUIOrder() == 400;
                EXPECT_TRUE(settings == SettingsText("stock")
                    || (run.hasFailed && (settings == SettingsText("_default") || isNew)))
                    << settings;
                if (isNew)
                    return managing.Forget();
                managing.defaultSettings = settings;
                managing.CheckNextStart();
            }),
        FileRow<ManagerWorld>(
            "switch", 100,
            [](ManagerWorld& managing) {
                managing.Restart();
                const Result there = managing.manager->SetCurrentWorkspace(L"A", false, false);
                const Result back = managing.manager->SetCurrentWorkspace(L"_default", false, false);
                const Result again = managing.manager->SetCurrentWorkspace(L"A", false, false);
                managing.End();
                return there == Result::Ok && back == Result::Ok && again == Result::Ok;
            },
            CheckNextStart),
        FileRow<ChangedWithFiles>(
            "switch_changed", 100, [](ChangedWithFiles& changed) { return SwitchChanged(changed); },
            [](ChangedWithFiles& changed, const FileRun&) { CheckChanged(changed); }),
        FileRow<ChangedWithKept>(
            "switch_kept", 100, [](ChangedWithKept& changed) { return SwitchChanged(changed); },
            [](ChangedWithKept& changed, const FileRun&) {
                CheckKept(changed);
                CheckChanged(changed);
            }),
        FileRow<ManagerWorld>(
            "create", 60,
            [](ManagerWorld& managing) {
                managing.Restart();
                const Result result = CreateAgain(managing);
                managing.End();
                return result == Result::Ok;
            },
            [](ManagerWorld& managing, const FileRun& run) {
                CheckCopy(managing, kNew, run);
                if (run.isDone) {
                    const WorkspaceFile made(FaultWorld::Path(kNew));
                    EXPECT_EQ(made.GetTitle().GetDefaultLangString(), L"title");
                    EXPECT_NE(made.GetInstanceID(), WorkspaceFile(FaultWorld::Path(kDefault)).GetInstanceID());
                }
                managing.CheckNextStart();
            }),
        FileRow<ManagerWorld>(
            "export", 60,
            [](ManagerWorld& managing) {
                managing.Restart();
                const TvlString path = FaultWorld::Path(kExported);
                File::Delete(path);
                WorkspaceFileExportSettings settings;
                // The result does not tell: what was to be described is there when all went well.
                const bool isDone = managing.manager->ExportWorkspace(path, settings) == Result::Ok
                    && WorkspaceFile::ReadExportSettings(path, settings);
                managing.End();
                return isDone;
            },
            [](ManagerWorld& managing, const FileRun& run) {
                CheckCopy(managing, kExported, run);
                for (const wchar_t* const entry : {kSettingsEntry, kExtraEntry})
                    EXPECT_TRUE(!run.isDone || ManagerWorld::EntryOf(kExported, entry) == "none") << entry;
                managing.CheckNextStart();
            }),
        FileRow<ManagerWorld>(
            "delete", 60,
            [](ManagerWorld& managing) {
                managing.Restart();
                CreateAgain(managing);
                const Result result = managing.manager->DeleteWorkspace(L"New");
                managing.End();
                return result == Result::Ok;
            },
            [](ManagerWorld& managing, const FileRun& run) {
                // The result does not tell whether the file has gone.
                const std::string copy = ManagerWorld::EntryOf(kNew, kOtherEntry);
                EXPECT_TRUE(copy == "none" || (copy == "other" && run.hasFailed)) << copy;
                managing.CheckNextStart();
            }),
        FileRow<Icons>(
            "add_icon", 40,
            [](Icons& icons) {
                icons.Restart();
                TvlString path = FaultWorld::Path("user/picture.ico");
                icons.added = icons.manager->AddIconResource(path);
                const bool isDone = !icons.added.IsEmpty() && ReadFile(path) == "icon";
                icons.End();
                return isDone;
            },
            [](Icons& icons, const FileRun& run) {
                const std::string icon = ManagerWorld::EntryOf(kDefault, Icons::EntryName(icons.added));
                EXPECT_TRUE(!run.isDone || icon == "icon") << icon;
                icons.Check();
            }),
        FileRow<Icons>(
            "remove_icon", 60,
            [](Icons& icons) {
                icons.Restart();
                TvlString path = FaultWorld::Path("user/picture.ico");
                icons.added = icons.manager->AddIconResource(path);
                const bool isDone = !icons.added.IsEmpty() && icons.manager->RemoveIconResource(icons.added);
                icons.End();
                return isDone;
            },
            [](Icons& icons, const FileRun& run) {
                const std::string icon = ManagerWorld::EntryOf(kDefault, Icons::EntryName(icons.added));
                ExpectOldOrNew(icon, "icon", "none", run.isDone);
                icons.Check();
            }),
        FileRow<Icons>(
            "copy_icons", 40,
            [](Icons& icons) {
                icons.Restart();
                const bool isDone =
                    icons.manager->CopyIconsFromWorkspace(WorkspaceFile(FaultWorld::Path(Icons::kIconSource)));
                icons.End();
                return isDone;
            },
            [](Icons& icons, const FileRun& run) {
                const std::string icon = ManagerWorld::EntryOf(kDefault, Icons::kIcon);
                ExpectOldOrNew(icon, "none", "icon", run.isDone);
                EXPECT_EQ(ManagerWorld::EntryOf(Icons::kIconSource, Icons::kIcon), "icon");
                icons.Check();
            }),
        FileRow<Icons>(
            "extract_icons", 40,
            [](Icons& icons) {
                icons.Restart();
                const bool isCopied =
                    icons.manager->CopyIconsFromWorkspace(WorkspaceFile(FaultWorld::Path(Icons::kIconSource)));
                const auto extracted = icons.manager->ExtractIconResources();
                const TvlString temporary = FaultWorld::Path("user/Temp");
                for (const auto& icon : extracted)
                    EXPECT_TRUE(TvlUtils::SystemIO::Path::Contains(temporary, icon.Path)) << icon.Path.c_str();
                const bool isDone = isCopied && extracted.size() == 1 && ReadFile(extracted[0].Path) == "icon";
                icons.End();
                return isDone;
            },
            [](Icons& icons, const FileRun&) { icons.Check(); }),
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
    };
}

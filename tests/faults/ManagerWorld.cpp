#include "ManagerWorld.h"

#include "IniUpdateRegistry.h"
#include "SettingsOrigin.h"
#include "WUTLRegistry.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <gtest/gtest.h>

namespace {
constexpr const char* kSettings = "user/Workspaces/settings.ini";
}   // namespace

ManagerWorld::ManagerWorld()
{
    for (const std::string name : {"_default", "A", "B"})
        PutWorkspace("user/Workspaces/" + name + ".tvws", SettingsText(name));
    PutWorkspace("suite/Workspaces/Stock.tvws", SettingsText("stock"));
    world.Put(kSettings, defaultSettings);
    world.Put("user/extra", ExtraOf(defaultSettings));
    world.Put(std::string(kSettings) + ".origin",
        "WSMANAGER_SESSION_nobody\n" + TvlPlatform::ToUtf8(FaultWorld::Path("user/Workspaces/_default.tvws")));
    IniUpdateRegistry(FaultWorld::Path(kSettings).c_str());
}

std::vector<WorkspaceFile::FilePair> ManagerWorld::AdditionalFiles()
{
    return {{kExtraEntry, FaultWorld::Path("user/extra")}};
}

std::unique_ptr<WorkspaceManager> ManagerWorld::Start(bool reset)
{
    auto manager = std::make_unique<WorkspaceManager>();
    WSM_INIT init;
    init.Product = L"Suite";
    init.Application = L"Tovel";
    init.AdditionalFiles = AdditionalFiles();
    init.Reset = reset;
    manager->Initialize(init, [] { return true; });
    return manager;
}

WorkspaceManager& ManagerWorld::Manager()
{
    if (!manager)
        Restart();
    return *manager;
}

void ManagerWorld::End()
{
    if (manager)
        manager->AppShuttingDown();
    Forget();
}

void ManagerWorld::Forget()
{
    manager.reset();
    SettingsOrigin::BeginSession();
}

std::string ManagerWorld::Preference()
{
    const WUTLRegistry key(
        L"HKEY_CURRENT_USER\\SOFTWARE\\Tovel\\Suite\\Tovel\\Application Preferences\\Test", WUTLRegistry::kReadAccess);
    TvlString value;
    return key.GetValue(L"Name", value) == 0 ? TvlPlatform::ToUtf8(value) : "none";
}

void ManagerWorld::CheckNextStart()
{
    End();
    const auto next = Start();
    const auto& workspaces = next->GetWorkspaces();
    EXPECT_GE(workspaces.cend() - workspaces.cbegin(), 4);
    EXPECT_EQ(EntryOf("user/Workspaces/Stock.tvws", kSettingsEntry), SettingsText("stock"));
    for (const std::string name : {"_default", "A", "B"}) {
        const std::string file = "user/Workspaces/" + name + ".tvws";
        const std::string settings = name == "_default" ? defaultSettings : SettingsText(name);
        EXPECT_EQ(EntryOf(file, kSettingsEntry), settings) << name;
        EXPECT_EQ(EntryOf(file, kExtraEntry), ExtraOf(settings)) << name;
        EXPECT_EQ(EntryOf(file, kOtherEntry), "other") << name;
    }
    ASSERT_NE(next->GetCurrentWorkspace(), nullptr);
    const std::string current = "user/Workspaces/" + TvlPlatform::ToUtf8(next->GetCurrentWorkspaceName()) + ".tvws";
    const std::string settings = world.Get(kSettings).value_or("none");
    EXPECT_EQ(settings, EntryOf(current, kSettingsEntry)) << current;
    EXPECT_EQ(settings, SettingsText(Preference())) << current;
    Forget();
}

#include "ManagerWorld.h"

#include <gtest/gtest.h>

ManagerWorld::ManagerWorld()
{
    world.files.AddFolder(FaultWorld::File("suite/Workspaces"));
    for (const std::string name : {"_default", "A", "B"})
        PutWorkspace("user/Workspaces/" + name + ".tvws", SettingsText(name));
    world.Put("user/Workspaces/settings.ini", SettingsText("_default"));
}

std::unique_ptr<WorkspaceManager> ManagerWorld::Start()
{
    auto manager = std::make_unique<WorkspaceManager>();
    WSM_INIT init;
    init.Product = L"Suite";
    init.Application = L"Tovel";
    manager->Initialize(init, nullptr);
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
    manager.reset();
}

void ManagerWorld::CheckNextStart()
{
    End();
    const auto next = Start();
    const auto& workspaces = next->GetWorkspaces();
    EXPECT_GE(workspaces.cend() - workspaces.cbegin(), 3);
    EXPECT_NE(next->GetCurrentWorkspace(), nullptr);
    for (const std::string name : {"_default", "A", "B"}) {
        const std::string file = "user/Workspaces/" + name + ".tvws";
        const std::string settings = EntryOf(file, kSettingsEntry);
        if (mayMix)
            EXPECT_TRUE(settings.starts_with("[Test]\r\nName=") && settings.ends_with("\r\n")) << name << settings;
        else
            EXPECT_EQ(settings, SettingsText(name)) << name;
        EXPECT_EQ(EntryOf(file, kOtherEntry), "other") << name;
    }
    const std::string settings = world.Get("user/Workspaces/settings.ini").value_or("none");
    EXPECT_TRUE(settings.starts_with("[Test]\r\nName=")) << settings;
}

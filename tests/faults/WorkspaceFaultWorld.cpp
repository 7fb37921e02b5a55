#include "WorkspaceFaultWorld.h"

#include "WorkspaceFile.h"
#include "siblings/TvrContainer/WorkspaceContainer.h"

#include <gtest/gtest.h>
#include <map>

const std::string& WorkspaceBytes(const std::string& settings)
{
    static std::map<std::string, std::string> made;
    const auto [found, isNew] = made.emplace(settings, "");
    if (isNew) {
        const FaultWorld world;
        const TvlString path = FaultWorld::Path("user/made.tvws");
        WorkspaceContainer container = WorkspaceContainer::Create(path);
        const auto add = [&](const wchar_t* entry, const std::string& bytes) {
            EXPECT_TRUE(
                container.AddFile(entry, TvlUtils::Stream::OverMemory(bytes.data(), bytes.size()), false, nullptr));
        };
        add(kSettingsEntry, settings);
        add(kOtherEntry, "other");
        EXPECT_TRUE(container.Close());
        found->second = world.Get("user/made.tvws").value_or("");
    }
    return found->second;
}

std::string SettingsText(const std::string& name) { return "[Test]\r\nName=" + name + "\r\n"; }

WorkspacesMade::WorkspacesMade()
{
    WorkspaceBytes("old");
    for (const char* const name : {"_default", "A", "B"})
        WorkspaceBytes(SettingsText(name));
}

void WorkspaceFaultWorld::PutWorkspace(const std::string& name, const std::string& settings)
{
    world.Put(name, WorkspaceBytes(settings));
}

std::string WorkspaceFaultWorld::EntryOf(const std::string& name, const TvlString& entry)
{
    const WorkspaceContainer container = WorkspaceContainer::Open(FaultWorld::Path(name), ZipFile::OpenMode::Read);
    TvlUtils::Stream stream = container.OpenFile(entry, false);
    std::string bytes(1 << 16, '\0');
    bytes.resize(stream.ReadSome(bytes.data(), bytes.size()));
    return stream ? bytes : "none";
}

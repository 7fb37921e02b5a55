#include "WorkspaceFaultWorld.h"

#include "WorkspaceFile.h"
#include "siblings/TvrContainer/WorkspaceContainer.h"

#include <gtest/gtest.h>
#include <map>

namespace {
using TvlUtils::Guid;

constexpr const wchar_t* kIdentity = L"44e925cc-890c-49b2-8ffb-5407cd23fd88";

/// Bytes of a workspace that `fill` has filled.
template <class Fill>
std::string MakeWorkspace(Fill fill)
{
    const FaultWorld world;
    const TvlString path = FaultWorld::Path("user/made.tvws");
    WorkspaceContainer container = WorkspaceContainer::Create(path);
    const auto add = [&](const TvlString& entry, const std::string& bytes) {
        EXPECT_TRUE(container.AddFile(entry, TvlUtils::Stream::OverMemory(bytes.data(), bytes.size()), false, nullptr));
    };
    fill(container, add);
    EXPECT_TRUE(container.Close());
    return world.Get("user/made.tvws").value_or("");
}

const std::string& OldWorkspaceBytes()
{
    static const std::string bytes = MakeWorkspace([](WorkspaceContainer& container, const auto& add) {
        container.SetMetadata(ZipContainerSchema::Metadata::Title, MultiLanguageString(L"title"));
        add(ZipContainerSchema::GetContentFilename(WorkspaceContainerSchema::workspaceFile),
            "<ui><applicationInfo workspaceID='44e925cc-890c-49b2-8ffb-5407cd23fd88'/></ui>");
    });
    return bytes;
}
}   // namespace

const std::string& WorkspaceBytes(const std::string& settings)
{
    static std::map<std::string, std::string> made;
    const auto [found, isNew] = made.emplace(settings, "");
    if (isNew)
        found->second = MakeWorkspace([&](WorkspaceContainer&, const auto& add) {
            add(kSettingsEntry, settings);
            add(kOtherEntry, "other");
            add(kExtraEntry, ExtraOf(settings));
        });
    return found->second;
}

std::string ExtraOf(const std::string& settings) { return "extra of " + settings; }

std::string SettingsText(const std::string& name) { return "[Test]\r\nName=" + name + "\r\n"; }

WorkspacesMade::WorkspacesMade()
{
    OldWorkspaceBytes();
    WorkspaceBytes("old");
    for (const char* const name : {"_default", "A", "B", "stock"})
        WorkspaceBytes(SettingsText(name));
}

void WorkspaceFaultWorld::PutWorkspace(const std::string& name, const std::string& settings)
{
    world.Put(name, WorkspaceBytes(settings));
}

void WorkspaceFaultWorld::PutOldWorkspace(const std::string& name) { world.Put(name, OldWorkspaceBytes()); }

void WorkspaceFaultWorld::CheckOldWorkspace(const std::string& name)
{
    const WorkspaceFile file(FaultWorld::Path(name));
    EXPECT_TRUE(file.InitializeMetadata());
    EXPECT_EQ(file.GetTitle().GetDefaultLangString(), L"title");
    EXPECT_EQ(file.GetDocumentID(), Guid(kIdentity));
    EXPECT_EQ(file.GetDerivedFrom(), std::vector<Guid>{Guid(kIdentity)});
    EXPECT_FALSE(file.GetInstanceID().IsNil());
}

std::string WorkspaceFaultWorld::EntryOf(const std::string& name, const TvlString& entry)
{
    const WorkspaceContainer container = WorkspaceContainer::Open(FaultWorld::Path(name), ZipFile::OpenMode::Read);
    TvlUtils::Stream stream = container.OpenFile(entry, false);
    std::string bytes(1 << 16, '\0');
    bytes.resize(stream.ReadSome(bytes.data(), bytes.size()));
    return stream ? bytes : "none";
}

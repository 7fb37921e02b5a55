// What a manager tells of its workspaces.
#include "WorkspaceLimits.h"
#include "WorkspaceManagerCore.h"
#include "WorkspaceNames.h"
#include "siblings/TvlUtils/FileStat.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "siblings/TvrContainer/Schemas.h"

#include <algorithm>
#include <tuple>

namespace {
namespace Path = TvlUtils::SystemIO::Path;

/// Where a workspace stands among others.
struct Rank {
    explicit Rank(const WorkspaceFile& file) : order(file.GetUIOrder())
    {
        const TvlString category = file.GetCategoryInUILang();
        hasCategory = !category.IsEmpty();
        name = category + file.GetName();
    }
    bool operator<(const Rank& other) const
    {
        return std::tie(hasCategory, order, name) < std::tie(other.hasCategory, other.order, other.name);
    }

    bool hasCategory;
    LONG order;
    TvlString name;
};

const TvlString& IconPattern()
{
    static const TvlString pattern =
        TvlString(ZipContainerSchema::contentDir) + WorkspaceContainerSchema::iconsDir + L".*";
    return pattern;
}
}   // namespace

WorkspaceFile* WorkspaceManagerCore::GetCurrentWorkspace()
{
    return m_currentIndex < m_workspaces.size() ? &m_workspaces[m_currentIndex] : nullptr;
}

const WorkspaceFile* WorkspaceManagerCore::GetCurrentWorkspace() const
{
    return m_currentIndex < m_workspaces.size() ? &m_workspaces[m_currentIndex] : nullptr;
}

TvlString WorkspaceManagerCore::GetCurrentWorkspaceName() const
{
    const WorkspaceFile* const current = GetCurrentWorkspace();
    return current ? current->GetName() : TvlString();
}

WorkspaceFile* WorkspaceManagerCore::GetWorkspaceByInstanceID(const TvlUtils::Guid& instance)
{
    const auto found = std::find_if(m_workspaces.begin(), m_workspaces.end(),
        [&](const WorkspaceFile& file) { return file.GetInstanceID() == instance; });
    return found == m_workspaces.end() ? nullptr : &*found;
}

std::vector<WorkspaceFile> WorkspaceManagerCore::GetNamedWorkspaces() const
{
    std::vector<std::pair<Rank, const WorkspaceFile*>> ranked;
    for (const WorkspaceFile& file : m_workspaces)
        ranked.emplace_back(Rank(file), &file);
    std::stable_sort(ranked.begin(), ranked.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<WorkspaceFile> sorted;
    for (const auto& [rank, file] : ranked)
        sorted.push_back(*file);
    return sorted;
}

std::vector<WorkspaceManagerTypes::CategorizedWorkspaces> WorkspaceManagerCore::GetCategoriedWorkspaces() const
{
    std::vector<WorkspaceManagerTypes::CategorizedWorkspaces> groups;
    for (const WorkspaceFile& file : GetNamedWorkspaces()) {
        const TvlString category = file.GetCategoryInUILang();
        auto group = std::find_if(groups.begin(), groups.end(),
            [&](const auto& candidate) { return candidate.first.Compare(category) == 0; });
        if (group == groups.end())
            group = groups.insert(group, {category, {}});
        group->second.push_back(file);
    }
    return groups;
}

std::vector<WorkspaceManagerTypes::IconResourcePair> WorkspaceManagerCore::ExtractIconResources()
{
    std::vector<WorkspaceManagerTypes::IconResourcePair> icons;
    if (!GetCurrentWorkspace())
        return icons;
    WorkspaceFile file = *GetCurrentWorkspace();
    IconAllowance allowance(file.GetFilename());
    for (const TvlString& entry : file.GetFilesInDirectory(IconPattern())) {
        if (!Path::HasExtension(entry, WorkspaceNames::kIconExtension))
            continue;
        if (!allowance.HasRoom())
            break;
        if (m_iconTempFolder.IsEmpty())
            m_iconTempFolder = Path::CreateNewTempFolder();
        if (m_iconTempFolder.IsEmpty())
            break;   // the current folder is nobody's place for them
        const TvlString target = Path::GetTempFileNameW(m_iconTempFolder, L"", WorkspaceNames::kIconExtension);
        if (!file.GetFile(entry, target))
            continue;
        allowance.Take(TvlUtils::SystemIO::File::GetFileStat(target).size);
        icons.push_back({Path::GetFileNameWithoutExtension(entry), target});
    }
    return icons;
}

// Icons in the current workspace.
#include "WorkspaceAccess.h"
#include "WorkspaceLimits.h"
#include "WorkspaceManager.h"
#include "WorkspaceNames.h"
#include "siblings/TvlUtils/SystemIO.h"

namespace {
namespace File = TvlUtils::SystemIO::File;
namespace Path = TvlUtils::SystemIO::Path;

TvlString IconsFolder() { return TvlString(ZipContainerSchema::contentDir) + WorkspaceContainerSchema::iconsDir; }

TvlString IconEntry(const TvlString& name) { return IconsFolder() + name + WorkspaceNames::kIconExtension; }

/// A copy among the temporary files; empty when there can't be one.
TvlString CopyToTempFolder(const TvlString& path)
{
    const TvlString folder = Path::GetTempFolder();
    const TvlString copy = Path::GetTempFileNameW(folder, L"", WorkspaceNames::kIconExtension);
    return !folder.IsEmpty() && File::Copy(path, copy, true) ? copy : TvlString();
}
}   // namespace

TvlString WorkspaceManager::AddIconResource(TvlString& path)
{
    const TvlString name = TvlUtils::Guid::Generate().ToString();
    WorkspaceFile* const current = GetCurrentWorkspace();
    if (!current || !current->AddFile(path, IconEntry(name)))
        return {};
    const TvlString copy = CopyToTempFolder(path);
    if (copy.IsEmpty()) {
        RemoveIconResource(name);   // nobody learns its name
        return {};
    }
    path = copy;
    return name;
}

bool WorkspaceManager::RemoveIconResource(const TvlString& name)
{
    const WorkspaceFile* const current = GetCurrentWorkspace();
    return current && WorkspaceFile(*current).DeleteFile(IconEntry(name));
}

bool WorkspaceManager::CopyIconsFromWorkspace(const WorkspaceFile& source)
{
    const WorkspaceFile* const current = GetCurrentWorkspace();
    if (source.GetFilename().IsEmpty() || !current)
        return false;
    WorkspaceContainer from = OpenWorkspaceForReading(source.GetFilename());
    WorkspaceContainer to = OpenWorkspaceForWriting(current->GetFilename());
    if (!from || !to)
        return false;
    bool added = true;
    IconAllowance allowance(source.GetFilename());
    // Of the container that is open: a second one could fail, and would count as one without icons.
    for (const TvlString& entry : from.GetFileNames(IconsFolder() + L".*", true)) {
        if (!Path::HasExtension(entry, WorkspaceNames::kIconExtension))
            continue;
        if (!allowance.HasRoom()) {
            added = false;
            break;
        }
        TvlUtils::Stream icon = from.OpenFile(entry, false);
        added = to.AddFile(entry, icon, false, nullptr) && added;
        allowance.Take(icon.GetPosition());
    }
    from.Close();   // first: it may be the same file, which not every system replaces under a reader
    return to.Close() && added;
}

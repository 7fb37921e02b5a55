#include "WorkspaceAccess.h"

#include "InjectedServices.h"
#include "WorkspaceLimits.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/MultiLanguageString.h"
#include "siblings/TvlUtils/SystemIO.h"

WorkspaceContainer OpenWorkspaceForReading(const TvlString& path)
{
    WorkspaceContainer container = WorkspaceContainer::Open(path, ZipFile::OpenMode::Read);
    container.SetMaxEntryBytes(MaxWorkspaceEntryBytes());
    return container;
}

WorkspaceContainer OpenWorkspaceForWriting(const TvlString& path)
{
    TvlUtils::SystemIO::File::MakeWritable(path);
    WorkspaceContainer container = WorkspaceContainer::Open(path, ZipFile::OpenMode::ReadWrite);
    container.SetMaxEntryBytes(MaxWorkspaceEntryBytes());
    return container;
}

std::optional<bool> IsThere(const TvlString& path)
{
    using namespace TvlUtils::SystemIO;
    FileStatus status;
    const FileResult found = FileLayer::Get().Stat(ToFilePath(path), status);
    return found || found.IsMissing() ? std::optional(static_cast<bool>(found)) : std::nullopt;
}

bool HasReadableSettings(const TvlString& path)
{
    return static_cast<bool>(
        OpenWorkspaceForReading(path).OpenFile(ContentPath(WorkspaceContainerSchema::settingsFile), false));
}

TvlString ContentPath(const wchar_t* file) { return ZipContainerSchema::GetContentFilename(file); }

TvlString UILanguageName()
{
    return MultiLanguageString::GetLanguageFromLANGID(TheInjectedServices().getUILanguageId());
}

#include "WorkspaceAccess.h"

#include "InjectedServices.h"
#include "WorkspaceLimits.h"
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

bool MayHaveSettings(const TvlString& path)
{
    const WorkspaceContainer container = OpenWorkspaceForReading(path);
    return !container || container.DoesFileExist(ContentPath(WorkspaceContainerSchema::settingsFile));
}

TvlString ContentPath(const wchar_t* file) { return ZipContainerSchema::GetContentFilename(file); }

TvlString UILanguageName()
{
    return MultiLanguageString::GetLanguageFromLANGID(TheInjectedServices().getUILanguageId());
}

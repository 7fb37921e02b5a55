// What workspace files hold: the configuration, settings and other entries.
#include "SettingsEntries.h"
#include "WorkspaceAccess.h"
#include "WorkspaceFile.h"
#include "siblings/TvlUtils/SystemIO.h"

using TvlUtils::Stream;
namespace SystemFile = TvlUtils::SystemIO::File;
using Hold = std::lock_guard<std::recursive_mutex>;

bool WorkspaceFile::LoadUIConfigIntoXML(WXmlDoc& document) const
{
    const Hold hold(Lock);
    WorkspaceContainer container = OpenWorkspaceForReading(Filename);
    Stream stream = container.OpenFile(ContentPath(WorkspaceContainerSchema::workspaceFile), false);
    const bool isLoaded = document.Load(stream);
    stream.Release();
    container.Close();
    return isLoaded;
}

bool WorkspaceFile::SaveUIConfigFromXML(const WXmlDoc& document) const
{
    const Hold hold(Lock);
    WorkspaceContainer container = OpenWorkspaceForWriting(Filename);
    if (!container)
        return false;
    Stream stream = container.CreateFileW(ContentPath(WorkspaceContainerSchema::workspaceFile), false, false, nullptr);
    const bool isSaved = document.Save(stream);
    stream.Release();
    return container.Close() && isSaved;
}

bool WorkspaceFile::AddFile(const TvlString& source, const TvlString& name)
{
    const Hold hold(Lock);
    WorkspaceContainer container = OpenWorkspaceForWriting(Filename);
    if (container.DoesFileExist(name))
        container.DeleteFileW(name);
    const bool isAdded = container.AddFile(name, source, false, nullptr);
    return container.Close() && isAdded;
}

bool WorkspaceFile::GetFile(const TvlString& name, const TvlString& target)
{
    const Hold hold(Lock);
    // For writing, although it only reads: a read-only mark goes, as callers expect.
    WorkspaceContainer container = OpenWorkspaceForWriting(Filename);
    return container.ExtractFile(name, target);
}

std::vector<TvlString> WorkspaceFile::GetFilesInDirectory(const TvlString& pattern) const
{
    const Hold hold(Lock);
    SystemFile::MakeWritable(Filename);
    return OpenWorkspaceForReading(Filename).GetFileNames(pattern, true);
}

bool WorkspaceFile::DeleteFile(const TvlString& name)
{
    const Hold hold(Lock);
    WorkspaceContainer container = OpenWorkspaceForWriting(Filename);
    const bool isDeleted = container.DeleteFileW(name);
    return container.Close() && isDeleted;
}

bool WorkspaceFile::ExtractSettings(
    WorkspaceContainer& container, const TvlString& path, const std::vector<FilePair>& files)
{
    for (const auto& [name, target] : files) {
        SystemFile::Delete(target);
        container.ExtractFile(name, target);
    }
    return container.ExtractFile(ContentPath(WorkspaceContainerSchema::settingsFile), path);
}

bool WorkspaceFile::LoadSettings(TvlString path, const std::vector<FilePair>& files)
{
    const Hold hold(Lock);
    WorkspaceContainer container = OpenWorkspaceForReading(Filename);
    return ExtractSettings(container, path, files);
}

bool WorkspaceFile::LoadSettings(
    const TvlString& path, const std::vector<FilePair>& files, WorkspaceFileExportSettings& exported)
{
    const Hold hold(Lock);
    WorkspaceContainer container = OpenWorkspaceForReading(Filename);
    const bool isLoaded = ExtractSettings(container, path, files);
    exported.ReadState = 0;
    if (container)
        ReadExported(container, exported);
    return isLoaded;
}

bool WorkspaceFile::SaveSettings(TvlString path, const std::vector<FilePair>& files)
{
    bool isWhole = true;
    return SaveSettings(path, files, isWhole);
}

bool WorkspaceFile::SaveSettings(const TvlString& path, const std::vector<FilePair>& files, bool& isWhole)
{
    const Hold hold(Lock);
    WorkspaceContainer container = OpenWorkspaceForWriting(Filename);
    if (!container)
        return false;
    const SettingsEntries entries = SettingsEntries::Read(path, files);
    isWhole = entries.isWhole;
    const bool isAdded = entries.AddTo(container);
    return container.Close() && isAdded;
}

bool WorkspaceFile::IsTouchWorkspace() const { return !GetFilesInDirectory(ZipContainerSchema::touchInfoFile).empty(); }

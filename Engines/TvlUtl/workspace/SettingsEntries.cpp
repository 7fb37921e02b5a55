#include "SettingsEntries.h"

#include "WorkspaceAccess.h"
#include "WorkspaceLimits.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/LogMessage.h"
#include "siblings/TvlUtils/SystemIO.h"

namespace {
using namespace TvlUtils::SystemIO;

/// Whether reading it again makes no difference.
bool IsNeverStored(const TvlString& path)
{
    FileStatus status;
    return FileLayer::Get().Stat(ToFilePath(path), status)
        && (status.kind != FileKind::File || status.size > MaxWorkspaceEntryBytes());
}

/// Reads a file to the end of `entries`; false when it is not there or can't be read.
bool ReadFile(const TvlString& name, const TvlString& path, SettingsEntries& entries)
{
    std::string bytes;
    const auto read = File::ReadAll(path, bytes, static_cast<std::size_t>(MaxWorkspaceEntryBytes()));
    if (read) {
        entries.files.emplace_back(name, std::move(bytes));
        return true;
    }
    if (!read.IsMissing()) {
        TvlUtils::LogMessage(TvlUtils::LogLevel::Warning, path + L" can't be saved: " + read.Reason());
        entries.isWhole = entries.isWhole && IsNeverStored(path);
    }
    return false;
}
}   // namespace

SettingsEntries SettingsEntries::Read(const TvlString& settings, const std::vector<WorkspaceFile::FilePair>& files)
{
    SettingsEntries entries;
    for (const auto& [name, path] : files)
        ReadFile(name, path, entries);
    entries.hasSettings = ReadFile(ContentPath(WorkspaceContainerSchema::settingsFile), settings, entries);
    return entries;
}

bool SettingsEntries::AddTo(WorkspaceContainer& container) const
{
    bool isAdded = false;
    for (const auto& [name, bytes] : files)
        isAdded = container.AddFile(name, TvlUtils::Stream::OverMemory(bytes.data(), bytes.size()), false, nullptr);
    return hasSettings && isAdded;
}

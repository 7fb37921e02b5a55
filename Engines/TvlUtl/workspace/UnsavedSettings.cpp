#include "UnsavedSettings.h"

#include "SettingsOrigin.h"
#include "WorkspaceAccess.h"
#include "siblings/TvlUtils/LogMessage.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <algorithm>

using namespace TvlUtils::SystemIO;
using SettingsOrigin::Lack;
using TvlUtils::LogLevel;
using TvlUtils::LogMessage;

namespace {
using Entries = std::vector<std::pair<TvlString, std::string>>;   // names in the container, and bytes

TvlString KeptPath(const TvlString& workspace, const TvlString& settings)
{
    return settings + L".unsaved." + Path::GetFileNameWithoutExtension(workspace);
}

/// Whether an entry holds what a file on disk does.
bool IsStored(const WorkspaceContainer& container, const TvlString& name, const TvlString& path)
{
    std::string bytes;
    TvlUtils::Stream stream = container.OpenFile(name, false);
    if (!stream || !File::ReadAll(path, bytes))
        return false;
    std::string stored(bytes.size() + 1, '\0');
    stored.resize(stream.ReadSome(stored.data(), stored.size()));
    return stored == bytes;
}

/// Whether a workspace has the settings on disk, and the files that go with them.
bool IsSaved(const TvlString& workspace, const TvlString& settings, const UnsavedSettings::Files& files)
{
    const WorkspaceContainer container = OpenWorkspaceForReading(workspace);
    return container && IsStored(container, ContentPath(WorkspaceContainerSchema::settingsFile), settings)
        && std::all_of(files.begin(), files.end(), [&](const auto& file) {
               return IsThere(file.second) == std::optional(false) || IsStored(container, file.first, file.second);
           });
}

/// Reads the settings, and those of the files with them that are there.
bool ReadEntries(const TvlString& settings, const UnsavedSettings::Files& files, Entries& entries)
{
    const auto read = [&](const TvlString& name, const TvlString& path) {
        return File::ReadAll(path, entries.emplace_back(name, std::string()).second, DocContainer::kMaxEntryBytes);
    };
    for (const auto& [name, path] : files) {
        if (read(name, path))
            continue;
        if (IsThere(path) != std::optional(false))
            return false;
        entries.pop_back();
    }
    return static_cast<bool>(read(ContentPath(WorkspaceContainerSchema::settingsFile), settings));
}

/// What is kept already stays as it is on failure.
bool Keep(const TvlString& workspace, const TvlString& settings, const UnsavedSettings::Files& files)
{
    Entries entries;
    if (!ReadEntries(settings, files, entries))
        return false;
    WorkspaceContainer container = WorkspaceContainer::Create(KeptPath(workspace, settings));
    const bool isWhole = std::all_of(entries.begin(), entries.end(), [&](const auto& entry) {
        const auto& [name, bytes] = entry;
        return container.AddFile(name, TvlUtils::Stream::OverMemory(bytes.data(), bytes.size()), false, nullptr);
    });
    return container.Close() && isWhole;
}

/// Whether those on disk are kept, after a failure, or need not be: they have not changed, there are none, or their workspace
/// has gone.
bool Secure(const TvlString& workspace, const TvlString& settings, const UnsavedSettings::Files& files)
{
    constexpr std::optional<bool> kNo = false;
    if (IsThere(settings) == kNo || IsThere(workspace) == kNo)
        return true;
    if (IsThere(KeptPath(workspace, settings)) == kNo && IsSaved(workspace, settings, files))
        return true;
    const bool isKept = Keep(workspace, settings, files);
    LogMessage(LogLevel::Warning,
        (isKept ? TvlString(L"The settings can't be saved now; they are kept for: ")
                : TvlString(L"The settings can be neither saved nor kept for: "))
            + workspace);
    return isKept;
}
}   // namespace

void UnsavedSettings::Save(WorkspaceFile& workspace, const TvlString& settings, const Files& files)
{
    const TvlString path = workspace.GetFilename();
    // What is kept must never be older than what the workspace has: a process may end between the two.
    const auto wasKept = IsThere(KeptPath(path, settings));
    const bool isCurrent = wasKept && (!*wasKept || Keep(path, settings, files));
    bool isWhole = true;
    const bool isSaved = isCurrent && workspace.SaveSettings(settings, files, isWhole) && isWhole;
    if (isSaved && *wasKept)
        Forget(path, settings);
    const Lack lack = isSaved || Secure(path, settings, files) ? Lack::None : Lack::Unsaved;
    if (SettingsOrigin::LackOf(settings, path) != lack)
        SettingsOrigin::SetLack(settings, path, lack);
}

bool UnsavedSettings::MakeRoom(const TvlString& settings, const Files& files)
{
    const auto owner = SettingsOrigin::UnsavedOwner(settings);
    if (!owner)
        return true;
    if (!Secure(*owner, settings, files))
        return false;
    SettingsOrigin::SetLack(settings, *owner, Lack::None);
    return true;
}

std::optional<bool> UnsavedSettings::PutBack(const TvlString& workspace, const TvlString& settings, const Files& files)
{
    const TvlString path = KeptPath(workspace, settings);
    const auto isKept = IsThere(path);
    if (isKept == std::optional(false))
        return std::nullopt;
    if (!isKept || !WorkspaceFile(path).LoadSettings(settings, files))
        return false;
    // The result above is that of the settings.
    const WorkspaceContainer kept = OpenWorkspaceForReading(path);
    return std::all_of(files.begin(), files.end(),
        [&](const auto& file) { return !kept.DoesFileExist(file.first) || IsStored(kept, file.first, file.second); });
}

void UnsavedSettings::Forget(const TvlString& workspace, const TvlString& settings)
{
    File::Delete(KeptPath(workspace, settings));
}

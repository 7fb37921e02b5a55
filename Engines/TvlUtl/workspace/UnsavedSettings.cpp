#include "UnsavedSettings.h"

#include "InterruptionMark.h"
#include "SettingsEntries.h"
#include "SettingsOrigin.h"
#include "WorkspaceAccess.h"
#include "WorkspaceLimits.h"
#include "siblings/TvlUtils/LogMessage.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <algorithm>

using namespace TvlUtils::SystemIO;
using SettingsOrigin::Lack;
using TvlUtils::LogLevel;
using TvlUtils::LogMessage;

namespace {
constexpr std::optional<bool> kNo = false;

TvlString KeptPath(const TvlString& workspace, const TvlString& settings)
{
    return settings + L"." + Path::GetFileNameWithoutExtension(workspace) + L".unsaved";
}

TvlString SettingsEntry() { return ContentPath(WorkspaceContainerSchema::settingsFile); }

bool IsStored(const WorkspaceContainer& container, const TvlString& name, const std::string& bytes)
{
    TvlUtils::Stream stream = container.OpenFile(name, false);
    if (!stream)
        return false;
    std::string stored(bytes.size() + 1, '\0');
    stored.resize(stream.ReadSome(stored.data(), stored.size()));
    return stored == bytes;
}

/// Whether a workspace has them all as they are.
bool AreSaved(const TvlString& workspace, const SettingsEntries& entries)
{
    const WorkspaceContainer container = OpenWorkspaceForReading(workspace);
    return container && std::all_of(entries.files.begin(), entries.files.end(), [&](const auto& entry) {
        return IsStored(container, entry.first, entry.second);
    });
}

/// Whether the bytes of an archive can be read, and nothing is to be had of them, or of one entry.
bool IsDamaged(const TvlString& path, const TvlString& entry = {})
{
    std::string bytes;
    if (!File::ReadAll(path, bytes))
        return false;
    const WorkspaceContainer container = OpenWorkspaceForReading(path);
    const bool isDamaged = !container || (!entry.IsEmpty() && !container.OpenFile(entry, false));
    if (isDamaged)
        LogMessage(LogLevel::Warning, L"What was kept of unsaved settings is damaged: " + path);
    return isDamaged;
}

/// Opened for writing; what is there already stays in it. No container when that can't be opened for now.
WorkspaceContainer OpenKept(const TvlString& path)
{
    const auto isThere = IsThere(path);
    WorkspaceContainer container = isThere == kNo ? WorkspaceContainer() : OpenWorkspaceForWriting(path);
    if (isThere == kNo || (!container && IsDamaged(path))) {
        container = WorkspaceContainer::Create(path);
        container.SetMaxEntryBytes(MaxWorkspaceEntryBytes());
    }
    return container;
}
}   // namespace

/// What is kept already stays as it is on failure.
bool UnsavedSettings::Keep(const TvlString& workspace, const SettingsEntries& entries) const
{
    if (!entries.isWhole)
        return false;
    WorkspaceContainer container = OpenKept(KeptPath(workspace, m_settings));
    entries.AddTo(container);
    return container && container.Close();
}

/// Saves what other applications have kept for the workspace.
bool UnsavedSettings::SaveOthers(const TvlString& workspace) const
{
    const WorkspaceContainer kept = OpenWorkspaceForReading(KeptPath(workspace, m_settings));
    std::vector<TvlString> others = kept.GetFileNames(L".*", true);
    std::erase_if(others, [&](const TvlString& name) {
        return name == SettingsEntry()
            || std::any_of(m_files.begin(), m_files.end(), [&](const auto& file) { return file.first == name; });
    });
    if (others.empty())
        return static_cast<bool>(kept);
    WorkspaceContainer container = OpenWorkspaceForWriting(workspace);
    const bool areAdded = std::all_of(others.begin(), others.end(),
        [&](const TvlString& name) { return container.AddFile(name, kept.OpenFile(name, false), false, nullptr); });
    return container && container.Close() && areAdded;
}

/// Whether those on disk are kept, after a failure, or need not be: they have not changed, there are none, or their workspace
/// has gone.
bool UnsavedSettings::Secure(const TvlString& workspace) const
{
    if (IsThere(workspace) == kNo)
        return true;
    const SettingsEntries entries = SettingsEntries::Read(m_settings, m_files);
    const bool isKept = IsThere(KeptPath(workspace, m_settings)) != kNo;
    if (entries.isWhole && (entries.files.empty() || (!isKept && AreSaved(workspace, entries))))
        return true;
    const bool isSecure = Keep(workspace, entries);
    LogMessage(LogLevel::Warning,
        (isSecure ? TvlString(L"The settings can't be saved now; they are kept for: ")
                  : TvlString(L"The settings can be neither saved nor kept for: "))
            + workspace);
    return isSecure;
}

void UnsavedSettings::Save(WorkspaceFile& workspace) const
{
    const TvlString path = workspace.GetFilename();
    // What is kept must never be older than what the workspace has: a process may end between the two.
    const auto wasKept = IsThere(KeptPath(path, m_settings));
    const bool isCurrent = wasKept && (!*wasKept || Keep(path, SettingsEntries::Read(m_settings, m_files)));
    bool isWhole = true;
    const bool isSaved = isCurrent && workspace.SaveSettings(m_settings, m_files, isWhole) && isWhole;
    if (isSaved && *wasKept && SaveOthers(path))
        Forget(path, m_settings);
    const Lack lack = isSaved || Secure(path) ? Lack::None : Lack::Unsaved;
    if (SettingsOrigin::LackOf(m_settings, path) != lack)
        SettingsOrigin::SetLack(m_settings, path, lack);
}

void UnsavedSettings::KeepLeft(const TvlString& workspace) const
{
    const auto left = SettingsOrigin::LeftBehind(m_settings);
    // Within an extraction nothing of the workspace before it was unsaved.
    if (!left || left->workspace.CompareNoCase(workspace) == 0
        || InterruptionMark::WasLeft(m_settings, InterruptionMark::kExtracting) != kNo)
        return;
    const bool areFilesOurs = left->application == m_application;
    SettingsOrigin::SetLack(m_settings, left->workspace, areFilesOurs ? Lack::Unsaved : Lack::UnsavedAlone);
    MakeRoom();
}

bool UnsavedSettings::MakeRoom() const
{
    const auto owner = SettingsOrigin::UnsavedOwner(m_settings);
    if (!owner)
        return true;
    const Files none;
    const bool isAlone = SettingsOrigin::LackOf(m_settings, *owner) == Lack::UnsavedAlone;
    const UnsavedSettings unsaved(m_settings, isAlone ? none : m_files, m_application);
    if (!unsaved.Secure(*owner))
        return false;
    SettingsOrigin::SetLack(m_settings, *owner, Lack::None);
    return true;
}

std::optional<bool> UnsavedSettings::PutBack(const TvlString& workspace) const
{
    const TvlString path = KeptPath(workspace, m_settings);
    const auto isKept = IsThere(path);
    if (isKept == kNo)
        return std::nullopt;
    const WorkspaceContainer kept = OpenWorkspaceForReading(path);
    if (!kept)
        return IsDamaged(path) ? std::nullopt : kNo;
    // What an application did not have when it was kept is that of the workspace.
    const auto putBack = [&](const TvlString& name, const TvlString& target) {
        return !kept.DoesFileExist(name) || kept.ExtractFile(name, target) || IsDamaged(path, name);
    };
    const bool isPutBack = std::all_of(m_files.begin(), m_files.end(), [&](const auto& file) {
        return putBack(file.first, file.second);
    }) && putBack(SettingsEntry(), m_settings);
    return isPutBack && !kept.DoesFileExist(SettingsEntry()) ? std::nullopt : std::optional(isPutBack);
}

void UnsavedSettings::Forget(const TvlString& workspace, const TvlString& settings)
{
    const TvlString path = KeptPath(workspace, settings);
    File::MakeWritable(path);
    File::Delete(path);
}

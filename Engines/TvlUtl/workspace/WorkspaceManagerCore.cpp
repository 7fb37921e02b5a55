#include "WorkspaceManagerCore.h"

#include "AppliedSettings.h"
#include "InterruptionMark.h"
#include "SettingsOrigin.h"
#include "TopMostOwnerWnd.h"
#include "UnsavedSettings.h"
#include "WUTLRegistry.h"
#include "WorkspaceAccess.h"
#include "WorkspaceNames.h"
#include "siblings/TvlComponent/Application.h"
#include "siblings/TvlConfig/SuiteFolders.h"
#include "siblings/TvlConfig/WorkspaceFolders.h"
#include "siblings/TvlPref/IRegistry.h"
#include "siblings/TvlPref/IniIoPolicy.h"
#include "siblings/TvlResources/Resources.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/LogMessage.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "windows/Windowing.h"

#include <algorithm>
#include <cwchar>
#include <limits>

using SettingsOrigin::Lack;
using WorkspaceManagerTypes::Result;

namespace {
namespace File = TvlUtils::SystemIO::File;
namespace Folder = TvlUtils::SystemIO::Folder;
namespace Path = TvlUtils::SystemIO::Path;

constexpr const wchar_t* kDefaultRoot = L"SOFTWARE\\Tovel";
constexpr const wchar_t* kLastUsed = L"LastTovelWorkspaceUsed";
constexpr const wchar_t* kDesktopModeDefault = L"DesktopModeDefault";
constexpr const wchar_t* kTabletModeDefault = L"TabletModeDefault";
constexpr const wchar_t* kTabletModeToggling = L"TabletModeToggling";
constexpr const wchar_t* kOn = L"1";
constexpr const wchar_t* kOff = L"0";

constexpr const wchar_t* kConfirmResetText = L"a1ff4de0-62bc-41b3-9dde-c1b911c14206";
constexpr UINT kConfirmResetStyle = 0x10024;   // MB_YESNO | MB_ICONQUESTION | MB_SETFOREGROUND
constexpr int kYes = 6;                        // IDYES

constexpr const wchar_t* kLegacyVersion = L"19";
constexpr const wchar_t* kNodeColorScheme = L"NodeEditTool/NodeColorScheme";

TvlString UserWorkspacePath(const wchar_t* name)
{
    return Path::Combine(GetUserProfileWorkspaceDir(), name, WorkspaceNames::kExtension);
}

bool SameText(const TvlString& a, const TvlString& b) { return a.CompareNoCase(b) == 0; }

bool AskForReset()
{
    const TvlString caption = GetAppSkinSettingData().GetAppUIName();
    TvlUtl::TopMostOwnerWnd owner(nullptr);
    const TvlString text = Framework::Resources::GetString(kConfirmResetText);
    return Ports::Windowing::Get().ShowBox(
               owner.GetOwnerWnd(caption.c_str()), text.Std(), caption.Std(), kConfirmResetStyle)
        == kYes;
}

std::vector<TvlString> WorkspaceFilesOf(const TvlString& folder)
{
    return File::Find(folder, TvlString(L"*.") + WorkspaceNames::kExtension, false, false);
}

/// Whether the mark of an extraction stays, so that the next start tries again: there is no workspace, or the settings or the
/// preferences are not its. Those on disk may be of another one then, whose note has gone.
bool MustExtractAgain(const TvlString& settings, const WorkspaceFile* file)
{
    // Without one the list could not be read.
    return !file || SettingsOrigin::AreForeign(SettingsOrigin::LackOf(settings, file->GetFilename()));
}

/// Whether there is nothing of this name. What can't be looked at is not missing: something else would take its place.
bool IsMissing(const TvlString& path) { return IsThere(path) == std::optional(false); }

/// Copies the suite's workspaces that the user's folder lacks.
void CopyStockWorkspaces(const TvlString& userFolder)
{
    const std::vector<TvlString> present = WorkspaceFilesOf(userFolder);
    for (const TvlString& stock : WorkspaceFilesOf(INIGetBootDefaultWorkspaceDir())) {
        const TvlString name = Path::GetFileName(stock);
        const bool isPresent = std::any_of(present.begin(), present.end(),
            [&](const TvlString& path) { return SameText(Path::GetFileName(path), name); });
        if (isPresent)
            continue;
        const TvlString copy = Path::Combine(userFolder, name);
        // What can't be copied is missing in the list; a workspace that could not be listed stays.
        static_cast<void>(File::Copy(stock, copy, false));
        File::MakeWritable(copy);
    }
}
}   // namespace

WorkspaceManagerCore::WorkspaceManagerCore() : m_files(this) { }

WorkspaceManagerCore::~WorkspaceManagerCore() = default;

Result WorkspaceManagerCore::Initialize(WSM_INIT& init) { return Initialize(init, AskForReset); }

Result WorkspaceManagerCore::Initialize(WSM_INIT& init, const std::function<bool()>& confirmReset)
{
    if (init.Product.IsEmpty() || init.Application.IsEmpty())
        return Result::InitFailed;
    m_interactionMode = init.InteractionMode;
    m_product = init.Product;
    m_application = init.Application;
    if (m_application.Find(L'.') >= 0)
        return Result::InitFailed;
    TakeRegistryKey(init);
    m_additionalFiles = init.AdditionalFiles;
    const auto mutex = AcquireWSMutex();
    ConstructWorkspaceList();
    if (!LoadLastUsedWorkspace())
        ClearOldAndApplyNewWS(init);
    RecoverSettings();
    if (init.Reset)
        Reset(init, confirmReset);
    m_initializeIcons = std::move(init.InitializeIcons);
    InitializeIcons();
    return Result::Ok;
}

void WorkspaceManagerCore::TakeRegistryKey(const WSM_INIT& init)
{
    const TvlString root = init.RegistryRoot.IsEmpty() ? TvlString(kDefaultRoot) : init.RegistryRoot;
    m_registryKey = init.RegistryKey.IsEmpty() ? root + L"\\" + m_product + L"\\" + m_application : init.RegistryKey;
}

void WorkspaceManagerCore::Reset(WSM_INIT& init, const std::function<bool()>& confirmReset)
{
    init.Reset = confirmReset && confirmReset();
    if (!init.Reset)
        return;
    const InterruptionMark mark(GetProfileSettingsFile(), InterruptionMark::kExtracting);
    ClearCurrentWS(init, true);
    LoadLastUsedWorkspace();
    if (WorkspaceFile* const current = GetCurrentWorkspace())
        ExtractSettingsFromWorkspace(*current);
    if (!MustExtractAgain(GetProfileSettingsFile(), GetCurrentWorkspace()))
        mark.Done();
}

void WorkspaceManagerCore::InitializeIcons()
{
    if (m_initializeIcons)
        m_initializeIcons();
}

void WorkspaceManagerCore::ConstructWorkspaceList()
{
    m_workspaces.clear();
    const TvlString userFolder = GetUserProfileWorkspaceDir();
    CopyStockWorkspaces(userFolder);
    if (const TvlString path = GetDefaultWorkspacePath(); IsMissing(path))
        WorkspaceFile::CreateDefault(path);
    for (const TvlString& path : WorkspaceFilesOf(userFolder))
        if (WorkspaceFile file(path); file)
            m_workspaces.push_back(std::move(file));
}

TvlString WorkspaceManagerCore::ReadWorkspacePath()
{
    ReadKey(kDesktopModeDefault, m_defaultDesktop);
    ReadKey(kTabletModeDefault, m_defaultTablet);
    TvlString toggling;
    ReadKey(kTabletModeToggling, toggling);
    m_tabletToggling = toggling.IsEmpty() || toggling == kOn;
    if (m_defaultDesktop.IsEmpty() || IsMissing(m_defaultDesktop))
        m_defaultDesktop = UserWorkspacePath(WorkspaceNames::kDesktopDefault);
    if (m_defaultTablet.IsEmpty() || IsMissing(m_defaultTablet))
        m_defaultTablet = UserWorkspacePath(WorkspaceNames::kTabletDefault);   // need not exist
    if (m_tabletToggling)
        return m_interactionMode == kDesktopInteraction ? m_defaultDesktop : m_defaultTablet;
    TvlString lastUsed;
    return ReadKey(kLastUsed, lastUsed) ? lastUsed : TvlString();
}

bool WorkspaceManagerCore::LoadLastUsedWorkspace()
{
    const TvlString path = ReadWorkspacePath();
    if (path.IsEmpty()) {
        m_currentIndex = GetWorkspaceIndex(GetDefaultWorkspacePath());
        return true;
    }
    TvlString last;
    const bool differs = ReadKey(kLastUsed, last) && !last.IsEmpty() && !IsMissing(last) && !SameText(last, path);
    m_currentIndex = GetWorkspaceIndex(differs ? last : path);
    return !differs;
}

unsigned long long WorkspaceManagerCore::GetWorkspaceIndex(TvlString path) const
{
    const TvlString fallback = UserWorkspacePath(
        m_interactionMode == kDesktopInteraction ? WorkspaceNames::kDesktopDefault : WorkspaceNames::kTabletDefault);
    unsigned long long index = 0;
    for (std::size_t i = 0; i < m_workspaces.size(); ++i) {
        const TvlString filename = m_workspaces[i].GetFilename();
        if (SameText(filename, path))
            return i;
        if (SameText(filename, fallback))
            index = i;
    }
    return index;
}

void WorkspaceManagerCore::ClearOldAndApplyNewWS(const WSM_INIT& init)
{
    const TvlString settings = GetProfileSettingsFile();
    const UnsavedSettings unsaved(settings, m_additionalFiles, m_registryKey);
    unsaved.KeepLeft({});
    if (!unsaved.MakeRoom()) {
        m_currentIndex = GetWorkspaceIndex(ReadWorkspacePath());
        return;
    }
    // Between the end of the old settings and the new ones there are none.
    const InterruptionMark mark(settings, InterruptionMark::kExtracting);
    ClearCurrentWS(init, false);
    const TvlString path = ReadWorkspacePath();
    m_currentIndex = GetWorkspaceIndex(path);
    TvlString last;
    const bool isSame = !ReadKey(kLastUsed, last) || SameText(last, path);
    if (WorkspaceFile* const current = GetCurrentWorkspace())
        ExtractSettingsFromWorkspace(*current);
    if (!isSame && Path::Exists(path))
        WriteKey(kLastUsed, path);
    if (!MustExtractAgain(settings, GetCurrentWorkspace()))
        mark.Done();
}

void WorkspaceManagerCore::ClearCurrentWS(const WSM_INIT& init, bool deleteCurrent)
{
    for (const WorkspaceFile::FilePair& pair : m_additionalFiles)
        File::Delete(pair.second);
    File::Delete(GetProfileSettingsFile());
    Folder::DeleteRecursive(GetWebBrowserUserDataDir(), true);
    if (const WorkspaceFile* const current = deleteCurrent ? GetCurrentWorkspace() : nullptr) {
        File::Delete(current->GetFilename());
        UnsavedSettings::Forget(current->GetFilename(), GetProfileSettingsFile());
    }
    if (!init.ResetRegistryKey.IsEmpty() && WUTLRegistry::IsValid(init.ResetRegistryKey.c_str()) == 0)
        WUTLRegistry::DeleteRegistryKey(init.ResetRegistryKey.c_str());
    ConstructWorkspaceList();
}

TvlString WorkspaceManagerCore::GetProfileSettingsFile() const
{
    return Path::Combine(GetUserProfileWorkspaceDir(), L"settings.ini");
}

TvlString WorkspaceManagerCore::GetDefaultWorkspacePath() const
{
    return UserWorkspacePath(WorkspaceNames::kDesktopDefault);
}

TvlString WorkspaceManagerCore::GetBootDefaultWorkspacePath() const
{
    return Path::Combine(INIGetBootDefaultWorkspaceDir(), L"_BootDefault");
}

bool WorkspaceManagerCore::IsDefaultWorkspace(const TvlString& name) const
{
    return SameText(name, WorkspaceNames::kDesktopDefault) || SameText(name, WorkspaceNames::kTabletDefault);
}

void WorkspaceManagerCore::SetDefaultDesktopWorkspace(const TvlString& path)
{
    if (m_defaultDesktop.Compare(path) != 0)
        m_defaultDesktop = path;
}

void WorkspaceManagerCore::SetDefaultTabletWorkspace(const TvlString& path)
{
    if (m_defaultTablet.Compare(path) != 0)
        m_defaultTablet = path;
}

std::shared_ptr<WSManagerMutex> WorkspaceManagerCore::AcquireWSMutex()
{
    if (auto held = m_mutex.lock())
        return held;
    auto mutex = std::make_shared<WSManagerMutex>();
    m_mutex = mutex;
    if (mutex->WasAbandoned())
        RecoverSettings();
    return mutex;
}

void WorkspaceManagerCore::ExtractSettingsFromWorkspace(WorkspaceFile& file)
{
    const auto mutex = AcquireWSMutex();
    const TvlString settings = GetProfileSettingsFile();
    const UnsavedSettings unsaved(settings, m_additionalFiles, m_registryKey);
    if (!unsaved.MakeRoom())
        return;
    const InterruptionMark mark(settings, InterruptionMark::kExtracting);
    SettingsOrigin::SetLack(settings, file.GetFilename(), Lack::Unwritten);
    WorkspaceFileExportSettings exported;
    const bool isLoaded = file.LoadSettings(settings, m_additionalFiles, exported);
    const auto isPutBack = unsaved.PutBack(file.GetFilename());
    // On a full disk another workspace's settings stay there: they must not find their way into this one.
    const bool isUnwritten = isPutBack ? !*isPutBack : !isLoaded && HasReadableSettings(file.GetFilename());
    if (!isUnwritten) {
        ProcessLegacySettings(exported);
        SettingsOrigin::Record(settings, file.GetFilename(), m_registryKey);
    }
    const bool isApplied = ApplySettings(settings);
    if (!isUnwritten)
        SettingsOrigin::SetLack(settings, file.GetFilename(), isApplied ? Lack::None : Lack::Unapplied);
    if (!MustExtractAgain(settings, &file))
        mark.Done();
}

void WorkspaceManagerCore::SaveSettingsToWorkspace(WorkspaceFile& file)
{
    const auto mutex = AcquireWSMutex();
    const TvlString settings = GetProfileSettingsFile();
    if (!SettingsOrigin::AreForeign(SettingsOrigin::LackOf(settings, file.GetFilename()))) {
        UnsavedSettings(settings, m_additionalFiles, m_registryKey).Save(file);
        return;
    }
    TvlUtils::LogMessage(TvlUtils::LogLevel::Warning,
        L"The settings are not saved, for they are not those of this workspace, which could not be extracted: "
            + file.GetFilename());
}

void WorkspaceManagerCore::ProcessLegacySettings(const WorkspaceFile& file)
{
    WorkspaceFileExportSettings exported;
    WorkspaceFile::ReadExportSettings(file.GetFilename(), exported);
    ProcessLegacySettings(exported);
}

void WorkspaceManagerCore::ProcessLegacySettings(const WorkspaceFileExportSettings& exported)
{
    if (exported.Version != kLegacyVersion)
        return;
    const TvlPref::IniIoPolicy settings(GetProfileSettingsFile(), L"");
    TvlString scheme;
    if (!settings.Read(kNodeColorScheme, scheme))
        return;
    // Schemes were numbered from 1 then. What is beyond an int counts as the largest one.
    constexpr long long kLargest = std::numeric_limits<int>::max();
    if (const long long number = std::min(std::wcstoll(scheme.c_str(), nullptr, 10), kLargest); number > 0)
        settings.Write(kNodeColorScheme, TvlString().Format(L"%d", static_cast<int>(number - 1)));
}

void WorkspaceManagerCore::RecoverSettings()
{
    WorkspaceFile* const current = GetCurrentWorkspace();
    const TvlString settings = GetProfileSettingsFile();
    const auto wasExtracting = InterruptionMark::WasLeft(settings, InterruptionMark::kExtracting);
    if (current && (wasExtracting.value_or(false) || SettingsOrigin::IsForeign(settings, current->GetFilename()))) {
        TvlUtils::LogMessage(TvlUtils::LogLevel::Warning,
            L"A process ended while it changed the workspace; its settings are extracted again: "
                + current->GetFilename());
        UnsavedSettings(settings, m_additionalFiles, m_registryKey).KeepLeft(current->GetFilename());
        ExtractSettingsFromWorkspace(*current);
        return;
    }
    // They may be half of another workspace's, or hold all that has changed since the last save: the next start looks.
    if (current && !wasExtracting)
        SettingsOrigin::SetLack(settings, current->GetFilename(), Lack::Unwritten);
    if (InterruptionMark::WasLeft(settings, InterruptionMark::kApplying).value_or(true) && !ApplySettings(settings)) {
        // Until the end the application may store there what it makes of these preferences.
        const InterruptionMark mark(settings, InterruptionMark::kExtracting);
        SettingsOrigin::SetLack(settings, GetCurrentWorkspaceName(), Lack::Unapplied);
    }
}

void WorkspaceManagerCore::RemoveWorkspaceWithName(const TvlString& name)
{
    std::erase_if(m_workspaces, [&](const WorkspaceFile& file) { return SameText(file.GetName(), name); });
}

void WorkspaceManagerCore::CleanTemporaryIconFolder()
{
    if (!m_iconTempFolder.IsEmpty() && Folder::DeleteRecursive(m_iconTempFolder, true))
        m_iconTempFolder.Empty();
}

void WorkspaceManagerCore::AppShuttingDown()
{
    const auto mutex = AcquireWSMutex();
    WorkspaceFile* const current = GetCurrentWorkspace();
    if (current)
        SaveSettingsToWorkspace(*current);
    CleanTemporaryIconFolder();
    // The next start begins with the workspace that the settings are of, or they are extracted again; what is unsaved then is
    // kept first.
    const TvlString settings = GetProfileSettingsFile();
    UnsavedSettings(settings, m_additionalFiles, m_registryKey).MakeRoom();
    const Lack lack = current ? SettingsOrigin::LackOf(settings, current->GetFilename()) : Lack::None;
    const bool isKnown = !SettingsOrigin::AreForeign(lack)
        || (lack == Lack::Unapplied && InterruptionMark(settings, InterruptionMark::kExtracting).IsThere());
    if (IsInitialized() && isKnown)
        WriteLastUsedWorkspace();
}

void WorkspaceManagerCore::WriteLastUsedWorkspace() const
{
    const WorkspaceFile* const current = GetCurrentWorkspace();
    if (!current)
        return;
    PREFUTILS::RegistryBatch batch;
    WriteKey(kLastUsed, current->GetFilename());
    WriteKey(kDesktopModeDefault, m_defaultDesktop);
    WriteKey(kTabletModeDefault, m_defaultTablet);
    WriteKey(kTabletModeToggling, m_tabletToggling ? kOn : kOff);
    batch.Commit();   // what can't be written is missing the next time
}

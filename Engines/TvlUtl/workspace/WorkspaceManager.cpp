#include "WorkspaceManager.h"

#include "SettingsOrigin.h"
#include "UnsavedSettings.h"
#include "WorkspaceAccess.h"
#include "WorkspaceNames.h"
#include "siblings/TvlComponent/Application.h"
#include "siblings/TvlConfig/DocumentFolders.h"
#include "siblings/TvlConfig/ProductAnalytics.h"
#include "siblings/TvlConfig/WorkspaceFolders.h"
#include "siblings/TvlFeatureManagement/Features.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <algorithm>

using WorkspaceManagerTypes::Orientation;
using WorkspaceManagerTypes::Result;

namespace {
namespace File = TvlUtils::SystemIO::File;
namespace Path = TvlUtils::SystemIO::Path;

constexpr LANGID kEnglish = 9;   // LANG_ENGLISH

TvlString UserWorkspacePath(const TvlString& name)
{
    return Path::Combine(GetUserProfileWorkspaceDir(), name, WorkspaceNames::kExtension);
}

void NameWorkspace(const TvlString& name)
{
    if (ITovelCmn_App* const application = TvlComponent::GetAppInterface())
        application->NameWorkspace((L"Workspace_" + name).c_str());
}

bool IsAsciiNoBlank(wchar_t c) { return static_cast<unsigned>(c) < 0x80 && c != L' ' && (c < L'\t' || c > L'\r'); }
}   // namespace

Result WorkspaceManager::SetCurrentWorkspace(TvlString name, bool notify, bool flag)
{
    if (!IsInitialized() || !GetCurrentWorkspace())
        return Result::NotInitialized;
    const auto mutex = AcquireWSMutex();
    if (name.IsEmpty())
        name = WorkspaceNames::kDesktopDefault;
    const TvlString path = Path::IsFullyQualified(name) ? name : UserWorkspacePath(name);
    if (GetCurrentWorkspace()->GetFilename().CompareNoCase(path) == 0)
        return Result::Ok;
    const WorkspaceFile file(path);
    if (!file)
        return Result::WorkspaceInvalid;
    NameWorkspace(file.GetName());
    const unsigned long long oldIndex = GetCurrentWorkspaceIndex();
    m_changeSucceeded = true;
    if (notify)
        _NotifyAppWSChanging(flag, true);
    ChangeTo(path, notify);
    if (!m_changeSucceeded)
        return TakeBack(oldIndex, notify);
    if (GetUserInteractionMode() == kDesktopInteraction)
        SetDefaultDesktopWorkspace(path);
    else if (GetUserInteractionMode() == kTabletInteraction)
        SetDefaultTabletWorkspace(path);
    return Result::Ok;
}

void WorkspaceManager::ChangeTo(const TvlString& path, bool notify)
{
    // The application was called meanwhile: the list may have become empty.
    if (WorkspaceFile* const current = GetCurrentWorkspace())
        SaveSettingsToWorkspace(*current);
    const unsigned long long index = GetWorkspaceIndex(path);
    const auto& files = GetWorkspaces();
    // Until they are extracted: an exception on the way must not leave those of one workspace to another.
    if (index < static_cast<unsigned long long>(files.end() - files.begin()))
        SettingsOrigin::SetLack(GetProfileSettingsFile(),
            (files.begin() + static_cast<std::ptrdiff_t>(index))->GetFilename(), SettingsOrigin::Lack::Unwritten);
    SetCurrentWorkspaceIndex(index);
    if (WorkspaceFile* const current = GetCurrentWorkspace())
        ExtractSettingsFromWorkspace(*current);
    InitializeIcons();
    if (notify)
        _NotifyAppWSChanged(false, true);
}

Result WorkspaceManager::TakeBack(unsigned long long index, bool notify)
{
    m_changeSucceeded = true;
    SetCurrentWorkspaceIndex(index);
    if (notify)
        _NotifyAppWSChanged(false, true);
    return Result::ChangeFailed;
}

void WorkspaceManager::SetDefaultDesktopWorkspace(const TvlString& path)
{
    WorkspaceManagerCore::SetDefaultDesktopWorkspace(path);
}

TvlString WorkspaceManager::GetDefaultDesktopWorkspace() const
{
    return WorkspaceManagerCore::GetDefaultDesktopWorkspace();
}

void WorkspaceManager::SetDefaultTabletWorkspace(const TvlString& path)
{
    WorkspaceManagerCore::SetDefaultTabletWorkspace(path);
}

TvlString WorkspaceManager::GetDefaultTabletWorkspace() const
{
    return WorkspaceManagerCore::GetDefaultTabletWorkspace();
}

void WorkspaceManager::SetTabletModeWorkspaceToggling(bool on)
{
    WorkspaceManagerCore::SetTabletModeWorkspaceToggling(on);
}

bool WorkspaceManager::GetTabletModeWorkspaceToggling() const
{
    return WorkspaceManagerCore::GetTabletModeWorkspaceToggling();
}

void WorkspaceManager::ExtractSettingsFromWorkspace(WorkspaceFile& file)
{
    WorkspaceManagerCore::ExtractSettingsFromWorkspace(file);
}

Result WorkspaceManager::CreateNewWorkspace(
    const TvlString& name, TvlString source, const MultiLanguageString& title, const MultiLanguageString& description)
{
    if (!IsInitialized())
        return Result::NotInitialized;
    const auto mutex = AcquireWSMutex();
    if (IWorkspaceManagedApp* const app = GetWorkspaceManagedApp())
        app->SaveWorkspaceState();
    if (WorkspaceFile* const current = GetCurrentWorkspace())
        SaveSettingsToWorkspace(*current);
    const TvlString path = UserWorkspacePath(name);
    if (IsThere(path) == std::optional(false))
        UnsavedSettings::Forget(path, GetProfileSettingsFile());   // of an earlier one of this name
    const WorkspaceFile file = WorkspaceFile::CreateFrom(path, UserWorkspacePath(source), title, description);
    if (!file)
        return Result::CreateFailed;
    AddWorkspace(file);
    return Result::Ok;
}

Result WorkspaceManager::ExportWorkspace(const TvlString& target, const WorkspaceFileExportSettings& settings)
{
    if (!IsInitialized() || !GetCurrentWorkspace())
        return Result::NotInitialized;
    const TvlString path = GetCurrentWorkspace()->GetFilename();
    _NotifyAppWSChanging(false, true);
    const auto mutex = AcquireWSMutex();
    if (WorkspaceFile* const current = GetCurrentWorkspace())
        SaveSettingsToWorkspace(*current);
    WorkspaceFile::Export(target, path, GetProfileSettingsFile(), GetAdditionalWorkspaceFiles(), settings);
    return Result::Ok;
}

Result WorkspaceManager::ReadExportWorkspaceSettings(const TvlString& path, WorkspaceFileExportSettings& settings)
{
    if (!IsInitialized())
        return Result::NotInitialized;
    return WorkspaceFile::ReadExportSettings(path, settings) ? Result::Ok : Result::InitFailed;
}

Result WorkspaceManager::DeleteWorkspace(TvlString name)
{
    if (!IsInitialized())
        return Result::NotInitialized;
    TvlString currentName = GetCurrentWorkspaceName();
    if (IsDefaultWorkspace(name))
        return Result::DefaultProtected;
    const auto mutex = AcquireWSMutex();
    const TvlString path = UserWorkspacePath(name);
    if (name.CompareNoCase(currentName) == 0) {
        currentName = WorkspaceNames::kDesktopDefault;
        SetCurrentWorkspace(currentName, true, true);
    }
    if (!File::IsWritable(path))
        return Result::FileNotWritable;
    if (File::Delete(path))
        UnsavedSettings::Forget(path, GetProfileSettingsFile());
    RemoveWorkspaceWithName(name);
    // The list has shifted.
    const bool isDefault = currentName == WorkspaceNames::kDesktopDefault;
    SetCurrentWorkspaceIndex(GetWorkspaceIndex(isDefault ? GetDefaultWorkspacePath() : UserWorkspacePath(currentName)));
    return Result::Ok;
}

const WorkspaceFile* WorkspaceManager::FindWorkspace(const TvlString& name) const
{
    const IWorkspaceFiles& files = GetWorkspaces();
    const auto found = std::find_if(
        files.begin(), files.end(), [&](const WorkspaceFile& file) { return file.GetName().Compare(name) == 0; });
    return found == files.end() ? nullptr : &*found;
}

MultiLanguageString WorkspaceManager::GetWorkspaceDescription(const TvlString& name) const
{
    const WorkspaceFile* const file = FindWorkspace(name);
    return file ? file->GetDescription() : MultiLanguageString();
}

TvlString WorkspaceManager::GetWorkspaceUIName(const TvlString& name) const
{
    const WorkspaceFile* const file = FindWorkspace(name);
    return file ? file->GetTitleInUILang() : name;
}

int WorkspaceManager::_WSUINameToActualName(const TvlString& uiName, TvlString& name) const
{
    const IWorkspaceFiles& files = GetWorkspaces();
    const auto found = std::find_if(files.begin(), files.end(),
        [&](const WorkspaceFile& file) { return GetWorkspaceUIName(file.GetName()).Compare(uiName) == 0; });
    name = found == files.end() ? uiName : found->GetName();
    return found == files.end() ? 0 : 1;
}

TvlString WorkspaceManager::GetLastImportExportDir()
{
    if (m_lastImportExportDir.IsEmpty())
        m_lastImportExportDir = Path::GetFolderName(GetUserDocumentsTovelDir());
    return m_lastImportExportDir;
}

bool WorkspaceManager::ProcessWorkspaceUpdate(Orientation orientation, UserInteractionMode_t mode)
{
    if (m_orientation != orientation)
        m_orientation = orientation;
    using FeatureManagement::Features::OptionsTabletMode_func;
    if (mode == GetUserInteractionMode() || !GetTabletModeWorkspaceToggling()
        || !FeatureManagement::FeatureSet().IsEnabled(OptionsTabletMode_func()))
        return false;
    SetUserInteractionMode(mode);
    const TvlString name = mode == kTabletInteraction ? GetDefaultTabletWorkspace() : GetDefaultDesktopWorkspace();
    const IWorkspaceFiles& files = GetWorkspaces();
    const bool found = std::any_of(files.begin(), files.end(),
        [&](const WorkspaceFile& file) { return file.GetFilename().Find(name.c_str()) >= 0; });
    if (found)
        SetCurrentWorkspace(name, true, true);
    NotifyInteractionModeChanged();
    return found;
}

void WorkspaceManager::ProcessOrientationUpdate(Orientation orientation)
{
    ProcessWorkspaceUpdate(orientation, GetUserInteractionMode());
}

bool WorkspaceManager::ProcessInteractionUpdate(UserInteractionMode_t mode)
{
    return ProcessWorkspaceUpdate(m_orientation, mode);
}

void WorkspaceManager::TrackWorkspaceChange(const TvlString& location)
{
    const WorkspaceFile* const current = GetCurrentWorkspace();
    if (!current || !IsDefaultWorkspace(current->GetName()))
        return;
    std::wstring title = current->GetTitle().GetLangString(kEnglish).Std();
    std::erase_if(title, [](wchar_t c) { return !IsAsciiNoBlank(c); });
    const ProductAnalytics::PropertyMap properties = {
        {L"workspace.selected", title}, {L"workspace.location", location}};
    ProductAnalytics::GetInstance().SendEvent(L"workspace.stock", properties, L"");
}

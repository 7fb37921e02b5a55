#include "WorkspaceSession.h"

#include "siblings/TvlComponent/ApplicationInfo.h"
#include "siblings/TvlUtils/IniParser.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <windows.h>

WorkspaceSession::WorkspaceSession(HWND window) : m_window(window)
{
    TvlComponent::SetAppInterface(this);
    const WSManagerMutex mutex;   // the preferences are those of the workspace that it comes up with
    WSM_INIT init;
    init.Product = L"Suite";
    init.Application = ApplicationInfo::Settings().GetRegistryName();
    init.InteractionMode = CurrentUserInteractionMode(window);
    // What fails here shows as a list without workspaces.
    if (m_manager.Initialize(init) != Result::Ok)
        return;
    m_manager.InitializeAfterAppCreation(this);
    WorkspaceFile* const current = m_manager.GetCurrentWorkspace();
    if (current && !TvlUtils::SystemIO::File::Exists(m_manager.GetProfileSettingsFile()))
        m_manager.ExtractSettingsFromWorkspace(*current);   // the first start of all
}

WorkspaceSession::~WorkspaceSession()
{
    if (m_manager.GetCurrentWorkspace()) {
        const WSManagerMutex mutex;
        m_manager.AppShuttingDown();
    }
    m_manager.InitializeAfterAppCreation(nullptr);
    TvlComponent::SetAppInterface(nullptr);
}

WorkspaceSession::Result WorkspaceSession::Switch(const TvlString& name)
{
    const WSManagerMutex mutex;
    return m_manager.SetCurrentWorkspace(name, true, true);
}

WorkspaceSession::Result WorkspaceSession::Create(const TvlString& name)
{
    const WorkspaceFile* const current = m_manager.GetCurrentWorkspace();
    if (!current)
        return Result::NotInitialized;
    MultiLanguageString title;
    title.SetDefaultLangString(name);
    return m_manager.CreateNewWorkspace(name, current->GetName(), title, MultiLanguageString());
}

WorkspaceSession::Result WorkspaceSession::Delete(const TvlString& name) { return m_manager.DeleteWorkspace(name); }

void WorkspaceSession::ShowMessage(const wchar_t* text) { MessageBoxW(m_window, text, L"TvlUtl Gallery", MB_OK); }

std::size_t WorkspaceSession::PreferenceCount() const
{
    std::size_t count = 0;
    for (const auto& [section, entries] : TvlUtils::IniParser(m_manager.GetProfileSettingsFile()).GetAllData())
        count += entries.size();
    return count;
}

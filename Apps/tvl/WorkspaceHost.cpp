#include "WorkspaceHost.h"

#include "Commands.h"
#include "siblings/TvlComponent/ApplicationInfo.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/LogMessage.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "windows/Windowing.h"

#include <iostream>

using Ports::Windowing;
using WorkspaceManagerTypes::Result;

WorkspaceHost::WorkspaceHost(UserInteractionMode_t mode, bool reset)
    : m_window(Windowing::Get().CreateStatic(0, L"tvl", 0, 0, 0))
{
    TvlComponent::SetAppInterface(this);
    const WSManagerMutex mutex;   // the preferences are those of the workspace that it comes up with
    WSM_INIT init;
    init.Product = L"Suite";
    init.Application = ApplicationInfo::Settings().GetRegistryName();
    init.InteractionMode = mode;
    init.Reset = reset;
    if (m_manager.Initialize(init, [] { return true; }) != Result::Ok)
        EndWithBadInput("the application's name does not serve for workspaces");
    m_manager.InitializeAfterAppCreation(this);
    WorkspaceFile* const current = m_manager.GetCurrentWorkspace();
    if (current && !TvlUtils::SystemIO::File::Exists(m_manager.GetProfileSettingsFile()))
        m_manager.ExtractSettingsFromWorkspace(*current);   // the first start of all
    RefreshPreferences();
}

WorkspaceHost::~WorkspaceHost()
{
    TvlComponent::SetAppInterface(nullptr);
    if (m_window)
        Windowing::Get().Destroy(m_window);
}

HWND WorkspaceHost::GetMainWindow() const
{
    // Where the system has no windows any handle stands for one.
    return m_window ? m_window : reinterpret_cast<HWND>(const_cast<WorkspaceHost*>(this));
}

void WorkspaceHost::ShowMessage(const wchar_t* text) { std::cout << TvlPlatform::ToUtf8(text) << '\n'; }

bool WorkspaceHost::SavePreferences()
{
    const bool saved = m_preferences.Save(m_manager.GetProfileSettingsFile());
    if (!saved)
        TvlUtils::LogMessage(TvlUtils::LogLevel::Error, L"The preferences can't be saved");
    return saved;
}

void WorkspaceHost::OnWorkspaceChanging(bool, bool)
{
    // Settings that could not be written would be another workspace's.
    if (!SavePreferences())
        m_manager.SetWorkspaceChangedFailed();
}

void WorkspaceHost::OnWorkspaceChanged(bool, bool) { RefreshPreferences(); }

void WorkspaceHost::SaveWorkspaceState() { SavePreferences(); }

bool WorkspaceHost::IsTold() const { return Windowing::Get().IsWindow(GetMainWindow()); }

Result WorkspaceHost::Switch(const TvlString& name)
{
    const bool isTold = IsTold();
    const WSManagerMutex mutex;
    if (!isTold)
        SavePreferences();
    const Result result = m_manager.SetCurrentWorkspace(name, true, true);
    if (!isTold)
        RefreshPreferences();
    return result;
}

void WorkspaceHost::ShutDown()
{
    const WSManagerMutex mutex;
    SavePreferences();
    m_manager.AppShuttingDown();
}

// The gallery as an application with workspaces.
#pragma once

#include "IWorkspaceManagedApp.h"
#include "WorkspaceManager.h"
#include "siblings/TvlComponent/Application.h"

/// Comes up with the user's current workspace. Keeps no preferences of its own, so that there are none to be written before a
/// change: the settings on disk are always those in force. Ends with them in the workspace.
class WorkspaceSession final : public ITovelCmn_App, private IWorkspaceManagedApp {
public:
    using Result = WorkspaceManagerTypes::Result;

    /// @param window the main window, which is frozen during changes
    explicit WorkspaceSession(HWND window);
    WorkspaceSession(const WorkspaceSession&) = delete;
    WorkspaceSession& operator=(const WorkspaceSession&) = delete;
    ~WorkspaceSession() override;

    std::vector<WorkspaceFile> Workspaces() const { return m_manager.GetNamedWorkspaces(); }
    TvlString Current() const { return m_manager.GetCurrentWorkspaceName(); }
    /// How many preferences the settings of the current workspace hold.
    std::size_t PreferenceCount() const;
    /// How often the application was told of a change, before and after it.
    int TimesTold() const { return m_timesTold; }
    // Names are those of files, without extension.

    Result Switch(const TvlString& name);
    /// A new workspace from the current one.
    Result Create(const TvlString& name);
    Result Delete(const TvlString& name);

    void ShowMessage(const wchar_t* text) override;
    HWND GetMainWindow() const override { return m_window; }

private:
    void OnWorkspaceChanging(bool, bool) override { ++m_timesTold; }
    void OnWorkspaceChanged(bool, bool) override { ++m_timesTold; }
    void SaveWorkspaceState() override { }
    bool CanNotify() override { return true; }
    void OnInteractionModeChanged() override { }

    HWND m_window;
    WorkspaceManager m_manager;
    int m_timesTold = 0;
};

// The program as an application with workspaces.
#pragma once

#include "IWorkspaceManagedApp.h"
#include "PreferenceTree.h"
#include "WSManagerMutex.h"
#include "WorkspaceManager.h"
#include "siblings/TvlComponent/Application.h"

/// Comes up with the user's current workspace. Keeps the preferences in memory, as applications do: before a change of the
/// workspace they are written to its settings, and afterwards read anew. Ends the command when it can't start.
class WorkspaceHost : public ITovelCmn_App, protected IWorkspaceManagedApp {
public:
    explicit WorkspaceHost(UserInteractionMode_t mode, bool reset = false);
    WorkspaceHost(const WorkspaceHost&) = delete;
    WorkspaceHost& operator=(const WorkspaceHost&) = delete;
    ~WorkspaceHost() override;

    WorkspaceManager& Manager() { return m_manager; }
    const PreferenceTree& Preferences() const { return m_preferences; }
    /// Takes over what has been changed in the registry since.
    void RefreshPreferences() { m_preferences = PreferenceTree::FromRegistry(); }
    /// Whether the manager tells the application of changes: where windows could not be made it does not.
    bool IsTold() const;
    /// Changes the workspace, and tells the application also where there are no windows.
    WorkspaceManagerTypes::Result Switch(const TvlString& name);
    /// Ends the session: the settings go to the workspace.
    void ShutDown();

    void ShowMessage(const wchar_t* text) override;
    HWND GetMainWindow() const override;

protected:
    void OnWorkspaceChanging(bool first, bool second) override;
    void OnWorkspaceChanged(bool first, bool second) override;
    void SaveWorkspaceState() override;
    bool CanNotify() override { return true; }
    void OnInteractionModeChanged() override { }

private:
    bool SavePreferences();

    WorkspaceManager m_manager;
    PreferenceTree m_preferences;
    HWND m_window;   // null where there are no windows
};

// The user's workspaces, and changes between them.
#pragma once

#include "Page.h"
#include "WorkspaceSession.h"

class WorkspacesPage : public Page {
public:
    explicit WorkspacesPage(HWND parent);
    void TakeEnter() override;

private:
    void OnCommand(int id, int code) override;
    LRESULT OnNotify(const NMHDR& notice) override;
    void FillList();
    /// The name of the workspace that is chosen in the list; empty for none.
    TvlString Chosen() const;
    /// Shows how an operation on a workspace has ended, and the list as it is now.
    void Tell(const wchar_t* operation, const TvlString& name, WorkspaceSession::Result result);
    void SwitchToChosen();

    WorkspaceSession m_session;
    std::vector<WorkspaceFile> m_workspaces;   // as they are listed
};

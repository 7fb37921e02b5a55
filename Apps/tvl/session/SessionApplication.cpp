#include "SessionApplication.h"

int SessionApplication::TrackFeature(const wchar_t* label)
{
    m_labels.emplace_back(label);
    return 1;
}

void SessionApplication::OnWorkspaceChanging(bool first, bool second)
{
    ++m_changes;
    RefreshPreferences();
    WorkspaceHost::OnWorkspaceChanging(first, second);
    if (m_refuses)
        Manager().SetWorkspaceChangedFailed();
}

void SessionApplication::SaveWorkspaceState()
{
    RefreshPreferences();
    WorkspaceHost::SaveWorkspaceState();
}

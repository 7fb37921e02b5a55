// What a manager tells the application of a change.
#include "WorkspaceManager.h"
#include "siblings/TvlComponent/Application.h"
#include "windows/Windowing.h"

namespace {
using Ports::Windowing;

constexpr UINT kRedrawBefore = 769;   // RDW_INVALIDATE | RDW_UPDATENOW | RDW_ERASENOW
constexpr UINT kRedrawAfter = 385;    // RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW

/// The framework's commands wait as long as it lives.
class FrameworkPause {
public:
    FrameworkPause() { TvlComponent::GetAppInterface()->BeginWorkspaceChange(); }
    FrameworkPause(const FrameworkPause&) = delete;
    FrameworkPause& operator=(const FrameworkPause&) = delete;
    ~FrameworkPause() { TvlComponent::GetAppInterface()->EndWorkspaceChange(); }
};

/// Nothing is drawn in a window as long as it lives, unless the system has locked another one.
class FrozenWindow {
public:
    explicit FrozenWindow(HWND window) : m_locked(Windowing::Get().LockUpdate(window)) { }
    FrozenWindow(const FrozenWindow&) = delete;
    FrozenWindow& operator=(const FrozenWindow&) = delete;
    ~FrozenWindow()
    {
        if (m_locked)
            Windowing::Get().LockUpdate(nullptr);
    }

private:
    bool m_locked;
};
}   // namespace

HWND WorkspaceManager::WindowToNotify() const
{
    const ITovelCmn_App* const application = TvlComponent::GetAppInterface();
    HWND const window = application && GetWorkspaceManagedApp() ? application->GetMainWindow() : nullptr;
    return window && Windowing::Get().IsWindow(window) ? window : nullptr;
}

int WorkspaceManager::_NotifyAppWSChanging(bool first, bool second)
{
    HWND const window = WindowToNotify();
    if (!window)
        return 1;
    if (!GetWorkspaceManagedApp()->CanNotify())
        return 0;
    const FrameworkPause pause;
    const FrozenWindow frozen(window);
    GetWorkspaceManagedApp()->OnWorkspaceChanging(first, second);
    return 1;
}

int WorkspaceManager::_NotifyAppWSChanged(bool first, bool second)
{
    HWND const window = WindowToNotify();
    if (!window)
        return 1;
    if (!GetWorkspaceManagedApp()->CanNotify())
        return 0;
    {
        const FrameworkPause pause;
        if (second)
            Windowing::Get().Redraw(window, kRedrawBefore);
        {
            const FrozenWindow frozen(window);
            GetWorkspaceManagedApp()->OnWorkspaceChanged(first, second);
        }
        if (second)
            Windowing::Get().Redraw(window, kRedrawAfter);
    }
    if (auto* const frame = dynamic_cast<IFrameApplication*>(TvlComponent::GetAppInterface()))
        frame->UpdateFrame(0);
    return 1;
}

void WorkspaceManager::NotifyInteractionModeChanged()
{
    if (IWorkspaceManagedApp* const app = GetWorkspaceManagedApp())
        app->OnInteractionModeChanged();
}

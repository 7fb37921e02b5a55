// What an application does when its workspace changes.
#pragma once

/// Implemented by the application. Called on its main thread, with other processes shut out. The order of the operations
/// is relied on. What the arguments of the first two mean is the application's: they come from who started the change.
class IWorkspaceManagedApp {
public:
    /// Before a change, with the main window frozen: what the application keeps in memory goes to the settings now.
    virtual void OnWorkspaceChanging(bool first, bool second) = 0;
    /// After a change, with the main window frozen: the settings of the new workspace are in force.
    virtual void OnWorkspaceChanged(bool first, bool second) = 0;
    /// Before a new workspace is made from another.
    virtual void SaveWorkspaceState() = 0;
    /// Whether the first two may be called.
    virtual bool CanNotify() = 0;
    /// The device is used with something else now.
    virtual void OnInteractionModeChanged() = 0;

protected:
    ~IWorkspaceManagedApp() = default;
};

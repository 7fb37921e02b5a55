// What a running application does with its workspaces.
#pragma once

#include "IWorkspaceManagedApp.h"
#include "WorkspaceManagerCore.h"

/// For the application's main thread. The order of the operations is relied on. Names are those of files in the
/// user's workspace folder, without extension.
class IWorkspaceManager : public virtual IWorkspaceManagerCore {
public:
    /// Makes another workspace the current one: its settings replace those of the present one, which are saved to it.
    /// @param name   a name or a full path; empty for "_default"
    /// @param notify whether the application is told before and after
    /// @param flag   the first argument of OnWorkspaceChanging
    /// @return Ok, also when it is current already; ChangeFailed when the application refused: the present one stays
    ///         current then, with the settings of the other
    virtual WorkspaceManagerTypes::Result SetCurrentWorkspace(TvlString name, bool notify, bool flag) = 0;
    /// For the application, while it is told of a change: the change is given up.
    virtual void SetWorkspaceChangedFailed() = 0;
    /// @{
    /// Full path of the workspace that stands in on the desktop, which is not checked: Initialize takes it from the
    /// registry, or else "_default", and a change of the current workspace in this mode makes that the default.
    virtual void SetDefaultDesktopWorkspace(const TvlString& path) = 0;
    virtual TvlString GetDefaultDesktopWorkspace() const = 0;
    /// @}
    /// @{
    /// The same for tablets.
    virtual void SetDefaultTabletWorkspace(const TvlString& path) = 0;
    virtual TvlString GetDefaultTabletWorkspace() const = 0;
    /// @}
    /// Whether a change of the mode of interaction changes the workspace.
    virtual void SetTabletModeWorkspaceToggling(bool on) = 0;
    /// What SetTabletModeWorkspaceToggling took last; before that what Initialize found in the registry, true for nothing.
    virtual bool GetTabletModeWorkspaceToggling() const = 0;
    /// Kept for the application: whether the user is choosing a workspace now.
    virtual void SetWorkspaceSelectionChanging(bool changing) = 0;
    /// What SetWorkspaceSelectionChanging took last; false at the start.
    virtual bool GetWorkspaceSelectionChanging() const = 0;
    /// Makes a workspace from another, and adds it to the list. The application saves its state first.
    /// @return CreateFailed when there is a workspace of this name already, or the file can't be made
    virtual WorkspaceManagerTypes::Result CreateNewWorkspace(const TvlString& name, TvlString source,
        const MultiLanguageString& title, const MultiLanguageString& description) = 0;
    /// Copies the current workspace for other users. The application is told of a change first, so that its state goes
    /// along, and not afterwards. Ok even when the copy failed: there is no target then.
    virtual WorkspaceManagerTypes::Result ExportWorkspace(
        const TvlString& target, const WorkspaceFileExportSettings& settings) = 0;
    /// Reads what an exported workspace contains; InitFailed when it does not tell.
    virtual WorkspaceManagerTypes::Result ReadExportWorkspaceSettings(
        const TvlString& path, WorkspaceFileExportSettings& settings) = 0;
    /// Deletes a workspace; of the current one "_default" takes the place first.
    virtual WorkspaceManagerTypes::Result DeleteWorkspace(TvlString name) = 0;
    /// IWorkspaceManagedApp::OnWorkspaceChanging with these arguments, its window not drawn meanwhile; 0 when the application does
    /// not want to be told, else 1, also where there is none to tell.
    virtual int _NotifyAppWSChanging(bool first, bool second) = 0;
    /// The same behind a change, with IWorkspaceManagedApp::OnWorkspaceChanged.
    virtual int _NotifyAppWSChanged(bool first, bool second) = 0;
    /// Adds an icon to the current workspace.
    /// @param path the icon's file; becomes that of a copy among the temporary files
    /// @return the icon's name, empty on failure
    virtual TvlString AddIconResource(TvlString& path) = 0;
    /// Deletes an icon of the current workspace; false when there is no such icon.
    virtual bool RemoveIconResource(const TvlString& name) = 0;
    /// Copies the icons of another workspace to the current one.
    virtual bool CopyIconsFromWorkspace(const WorkspaceFile& source) = 0;
    /// Empty when there is no such workspace.
    virtual MultiLanguageString GetWorkspaceDescription(const TvlString& name) const = 0;
    /// The title in the user's language; the name itself when there is no such workspace.
    virtual TvlString GetWorkspaceUIName(const TvlString& name) const = 0;
    /// The name of the workspace with this title in the user's language; the title itself, and 0, when there is none.
    virtual int _WSUINameToActualName(const TvlString& uiName, TvlString& name) const = 0;
    /// Where workspaces were exported to or taken from last; at first the user's documents.
    virtual TvlString GetLastImportExportDir() = 0;
    /// Names the folder from now on, as long as the manager lives; empty for the documents again.
    virtual void SetLastImportExportDir(const TvlString& folder) = 0;
    /// The workspace's settings become those on disk and in the registry.
    virtual void ExtractSettingsFromWorkspace(WorkspaceFile& file) = 0;
    /// The device is held another way: noted alone.
    virtual void ProcessOrientationUpdate(WorkspaceManagerTypes::Orientation orientation) = 0;
    /// The device is used with something else: the default workspace for that becomes current.
    /// @return whether the workspace changed
    virtual bool ProcessInteractionUpdate(UserInteractionMode_t mode) = 0;
    /// Tells the analytics service that a default workspace is in use, by its English title; of others it tells nothing.
    /// @param location where the user chose it
    virtual void TrackWorkspaceChange(const TvlString& location) = 0;
};

/// The manager that an application owns; works from Initialize on.
class TVLUTL_API WorkspaceManager : public IWorkspaceManager, public WorkspaceManagerCore {
public:
    /// How its operations end.
    using Result = WorkspaceManagerTypes::Result;

    Result SetCurrentWorkspace(TvlString name, bool notify, bool flag) override;
    void SetWorkspaceChangedFailed() override { m_changeSucceeded = false; }
    void SetDefaultDesktopWorkspace(const TvlString& path) override;
    TvlString GetDefaultDesktopWorkspace() const override;
    void SetDefaultTabletWorkspace(const TvlString& path) override;
    TvlString GetDefaultTabletWorkspace() const override;
    void SetTabletModeWorkspaceToggling(bool on) override;
    bool GetTabletModeWorkspaceToggling() const override;
    void SetWorkspaceSelectionChanging(bool changing) override { m_selectionChanging = changing; }
    bool GetWorkspaceSelectionChanging() const override { return m_selectionChanging; }
    Result CreateNewWorkspace(const TvlString& name, TvlString source, const MultiLanguageString& title,
        const MultiLanguageString& description) override;
    Result ExportWorkspace(const TvlString& target, const WorkspaceFileExportSettings& settings) override;
    Result ReadExportWorkspaceSettings(const TvlString& path, WorkspaceFileExportSettings& settings) override;
    Result DeleteWorkspace(TvlString name) override;
    int _NotifyAppWSChanging(bool first, bool second) override;
    int _NotifyAppWSChanged(bool first, bool second) override;
    TvlString AddIconResource(TvlString& path) override;
    bool RemoveIconResource(const TvlString& name) override;
    bool CopyIconsFromWorkspace(const WorkspaceFile& source) override;
    MultiLanguageString GetWorkspaceDescription(const TvlString& name) const override;
    TvlString GetWorkspaceUIName(const TvlString& name) const override;
    int _WSUINameToActualName(const TvlString& uiName, TvlString& name) const override;
    TvlString GetLastImportExportDir() override;
    void SetLastImportExportDir(const TvlString& folder) override { m_lastImportExportDir = folder; }
    void ExtractSettingsFromWorkspace(WorkspaceFile& file) override;
    void ProcessOrientationUpdate(WorkspaceManagerTypes::Orientation orientation) override;
    bool ProcessInteractionUpdate(UserInteractionMode_t mode) override;
    void TrackWorkspaceChange(const TvlString& location) override;

private:
    bool ProcessWorkspaceUpdate(WorkspaceManagerTypes::Orientation orientation, UserInteractionMode_t mode);
    void NotifyInteractionModeChanged();
    /// The application's main window, when the application may be told of a change; null otherwise.
    HWND WindowToNotify() const;
    void ChangeTo(const TvlString& path, bool notify);
    Result TakeBack(unsigned long long index, bool notify);
    const WorkspaceFile* FindWorkspace(const TvlString& name) const;

    // The order is relied on.
    TvlString m_lastImportExportDir;
    bool m_changeSucceeded = true;   // the application clears it during a change
    bool m_selectionChanging = false;
    WorkspaceManagerTypes::Orientation m_orientation{};
};

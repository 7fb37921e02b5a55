// The workspaces of a user: which there are, which one is current, where its settings live.
#pragma once

#include "IWorkspaceManagerCore.h"
#include "WSManagerMutex.h"

#include <memory>

/// Workspaces are the files "*.tvws" in GetUserProfileWorkspaceDir, where those that the suite comes with are copied when they
/// are missing. The settings of the current one stand beside them in "settings.ini", and as preferences in the registry.
/// Changes are made under a lock between the processes of the user, WSManagerMutex.
///
/// A process that dies leaves files beside the settings from which the next one puts things in order when it
/// initializes: settings that belong to another workspace than the current one, or are half extracted, are extracted
/// again, and preferences that are half written are written again.
///
/// Failures of the registry and of files are not reported: what is missing is replaced by defaults.
class TVLUTL_API WorkspaceManagerCore : public virtual IWorkspaceManagerCore {
public:
    /// Without workspaces, until Initialize.
    WorkspaceManagerCore();
    WorkspaceManagerCore(const WorkspaceManagerCore&) = delete;
    WorkspaceManagerCore& operator=(const WorkspaceManagerCore&) = delete;
    ~WorkspaceManagerCore() override;

    WorkspaceManagerTypes::Result Initialize(WSM_INIT& init) override;
    WorkspaceManagerTypes::Result Initialize(WSM_INIT& init, const std::function<bool()>& confirmReset) override;
    void InitializeAfterAppCreation(IWorkspaceManagedApp* app) override { m_app = app; }
    TvlString GetProfileSettingsFile() const override;
    WorkspaceFile* GetCurrentWorkspace() override;
    const WorkspaceFile* GetCurrentWorkspace() const override;
    std::vector<WorkspaceFile> GetNamedWorkspaces() const override;
    std::vector<WorkspaceManagerTypes::CategorizedWorkspaces> GetCategoriedWorkspaces() const override;
    IWorkspaceFiles& GetWorkspaces() override { return m_files; }
    const IWorkspaceFiles& GetWorkspaces() const override { return m_files; }
    TvlString GetCurrentWorkspaceName() const override;
    WorkspaceFile* GetWorkspaceByInstanceID(const TvlUtils::Guid& instance) override;
    TvlString GetBootDefaultWorkspacePath() const override;
    bool IsDefaultWorkspace(const TvlString& name) const override;
    UserInteractionMode_t GetUserInteractionMode() const override { return m_interactionMode; }
    std::vector<WorkspaceManagerTypes::IconResourcePair> ExtractIconResources() override;
    void AppShuttingDown() override;

protected:
    /// Whether there are names of product and application.
    bool IsInitialized() const { return !m_product.IsEmpty() && !m_application.IsEmpty(); }
    /// The mode from now on. Changes no workspace.
    void SetUserInteractionMode(UserInteractionMode_t mode) { m_interactionMode = mode; }
    /// @{
    /// Full path of the workspace that stands in on the desktop, which is not checked: Initialize takes it from the
    /// registry, or else "_default", and a change of the current workspace in this mode makes that the default.
    void SetDefaultDesktopWorkspace(const TvlString& path);
    const TvlString& GetDefaultDesktopWorkspace() const { return m_defaultDesktop; }
    /// @}
    /// @{
    /// The same for tablets.
    void SetDefaultTabletWorkspace(const TvlString& path);
    const TvlString& GetDefaultTabletWorkspace() const { return m_defaultTablet; }
    /// @}
    /// @{
    /// Whether a change of the mode of interaction changes the workspace. Initialize takes it from the registry, and true
    /// where nothing is stored.
    void SetTabletModeWorkspaceToggling(bool on) { m_tabletToggling = on; }
    bool GetTabletModeWorkspaceToggling() const { return m_tabletToggling; }
    /// @}

    /// The hold that callers further out have, or a new one. Work goes on without the lock when the system refuses it.
    std::shared_ptr<WSManagerMutex> AcquireWSMutex();
    /// The workspace's settings become those on disk and in the registry.
    void ExtractSettingsFromWorkspace(WorkspaceFile& file);
    /// The settings on disk become the workspace's.
    void SaveSettingsToWorkspace(WorkspaceFile& file);
    /// Brings settings of workspaces of version 19 to today's meaning.
    void ProcessLegacySettings(const WorkspaceFile& file);
    /// The same for a workspace whose description has been read already.
    void ProcessLegacySettings(const WorkspaceFileExportSettings& exported);
    /// Full path of the default workspace for the desktop, "_default" in the user's folder.
    TvlString GetDefaultWorkspacePath() const;
    /// Index of the workspace of this path in any case, else of the default one for the mode of interaction, else 0.
    unsigned long long GetWorkspaceIndex(TvlString path) const;
    /// @{
    /// Place in the list of the current workspace; beyond its end when there is none.
    void SetCurrentWorkspaceIndex(unsigned long long index) { m_currentIndex = index; }
    unsigned long long GetCurrentWorkspaceIndex() const { return m_currentIndex; }
    /// @}
    /// Appends a workspace to the list, wherever its order would put it.
    void AddWorkspace(const WorkspaceFile& file) { m_workspaces.push_back(file); }
    /// Removes every workspace of this name, in any case, from the list.
    void RemoveWorkspaceWithName(const TvlString& name);
    /// Files that travel with each workspace, as WSM_INIT named them.
    const std::vector<WorkspaceFile::FilePair>& GetAdditionalWorkspaceFiles() const { return m_additionalFiles; }
    /// The application, or null before it was given.
    IWorkspaceManagedApp* GetWorkspaceManagedApp() const { return m_app; }
    /// Calls what WSM_INIT named for loading icons, if anything.
    void InitializeIcons();

private:
    /// @cond
    class WorkspaceFiles final : public IWorkspaceFiles {
    public:
        explicit WorkspaceFiles(WorkspaceManagerCore* owner) : m_owner(owner) { }
        Iterator begin() override { return m_owner->m_workspaces.begin(); }
        ConstIterator begin() const override { return m_owner->m_workspaces.begin(); }
        ConstIterator cbegin() const override { return m_owner->m_workspaces.cbegin(); }
        Iterator end() override { return m_owner->m_workspaces.end(); }
        ConstIterator end() const override { return m_owner->m_workspaces.end(); }
        ConstIterator cend() const override { return m_owner->m_workspaces.cend(); }

    private:
        WorkspaceManagerCore* m_owner;
    };
    /// @endcond

    void CleanTemporaryIconFolder();
    bool ReadKey(const TvlString& name, TvlString& text) const;
    bool WriteKey(const TvlString& name, const TvlString& text) const;
    TvlString ReadWorkspacePath();
    bool LoadLastUsedWorkspace();
    void ConstructWorkspaceList();
    void ClearCurrentWS(const WSM_INIT& init, bool deleteCurrent);
    void ClearOldAndApplyNewWS(const WSM_INIT& init);
    void WriteLastUsedWorkspace() const;
    void TakeRegistryKey(const WSM_INIT& init);
    void Reset(WSM_INIT& init, const std::function<bool()>& confirmReset);
    /// Puts in order what a process that died has left beside the settings.
    void RecoverSettings();

    // The order is relied on.
    std::function<void()> m_initializeIcons;
    unsigned long long m_currentIndex = 0;   // into the list; without an entry there is no current workspace
    std::vector<WorkspaceFile> m_workspaces;
    WorkspaceFiles m_files;
    TvlString m_product;
    TvlString m_application;
    TvlString m_registryKey;   // below the user's root
    TvlString m_iconTempFolder;
    IWorkspaceManagedApp* m_app = nullptr;
    std::vector<WorkspaceFile::FilePair> m_additionalFiles;
    UserInteractionMode_t m_interactionMode = kDesktopInteraction;
    TvlString m_defaultDesktop;   // full path
    TvlString m_defaultTablet;    // full path
    bool m_tabletToggling = false;
    std::weak_ptr<WSManagerMutex> m_mutex;
};

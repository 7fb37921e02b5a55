// What an application knows of its workspaces.
#pragma once

#include "WorkspaceManagerTypes.h"

#include <functional>
#include <vector>

class IWorkspaceManagedApp;

/// The workspaces of a manager, in the order of its list. Belongs to the manager.
class IWorkspaceFiles {
public:
    /// @{
    /// Walks the manager's list; ends with the next change of the list.
    using Iterator = std::vector<WorkspaceFile>::iterator;
    using ConstIterator = std::vector<WorkspaceFile>::const_iterator;
    /// @}

    /// @{
    /// From the first workspace of the list to behind the last.
    virtual Iterator begin() = 0;
    virtual ConstIterator begin() const = 0;
    virtual ConstIterator cbegin() const = 0;
    virtual Iterator end() = 0;
    virtual ConstIterator end() const = 0;
    virtual ConstIterator cend() const = 0;
    /// @}

protected:
    ~IWorkspaceFiles() = default;
};

/// For the application's main thread. The order of the operations is relied on.
class IWorkspaceManagerCore {
public:
    virtual ~IWorkspaceManagerCore() = default;
    /// Builds the list of workspaces and makes the one current that the registry and the mode of interaction ask for. To be
    /// called once. A reset, when asked for, is confirmed in a message box.
    /// @return Ok or InitFailed
    virtual WorkspaceManagerTypes::Result Initialize(WSM_INIT& init) = 0;
    /// The same with a question of the caller's own; without one there is no reset.
    virtual WorkspaceManagerTypes::Result Initialize(WSM_INIT& init, const std::function<bool()>& confirmReset) = 0;
    /// Gives the application, which must live as long as the manager is used; null takes it back.
    virtual void InitializeAfterAppCreation(IWorkspaceManagedApp* app) = 0;
    /// Full path of "settings.ini", the settings of the current workspace.
    virtual TvlString GetProfileSettingsFile() const = 0;
    /// Null when there is none.
    virtual WorkspaceFile* GetCurrentWorkspace() = 0;
    /// The same for reading.
    virtual const WorkspaceFile* GetCurrentWorkspace() const = 0;
    /// All workspaces: those without a category first, then by UI order, then by category and name.
    virtual std::vector<WorkspaceFile> GetNamedWorkspaces() const = 0;
    /// The same by category, in the order in which categories come first.
    virtual std::vector<WorkspaceManagerTypes::CategorizedWorkspaces> GetCategoriedWorkspaces() const = 0;
    /// @{
    /// The list itself, which lives as long as the manager.
    virtual IWorkspaceFiles& GetWorkspaces() = 0;
    virtual const IWorkspaceFiles& GetWorkspaces() const = 0;
    /// @}
    /// Empty when there is no current workspace.
    virtual TvlString GetCurrentWorkspaceName() const = 0;
    /// The first with this identity; null when there is none.
    virtual WorkspaceFile* GetWorkspaceByInstanceID(const TvlUtils::Guid& instance) = 0;
    /// Full path, without extension, of "_BootDefault" beside the workspaces that the suite comes with.
    virtual TvlString GetBootDefaultWorkspacePath() const = 0;
    /// Whether a name is that of the default for the desktop or for tablets, in any case.
    virtual bool IsDefaultWorkspace(const TvlString& name) const = 0;
    /// The mode that the manager was initialized with, or was told of last.
    virtual UserInteractionMode_t GetUserInteractionMode() const = 0;
    /// Extracts the icons of the current workspace to a temporary folder that goes with AppShuttingDown; at most
    /// as many as the preference "Workspaces/MaxIcons" says, 1000 by default.
    virtual std::vector<WorkspaceManagerTypes::IconResourcePair> ExtractIconResources() = 0;
    /// Saves the settings to the current workspace and notes in the registry which one that is.
    virtual void AppShuttingDown() = 0;
};

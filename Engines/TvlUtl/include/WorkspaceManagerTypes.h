// What the managers of workspaces and their applications share.
#pragma once

#include "TvlUtlApi.h"
#include "WorkspaceFile.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <functional>
#include <utility>
#include <vector>

/// What the device is used with.
enum UserInteractionMode_t : int {
    kDesktopInteraction = 0,   ///< mouse and keyboard
    kTabletInteraction = 1,    ///< fingers or a pen
};

/// The mode that the system is in now.
/// @param window a window of the application, whose monitor tells on systems where modes differ; may be null
TVLUTL_API UserInteractionMode_t CurrentUserInteractionMode(HWND window);

/// Types that workspace managers give and take.
namespace WorkspaceManagerTypes {

/// How an operation ended. The numbers are relied on.
enum class Result : int {
    Ok = 0,                 ///< done, or nothing had to change
    InitFailed = 1,         ///< refused arguments; an exported workspace without a description of what it contains
    NotInitialized = 2,     ///< no names of product and application, or no current workspace
    CreateFailed = 3,       ///< the new workspace can't be made
    WorkspaceInvalid = 4,   ///< the path names no workspace
    DefaultProtected = 5,   ///< default workspaces are not deleted
    FileNotWritable = 6,    ///< the file of the workspace to be deleted can't be written
    ChangeFailed = 7,       ///< the application refused the change; it works with the workspace that it had
};

/// How the device is held: stored and compared alone.
enum class Orientation : int {};

/// An icon of a workspace.
struct IconResourcePair {
    TvlString Name;   // a GUID
    TvlString Path;   // of the extracted file
};

/// A category in the user's language, with its workspaces.
using CategorizedWorkspaces = std::pair<TvlString, std::vector<WorkspaceFile>>;

}   // namespace WorkspaceManagerTypes

/// What a manager starts with. The order of the members is relied on.
struct WSM_INIT {
    TvlString Product;            // required; second level of the registry key
    TvlString Application;        // required, without a point; third level
    TvlString ResetRegistryKey;   // full key that a reset deletes; may be empty
    TvlString RegistryRoot;       // below the user's root; empty for "SOFTWARE\Tovel"
    TvlString RegistryKey;        // below the user's root; empty for the root, the product and the application
    bool Reset = false;           // asks for a reset; cleared when it does not go ahead
    std::function<void()> InitializeIcons;   // loads the icons of the current workspace; moved into the manager
    std::vector<WorkspaceFile::FilePair> AdditionalFiles;          // files that travel with each workspace
    UserInteractionMode_t InteractionMode = kDesktopInteraction;   // what the device is used with at the start
};

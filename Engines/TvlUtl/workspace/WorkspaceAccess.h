// How workspaces are opened, and what several operations on them share.
#pragma once

#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvrContainer/WorkspaceContainer.h"

#include <optional>

/// Order of workspaces in lists.
inline constexpr int kUserWorkspaceOrder = 200;   // of one that the user made or exported, and of one without an order
inline constexpr int kDefaultWorkspaceOrder = 400;

WorkspaceContainer OpenWorkspaceForReading(const TvlString& path);
/// Takes a read-only mark off the file first.
WorkspaceContainer OpenWorkspaceForWriting(const TvlString& path);
/// Whether there is a file or a folder of this name. Empty when that can't be looked at, which is not to be taken for missing.
std::optional<bool> IsThere(const TvlString& path);
/// Whether a workspace has settings that can be read.
bool HasReadableSettings(const TvlString& path);
/// Path in the container of a file of its content.
TvlString ContentPath(const wchar_t* file);
/// The suite's name of the language that the user interface speaks.
TvlString UILanguageName();

// Where the user's workspaces lie, and what else starts anew with them. No path has a separator at its end.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

/// "Workspaces" in the folder of the user's files, made when it is missing: the user's workspaces and their settings.
TVLSIBLINGS_API TvlString GetUserProfileWorkspaceDir();
/// "WebBrowser" in the folder of the user's files: what the built-in browser remembers. The folder need not exist.
TVLSIBLINGS_API TvlString GetWebBrowserUserDataDir();

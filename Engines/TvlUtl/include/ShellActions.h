// Requests to the user's desktop: addresses, and folders with a file in them.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlPlatform/TvlString.h"

/// Whether a program for http addresses is registered on the machine.
TVLUTL_API bool WEBIsBrowserAvailable();
/// Opens an address, a file or a folder with the program that is registered for it; the main window of the application,
/// if it has one, owns messages about it.
TVLUTL_API void WEBLaunchWebNewTab(const wchar_t* url);
/// The same.
TVLUTL_API void WEBLaunchWebBrowser(const wchar_t* url);
/// Shows a file selected in its folder. Of a file in the Windows folder, or below it, the folder is opened and nothing
/// selected. A file that does not exist shows nothing.
TVLUTL_API void OpenFolderWithFile(TvlString path);

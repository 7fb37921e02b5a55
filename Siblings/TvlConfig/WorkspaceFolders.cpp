#include "siblings/TvlConfig/WorkspaceFolders.h"

#include "siblings/TvlConfig/UserFolder.h"
#include "siblings/TvlUtils/SystemIO.h"

namespace {
namespace SystemIO = TvlUtils::SystemIO;
}   // namespace

TvlString GetUserProfileWorkspaceDir()
{
    const TvlString folder = SystemIO::Path::Combine(TvlConfig::GetUserDir(), L"Workspaces");
    static_cast<void>(SystemIO::Folder::EnsureExists(folder));   // who makes files there learns that it failed
    return folder;
}

TvlString GetWebBrowserUserDataDir() { return SystemIO::Path::Combine(TvlConfig::GetUserDir(), L"WebBrowser"); }

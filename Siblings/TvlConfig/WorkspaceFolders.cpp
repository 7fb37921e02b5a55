#include "siblings/TvlConfig/WorkspaceFolders.h"

#include "siblings/TvlConfig/SuiteFolders.h"
#include "siblings/TvlConfig/UserFolder.h"
#include "siblings/TvlUtils/SystemIO.h"

namespace {
namespace SystemIO = TvlUtils::SystemIO;

constexpr const wchar_t* kWorkspaces = L"Workspaces";
}   // namespace

TvlString GetUserProfileWorkspaceDir()
{
    const TvlString folder = SystemIO::Path::Combine(TvlConfig::GetUserDir(), kWorkspaces);
    static_cast<void>(SystemIO::Folder::EnsureExists(folder));   // who makes files there learns that it failed
    return folder;
}

TvlString INIGetBootDefaultWorkspaceDir() { return SystemIO::Path::Combine(TvlConfig::GetSuiteDir(), kWorkspaces); }

TvlString GetWebBrowserUserDataDir() { return SystemIO::Path::Combine(TvlConfig::GetUserDir(), L"WebBrowser"); }

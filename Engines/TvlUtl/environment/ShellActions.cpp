#include "ShellActions.h"

#include "WUTLRegistry.h"
#include "siblings/TvlComponent/Application.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/ShellUtils.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "windows/Shell.h"

#include <algorithm>

namespace SystemIO = TvlUtils::SystemIO;

namespace {
constexpr const wchar_t* kBrowserKey = L"HKEY_LOCAL_MACHINE\\SOFTWARE\\classes\\http\\shell\\open\\command";
constexpr int kShowNormal = 1;   // SW_SHOWNORMAL

std::wstring LowerCased(std::wstring text)
{
    std::transform(text.begin(), text.end(), text.begin(), TvlFoldCase);
    return text;
}

bool IsOfWindows(const TvlString& path)
{
    static const std::wstring windows = LowerCased(Ports::Shell::Get().WindowsFolder());
    return !windows.empty() && LowerCased(path.Std()).find(windows) != std::wstring::npos;
}
}   // namespace

bool WEBIsBrowserAvailable() { return WUTLRegistry(kBrowserKey, WUTLRegistry::kReadAccess).IsValid() == 0; }

void WEBLaunchWebNewTab(const wchar_t* url)
{
    const ITovelCmn_App* const application = TvlComponent::GetAppInterface();
    const HWND owner = application ? application->GetMainWindow() : nullptr;
    TvlUtils::ShellUtils::TvlShellExecute::Execute(owner, L"open", url, nullptr, nullptr, kShowNormal);
}

void WEBLaunchWebBrowser(const wchar_t* url) { WEBLaunchWebNewTab(url); }

void OpenFolderWithFile(TvlString path)
{
    if (!SystemIO::File::Exists(path))
        return;
    if (IsOfWindows(path))
        WEBLaunchWebNewTab(SystemIO::FromFilePath(SystemIO::ToFilePath(path).parent_path()).c_str());
    else
        Ports::Shell::Get().SelectInFolder(path.Std());
}

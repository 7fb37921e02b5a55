// Changes the workspace many times: workspace_switcher TIMES WORKSPACE...
// While it changes it makes a file that nobody else may have, to see whether it is alone.
#include "WorkspaceManager.h"
#include "siblings/TvlConfig/UserFolder.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "windows/Modules.h"

#include <cwchar>

namespace {
namespace SystemIO = TvlUtils::SystemIO;

constexpr int kNotAlone = 3;
constexpr int kFailed = 4;

bool IsAlone()
{
    const auto path = SystemIO::ToFilePath(SystemIO::Path::Combine(TvlConfig::GetUserDir(), L"changing"));
    std::unique_ptr<SystemIO::FileHandle> file;
    if (!SystemIO::FileLayer::Get().Open(path, SystemIO::OpenMode::CreateNew, file))
        return false;
    static_cast<void>(file->Close());
    return static_cast<bool>(SystemIO::FileLayer::Get().Remove(path));
}
}   // namespace

int main()
{
    const auto arguments = Ports::Modules::Get().Arguments();
    if (arguments.size() < 2)
        return kFailed;
    bool wasAlone = true;
    WorkspaceManager manager;
    WSM_INIT init;
    init.Product = L"Suite";
    init.Application = L"Switcher";
    init.InitializeIcons = [&] { wasAlone = wasAlone && IsAlone(); };
    if (manager.Initialize(init, nullptr) != WorkspaceManagerTypes::Result::Ok)
        return kFailed;
    const auto times = static_cast<std::size_t>(std::wcstoul(arguments[0].c_str(), nullptr, 10));
    for (std::size_t i = 0; wasAlone && i < times; ++i)
        if (manager.SetCurrentWorkspace(arguments[1 + i % (arguments.size() - 1)], false, false)
            != WorkspaceManagerTypes::Result::Ok)
            return kFailed;
    manager.AppShuttingDown();
    return wasAlone ? 0 : kNotAlone;
}

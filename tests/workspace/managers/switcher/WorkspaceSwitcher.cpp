// Changes the workspace many times beside another process that does the same:
// workspace_switcher LEDGER NAME TIMES WORKSPACE...
// LEDGER is a file that both write a line into when they have begun a change ("NAME begin"), and when they are about to
// end it ("NAME end"), all in one order. The first change waits until two processes have said that they are ready.
#include "WorkspaceManager.h"
#include "siblings/TvlComponent/Application.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/SystemIO.h"
#include "windows/Modules.h"

#include <chrono>
#include <cwchar>
#include <thread>

namespace {
namespace SystemIO = TvlUtils::SystemIO;

constexpr int kFailed = 4;

class Ledger {
public:
    Ledger(const TvlString& path, const std::wstring& name) : m_path(path), m_name(TvlPlatform::ToUtf8(name))
    {
        static_cast<void>(
            SystemIO::FileLayer::Get().Open(SystemIO::ToFilePath(path), SystemIO::OpenMode::Append, m_file));
    }

    bool Write(const std::string& what)
    {
        const std::string line = m_name + ' ' + what + '\n';
        std::size_t done = 0;
        m_isWhole = m_isWhole && m_file && m_file->WriteAt(0, line.data(), line.size(), done) && done == line.size();
        return m_isWhole;
    }
    bool IsWhole() const { return m_isWhole; }

    /// Says that this process is ready, and waits for the other one.
    bool Meet()
    {
        using namespace std::chrono_literals;
        const auto end = std::chrono::steady_clock::now() + 60s;
        for (Write("ready"); std::chrono::steady_clock::now() < end; std::this_thread::sleep_for(1ms)) {
            std::string lines;
            static_cast<void>(SystemIO::File::ReadAll(m_path, lines));
            if (lines.find("ready") != lines.rfind("ready"))
                return true;
        }
        return false;
    }

private:
    TvlString m_path;
    std::string m_name;
    std::unique_ptr<SystemIO::FileHandle> m_file;
    bool m_isWhole = true;
};

/// The application is told of the new workspace first, and of its icons last; the manager holds the mutex for both.
class Application : public ITovelCmn_App {
public:
    explicit Application(Ledger& ledger) : m_ledger(ledger) { TvlComponent::SetAppInterface(this); }
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;
    ~Application() override { TvlComponent::SetAppInterface(nullptr); }

    void ShowMessage(const wchar_t*) override { }
    HWND GetMainWindow() const override { return nullptr; }
    void NameWorkspace(const wchar_t*) override { m_ledger.Write("begin"); }
    void BeginWorkspaceChange() override { }
    void EndWorkspaceChange() override { }

private:
    Ledger& m_ledger;
};
}   // namespace

int main()
{
    const auto arguments = Ports::Modules::Get().Arguments();
    if (arguments.size() < 4)
        return kFailed;
    Ledger ledger(arguments[0], arguments[1]);
    WorkspaceManager manager;
    WSM_INIT init;
    init.Product = L"Suite";
    init.Application = L"Switcher";
    bool isStarted = false;
    init.InitializeIcons = [&] { isStarted = !isStarted || ledger.Write("end"); };
    if (manager.Initialize(init, nullptr) != WorkspaceManagerTypes::Result::Ok || !ledger.Meet())
        return kFailed;
    const Application application(ledger);
    const auto times = static_cast<std::size_t>(std::wcstoul(arguments[2].c_str(), nullptr, 10));
    for (std::size_t i = 0; i < times; ++i)
        if (manager.SetCurrentWorkspace(arguments[3 + i % (arguments.size() - 3)], false, false)
            != WorkspaceManagerTypes::Result::Ok)
            return kFailed;
    manager.AppShuttingDown();
    return ledger.IsWhole() ? 0 : kFailed;
}

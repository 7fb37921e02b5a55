// The desktop through the programs that every desktop brings along.
#include "Windows/SystemPorts.h"

#include "siblings/TvlPlatform/TextEncoding.h"

#include <cerrno>
#include <filesystem>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace Ports {

namespace {
/// Runs a program, found as the user's shell finds it but without a shell, and waits until it has passed the request on.
bool Run(std::vector<std::string> arguments)
{
    std::vector<char*> pointers;
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    pid_t process = 0;
    if (posix_spawnp(&process, pointers[0], nullptr, nullptr, pointers.data(), environ) != 0)
        return false;
    int status = 0;
    while (waitpid(process, &status, 0) < 0)
        if (errno != EINTR)
            return false;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// The file URI of a path: everything but unreserved characters and separators is escaped.
std::string FileUri(const std::wstring& path)
{
    constexpr std::string_view kPlain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-._~/";
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string uri = "file://";
    for (const char c : std::filesystem::absolute(TvlPlatform::ToUtf8(path)).string()) {
        if (kPlain.find(c) != std::string_view::npos) {
            uri += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        uri += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    }
    return uri;
}

class LinuxShell final : public Shell {
public:
    bool Execute(HWND, const wchar_t*, const wchar_t* target, const wchar_t*, const wchar_t*, int) override
    {
        if (!target || *target == L'\0' || *target == L'-')
            return false;
        return Run({"xdg-open", TvlPlatform::ToUtf8(target)});
    }

    bool SelectInFolder(const std::wstring& path) override
    {
        return Run({"dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.FileManager1",
            "/org/freedesktop/FileManager1", "org.freedesktop.FileManager1.ShowItems", "array:string:" + FileUri(path),
            "string:"});
    }

    std::wstring WindowsFolder() const override { return {}; }
};
}   // namespace

template <>
Shell& SystemPort<Shell>()
{
    static LinuxShell shell;
    return shell;
}

}   // namespace Ports

// The terminal behind standard error.
#include "windows/Terminal.h"

#include "Windows/SystemPorts.h"

#include "siblings/TvlPlatform/TextEncoding.h"

#include <cstdlib>
#include <iostream>
#include <string_view>
#include <sys/ioctl.h>
#include <unistd.h>

namespace Ports {

namespace {
constexpr int kUnknownColumns = 80;   // of a terminal that does not tell, such as a serial line

class LinuxTerminal final : public Terminal {
public:
    std::optional<int> ErrorColumns() const override
    {
        if (!isatty(STDERR_FILENO))
            return {};
        winsize size{};
        return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : kUnknownColumns;
    }
    bool UnderstandsEscapes() const override
    {
        const char* const kind = std::getenv("TERM");
        return isatty(STDERR_FILENO) && kind && kind != std::string_view("dumb");
    }

    bool IsInteractive() const override { return isatty(STDIN_FILENO) && isatty(STDERR_FILENO); }

    bool ShowsOutput() const override { return isatty(STDOUT_FILENO); }

    void Write(const std::wstring& text) override { std::cerr << TvlPlatform::ToUtf8(text) << std::flush; }

    std::optional<std::wstring> ReadLine() override
    {
        std::string line;
        if (!std::getline(std::cin, line))
            return std::nullopt;
        return TvlPlatform::FromUtf8(line);
    }
};
}   // namespace

template <>
Terminal& SystemPort<Terminal>()
{
    static LinuxTerminal terminal;
    return terminal;
}

}   // namespace Ports

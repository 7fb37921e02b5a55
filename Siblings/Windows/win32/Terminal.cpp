// The console behind standard error.
#include "windows/Terminal.h"

#include "Windows/SystemPorts.h"

#include <windows.h>

namespace Ports {

namespace {
class Win32Terminal final : public Terminal {
public:
    std::optional<int> ErrorColumns() const override
    {
        CONSOLE_SCREEN_BUFFER_INFO info{};
        // Fails for what is no console: a file, a pipe, no handle at all.
        if (!GetConsoleScreenBufferInfo(GetStdHandle(STD_ERROR_HANDLE), &info))
            return {};
        return info.srWindow.Right - info.srWindow.Left + 1;
    }
    bool UnderstandsEscapes() const override
    {
        const HANDLE console = GetStdHandle(STD_ERROR_HANDLE);
        DWORD mode = 0;
        return GetConsoleMode(console, &mode)
            && SetConsoleMode(console, mode | ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    }

    bool ShowsOutput() const override
    {
        DWORD mode = 0;
        return GetConsoleMode(GetStdHandle(STD_OUTPUT_HANDLE), &mode);
    }
};
}   // namespace

template <>
Terminal& SystemPort<Terminal>()
{
    static Win32Terminal terminal;
    return terminal;
}

}   // namespace Ports

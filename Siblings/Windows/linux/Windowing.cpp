// Without windows: boxes go to the log.
#include "Windows/SystemPorts.h"

#include "siblings/TvlUtils/LogMessage.h"

namespace Ports {

namespace {
constexpr int kDefaultAnswer = 1;   // IDOK

class LinuxWindowing final : public Windowing {
public:
    void Beep(UINT) override { }

    int ShowBox(HWND, const std::wstring& text, const std::wstring& caption, UINT) override
    {
        TvlUtils::LogMessage(TvlUtils::LogLevel::Error, TvlString().Format(L"%s: %s", caption, text));
        return kDefaultAnswer;
    }

    bool IsWindow(HWND window) const override { return window != nullptr; }
    bool LockUpdate(HWND) override { return false; }
    void Redraw(HWND, UINT) override { }
    bool IsVisible(HWND) const override { return false; }
    WindowRect ForegroundRect() const override { return {}; }
    HWND CreateStatic(DWORD, const std::wstring&, DWORD, int, int) override { return nullptr; }
    HWND Activate(HWND) override { return nullptr; }
    void Enable(HWND) override { }
    void BringToForeground(HWND) override { }
    void PumpMessages(HWND) override { }
    void Destroy(HWND) override { }
};
}   // namespace

template <>
Windowing& SystemPort<Windowing>()
{
    static LinuxWindowing windowing;
    return windowing;
}

}   // namespace Ports

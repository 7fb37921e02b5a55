// Windows and message boxes of the system.
#include "Windows/SystemPorts.h"

#include <windows.h>

namespace Ports {

namespace {
class Win32Windowing final : public Windowing {
public:
    void Beep(UINT type) override { MessageBeep(type); }

    int ShowBox(HWND owner, const std::wstring& text, const std::wstring& caption, UINT style) override
    {
        return MessageBoxW(owner, text.c_str(), caption.c_str(), style);
    }

    bool IsWindow(HWND window) const override { return ::IsWindow(window); }
    bool LockUpdate(HWND window) override { return LockWindowUpdate(window); }
    void Redraw(HWND window, UINT flags) override { RedrawWindow(window, nullptr, nullptr, flags); }

    bool IsVisible(HWND window) const override { return IsWindow(window) && IsWindowVisible(window); }

    WindowRect ForegroundRect() const override
    {
        RECT rect{};
        if (!GetWindowRect(GetForegroundWindow(), &rect))
            return {};
        return {static_cast<int>(rect.left), static_cast<int>(rect.top), static_cast<int>(rect.right),
            static_cast<int>(rect.bottom)};
    }

    HWND CreateStatic(DWORD extendedStyle, const std::wstring& title, DWORD style, int x, int y) override
    {
        return CreateWindowExW(
            extendedStyle, L"STATIC", title.c_str(), style, x, y, 0, 0, nullptr, nullptr, nullptr, nullptr);
    }

    HWND Activate(HWND window) override { return SetActiveWindow(window); }
    void Enable(HWND window) override { EnableWindow(window, TRUE); }
    void BringToForeground(HWND window) override { SetForegroundWindow(window); }

    void PumpMessages(HWND window) override
    {
        MSG message;
        while (PeekMessageW(&message, window, 0, 0, PM_REMOVE | PM_NOYIELD)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }

    int SystemMetric(int index) const override { return GetSystemMetrics(index); }

    void Destroy(HWND window) override
    {
        CloseWindow(window);
        DestroyWindow(window);
    }
};
}   // namespace

template <>
Windowing& SystemPort<Windowing>()
{
    static Win32Windowing windowing;
    return windowing;
}

}   // namespace Ports

#include "TopMostOwnerWnd.h"

#include "windows/Windowing.h"

namespace TvlUtl {

namespace {
constexpr DWORD kExtendedStyle = 0x40008;   // WS_EX_APPWINDOW | WS_EX_TOPMOST
constexpr DWORD kStyle = 0x90C00000;        // WS_POPUP | WS_VISIBLE | WS_CAPTION
}   // namespace

TopMostOwnerWnd::TopMostOwnerWnd(HWND owner) : ownerWindow(owner) { }
TopMostOwnerWnd::TopMostOwnerWnd(const TopMostOwnerWnd&) = default;
TopMostOwnerWnd& TopMostOwnerWnd::operator=(const TopMostOwnerWnd&) = default;

TopMostOwnerWnd::~TopMostOwnerWnd()
{
    if (!createdWindow)
        return;
    Ports::Windowing& windowing = Ports::Windowing::Get();
    windowing.Destroy(createdWindow);
    windowing.Activate(previousActiveWindow);
    createdWindow = nullptr;
}

HWND TopMostOwnerWnd::GetOwnerWnd(const wchar_t* title)
{
    Ports::Windowing& windowing = Ports::Windowing::Get();
    if (ownerWindow && windowing.IsVisible(ownerWindow))
        return ownerWindow;
    const Ports::WindowRect rect = windowing.ForegroundRect();
    createdWindow = windowing.CreateStatic(
        kExtendedStyle, title ? title : L"", kStyle, (rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2);
    if (!createdWindow)
        return ownerWindow;
    previousActiveWindow = windowing.Activate(createdWindow);
    windowing.Enable(createdWindow);
    if (ownerWindow)
        windowing.BringToForeground(createdWindow);
    windowing.PumpMessages(createdWindow);
    return createdWindow;
}

}   // namespace TvlUtl

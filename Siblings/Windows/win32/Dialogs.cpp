// Modal dialogs of Windows.
#include "Windows/SystemPorts.h"

#include <windows.h>

#include <shellapi.h>

namespace Ports {

namespace {
/// The device context of a window, held as long as the object lives.
class WindowContext {
public:
    explicit WindowContext(HWND window) : m_window(window), m_context(GetDC(window)) { }
    WindowContext(const WindowContext&) = delete;
    WindowContext& operator=(const WindowContext&) = delete;
    ~WindowContext() { ReleaseDC(m_window, m_context); }
    HDC Get() const { return m_context; }

private:
    HWND m_window;
    HDC m_context;
};

/// A function that older systems lack.
template <class Function>
Function Look(const wchar_t* module, const char* name)
{
    const HMODULE library = LoadLibraryExW(module, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    return library ? reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name))) : nullptr;
}

int DpiOf(HWND window)
{
    if (!IsWindow(window))
        return 0;
    using ForWindow = UINT(WINAPI*)(HWND);
    using ForMonitor = HRESULT(WINAPI*)(HMONITOR, int, UINT*, UINT*);
    static const auto forWindow = Look<ForWindow>(L"USER32.dll", "GetDpiForWindow");
    if (const UINT dpi = forWindow ? forWindow(window) : 0)
        return static_cast<int>(dpi);
    static const auto forMonitor = Look<ForMonitor>(L"SHCore.dll", "GetDpiForMonitor");
    UINT x = 0;
    UINT y = 0;
    const HMONITOR monitor = MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST);
    constexpr int kEffectiveDpi = 0;   // MDT_EFFECTIVE_DPI
    if (forMonitor && SUCCEEDED(forMonitor(monitor, kEffectiveDpi, &x, &y)) && x != 0)
        return static_cast<int>(x);
    return GetDeviceCaps(WindowContext(window).Get(), LOGPIXELSX);
}

DialogRect FromRect(const RECT& rect)
{
    return {static_cast<int>(rect.left), static_cast<int>(rect.top), static_cast<int>(rect.right - rect.left),
        static_cast<int>(rect.bottom - rect.top)};
}

class Win32Dialog final : public DialogWindow {
public:
    explicit Win32Dialog(DialogProcedure& procedure) : m_procedure(procedure) { }

    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second)
    {
        if (message == WM_INITDIALOG) {
            SetWindowLongPtrW(window, DWLP_USER, second);
            auto* const dialog = reinterpret_cast<Win32Dialog*>(second);
            dialog->m_window = window;
            dialog->m_procedure.OnInitDialog(*dialog);
            // True would give the focus to the first control.
            return !dialog->m_hasFocus;
        }
        auto* const dialog = reinterpret_cast<Win32Dialog*>(GetWindowLongPtrW(window, DWLP_USER));
        if (dialog && message == WM_DESTROY)
            dialog->m_procedure.OnDestroy(*dialog);
        if (!dialog || message != WM_COMMAND || LOWORD(first) != IDOK)
            return FALSE;
        dialog->m_procedure.OnOK(*dialog);
        EndDialog(window, IDOK);
        return TRUE;
    }

    bool HasControl(int id) const override { return id != 0 && Window(id) != nullptr; }

    DialogParameter Send(int id, UINT message, DialogParameter first, DialogParameter second) override
    {
        const HWND window = Window(id);
        return window ? SendMessageW(window, message, static_cast<WPARAM>(first), second) : 0;
    }

    void EnableSystemMenuItem(UINT item, UINT flags) override
    {
        if (const HMENU menu = GetSystemMenu(m_window, FALSE))
            EnableMenuItem(menu, item, flags);
    }

    DialogRect MapUnits(const DialogRect& units) const override
    {
        RECT rect{units.left, units.top, units.left + units.width, units.top + units.height};
        MapDialogRect(m_window, &rect);
        return FromRect(rect);
    }

    DialogRect Place(int id) const override
    {
        RECT rect{};
        GetWindowRect(Window(id), &rect);
        if (id != 0)
            MapWindowPoints(nullptr, m_window, reinterpret_cast<POINT*>(&rect), 2);
        return FromRect(rect);
    }

    DialogRect ClientArea() const override
    {
        RECT rect{};
        GetClientRect(m_window, &rect);
        return FromRect(rect);
    }

    void Move(int id, const DialogRect& place) override
    {
        SetWindowPos(
            Window(id), nullptr, place.left, place.top, place.width, place.height, SWP_NOZORDER | SWP_NOACTIVATE);
    }

    DialogRect TextSize(int id) const override
    {
        const HWND window = Window(id);
        std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
        text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
        const WindowContext context(window);
        const auto font = reinterpret_cast<HGDIOBJ>(SendMessageW(window, WM_GETFONT, 0, 0));
        const HGDIOBJ before = font ? SelectObject(context.Get(), font) : nullptr;
        RECT rect{};
        DrawTextW(context.Get(), text.c_str(), static_cast<int>(text.size()), &rect, DT_CALCRECT | DT_SINGLELINE);
        if (before)
            SelectObject(context.Get(), before);
        return FromRect(rect);
    }

    bool CreateComboBox(int id, DWORD style, const DialogRect& place) override
    {
        return CreateWindowExW(0, L"COMBOBOX", L"", style, place.left, place.top, place.width, place.height, m_window,
                   reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr)
            != nullptr;
    }

    void DestroyControl(int id) override
    {
        if (HasControl(id))
            DestroyWindow(Window(id));
    }

    void Focus(int id) override
    {
        // Tells what had the focus before, which may be nothing.
        SetFocus(Window(id));
        m_hasFocus = HasControl(id);
    }

    int Dpi() const override { return DpiOf(m_window); }

private:
    HWND Window(int id) const { return id == 0 ? m_window : GetDlgItem(m_window, id); }

    DialogProcedure& m_procedure;
    HWND m_window = nullptr;
    bool m_hasFocus = false;   // a control of the dialog's own choice
};

class Win32Dialogs final : public Dialogs {
public:
    bool RunModal(const std::vector<BYTE>& dialogTemplate, HWND owner, DialogProcedure& procedure) override
    {
        Win32Dialog dialog(procedure);
        // The vector's block is aligned as the template has to be.
        return DialogBoxIndirectParamW(GetModuleHandleW(nullptr),
                   reinterpret_cast<const DLGTEMPLATE*>(dialogTemplate.data()), owner, Win32Dialog::Procedure,
                   reinterpret_cast<LPARAM>(&dialog))
            == IDOK;
    }

    void* LoadStockIcon(int stockIcon, int width, int height) override
    {
        SHSTOCKICONINFO info{};
        info.cbSize = sizeof info;
        if (FAILED(SHGetStockIconInfo(static_cast<SHSTOCKICONID>(stockIcon), SHGSI_ICONLOCATION, &info)))
            return nullptr;
        const HMODULE library = LoadLibraryExW(info.szPath, nullptr, LOAD_LIBRARY_AS_DATAFILE);
        if (!library)
            return nullptr;
        // A negative index is a resource id.
        const auto resource = static_cast<ULONG_PTR>(static_cast<WORD>(-info.iIcon));
        void* const icon =
            LoadImageW(library, reinterpret_cast<const wchar_t*>(resource), IMAGE_ICON, width, height, 0);
        FreeLibrary(library);
        return icon;
    }

    void DestroyIcon(void* icon) override { ::DestroyIcon(static_cast<HICON>(icon)); }

    void* CreatePointFont(int tenthsOfPoint, const std::wstring& face) override
    {
        const WindowContext screen(nullptr);
        LOGFONTW font{};
        constexpr int kTenthsPerInch = 720;
        font.lfHeight = -MulDiv(tenthsOfPoint, GetDeviceCaps(screen.Get(), LOGPIXELSY), kTenthsPerInch);
        font.lfCharSet = DEFAULT_CHARSET;
        face.copy(font.lfFaceName, LF_FACESIZE - 1);
        return CreateFontIndirectW(&font);
    }

    void DeleteFont(void* font) override { DeleteObject(font); }
};
}   // namespace

template <>
Dialogs& SystemPort<Dialogs>()
{
    static Win32Dialogs dialogs;
    return dialogs;
}

}   // namespace Ports

#include "MainWindow.h"

#include "ControlIds.h"
#include "LocationsPage.h"
#include "MeasuresPage.h"
#include "PapersPage.h"
#include "ScalesPage.h"
#include "SlidersPage.h"
#include "TasksPage.h"
#include "WorkspacesPage.h"

#include <commctrl.h>

namespace {
constexpr const wchar_t* kClass = L"TvlGallery";
constexpr DWORD kStyle = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_CLIPCHILDREN;
constexpr int kWidth = 700;   // of the inside, in 1/96 inch
constexpr int kHeight = 450;
constexpr int kMargin = 8;

template <class T>
std::unique_ptr<Page> Make(HWND parent)
{
    return std::make_unique<T>(parent);
}

struct Tab {
    const wchar_t* name;
    std::unique_ptr<Page> (*make)(HWND parent);
};

constexpr Tab kTabPages[] = {
    {L"Measures", &Make<MeasuresPage>},
    {L"Sliders", &Make<SlidersPage>},
    {L"Papers", &Make<PapersPage>},
    {L"Scales", &Make<ScalesPage>},
    {L"Tasks", &Make<TasksPage>},
    {L"Locations", &Make<LocationsPage>},
    {L"Workspaces", &Make<WorkspacesPage>},
};
constexpr int kPages = static_cast<int>(std::size(kTabPages));

HFONT MessageFont(UINT dpi)
{
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dpi);
    return CreateFontIndirectW(&metrics.lfMessageFont);
}
}   // namespace

MainWindow::MainWindow(int page) : m_pages(kPages)
{
    const INITCOMMONCONTROLSEX controls{sizeof controls,
        ICC_TAB_CLASSES | ICC_UPDOWN_CLASS | ICC_BAR_CLASSES | ICC_PROGRESS_CLASS | ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&controls);
    RegisterWindowClass(kClass, &MainWindow::Procedure, LoadIconW(nullptr, IDI_APPLICATION));
    m_window = CreateWindowExW(WS_EX_CONTROLPARENT, kClass, L"TvlUtl Gallery", kStyle, CW_USEDEFAULT, CW_USEDEFAULT,
        kWidth, kHeight, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    SetWindowLongPtrW(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    AddTabs();
    Scale(GetDpiForWindow(m_window));
    ShowPage(page);
}

MainWindow::~MainWindow()
{
    SetWindowLongPtrW(m_window, GWLP_USERDATA, 0);
    m_pages.clear();
    DestroyWindow(m_window);
}

void MainWindow::AddTabs()
{
    m_tabs = CreateWindowExW(0, WC_TABCONTROLW, L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_CLIPSIBLINGS, 0, 0, 0, 0,
        m_window, reinterpret_cast<HMENU>(static_cast<INT_PTR>(kTabs)), GetModuleHandleW(nullptr), nullptr);
    for (int number = 0; number < kPages; ++number) {
        std::wstring name = kTabPages[number].name;
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = name.data();
        SendMessageW(m_tabs, TCM_INSERTITEMW, static_cast<WPARAM>(number), reinterpret_cast<LPARAM>(&item));
    }
}

void MainWindow::Scale(UINT dpi)
{
    m_dpi = dpi;
    std::unique_ptr<HFONT, DeleteFont> font(MessageFont(dpi));
    SendMessageW(m_tabs, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), FALSE);
    RECT frame{0, 0, MulDiv(kWidth, static_cast<int>(dpi), USER_DEFAULT_SCREEN_DPI),
        MulDiv(kHeight, static_cast<int>(dpi), USER_DEFAULT_SCREEN_DPI)};
    const int margin = MulDiv(kMargin, static_cast<int>(dpi), USER_DEFAULT_SCREEN_DPI);
    MoveWindow(m_tabs, margin, margin, frame.right - 2 * margin, frame.bottom - 2 * margin, TRUE);
    AdjustWindowRectExForDpi(&frame, kStyle, FALSE, 0, dpi);
    SetWindowPos(m_window, nullptr, 0, 0, frame.right - frame.left, frame.bottom - frame.top,
        SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    m_font.swap(font);   // the pages have the old one until they are scaled
    for (const auto& page : m_pages)
        if (page)
            ScalePage(*page);
}

void MainWindow::ScalePage(Page& page)
{
    RECT area{};
    GetWindowRect(m_tabs, &area);
    MapWindowPoints(nullptr, m_window, reinterpret_cast<POINT*>(&area), 2);
    SendMessageW(m_tabs, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&area));
    SetWindowPos(
        page.Window(), HWND_TOP, area.left, area.top, area.right - area.left, area.bottom - area.top, SWP_NOACTIVATE);
    page.Scale(m_dpi, m_font.get());
}

void MainWindow::ShowPage(int number)
{
    auto& page = m_pages[static_cast<std::size_t>(number)];
    if (!page) {
        page = kTabPages[number].make(m_window);
        ScalePage(*page);
    }
    if (m_page && m_page != page.get())
        ShowWindow(m_page->Window(), SW_HIDE);
    m_page = page.get();
    SendMessageW(m_tabs, TCM_SETCURSEL, static_cast<WPARAM>(number), 0);
    m_page->Show();
    ShowWindow(m_page->Window(), SW_SHOW);
}

void MainWindow::FocusPage()
{
    const HWND first = GetNextDlgTabItem(m_page->Window(), nullptr, FALSE);
    SetFocus(first);
    if (SendMessageW(first, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL)
        SendMessageW(first, EM_SETSEL, 0, -1);   // to be typed over, as when Tab leads there
}

void MainWindow::MovePage(int by)
{
    const auto number = static_cast<int>(SendMessageW(m_tabs, TCM_GETCURSEL, 0, 0));
    SetFocus(m_tabs);   // what was typed on the page that goes is taken
    ShowPage((number + by + kPages) % kPages);
    FocusPage();
}

void MainWindow::TakeEnter()
{
    const HWND control = GetFocus();
    const auto kind = SendMessageW(control, WM_GETDLGCODE, 0, 0);
    if (kind & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON))
        PostMessageW(control, BM_CLICK, 0, 0);
    else
        m_page->TakeEnter();
}

bool MainWindow::TakeKey(const MSG& message)
{
    if (message.message != WM_KEYDOWN || GetKeyState(VK_CONTROL) >= 0)
        return false;
    if (message.wParam == VK_NEXT || message.wParam == VK_PRIOR)
        MovePage(message.wParam == VK_NEXT ? 1 : -1);
    else if (message.wParam == VK_TAB)
        MovePage(GetKeyState(VK_SHIFT) < 0 ? -1 : 1);
    else
        return false;
    return true;
}

void MainWindow::Run()
{
    ShowWindow(m_window, SW_SHOW);
    FocusPage();
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (TakeKey(message) || IsDialogMessageW(m_window, &message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

LRESULT CALLBACK MainWindow::Procedure(HWND window, UINT message, WPARAM first, LPARAM second)
{
    auto* const self = reinterpret_cast<MainWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return self && self->Handle(message, first, second) ? 0 : DefWindowProcW(window, message, first, second);
}

bool MainWindow::Handle(UINT message, WPARAM first, LPARAM second)
{
    switch (message) {
    case WM_COMMAND:
        if (LOWORD(first) == IDOK)   // how IsDialogMessage tells of Enter
            TakeEnter();
        return true;
    case WM_NEXTDLGCTL:   // how Wine goes to a label by its underlined letter, and from there to the control behind it
        SetFocus(LOWORD(second) ? reinterpret_cast<HWND>(first) : GetNextDlgTabItem(m_window, GetFocus(), first != 0));
        return true;
    case WM_NOTIFY:
        if (reinterpret_cast<const NMHDR*>(second)->code == TCN_SELCHANGE)
            ShowPage(static_cast<int>(SendMessageW(m_tabs, TCM_GETCURSEL, 0, 0)));
        return true;
    case WM_DPICHANGED: {
        const RECT& proposed = *reinterpret_cast<const RECT*>(second);
        SetWindowPos(m_window, nullptr, proposed.left, proposed.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        Scale(GetDpiForWindow(m_window));
        return true;
    }
    case WM_CLOSE:
        PostQuitMessage(0);   // the window itself goes with this object
        return true;
    default:
        return false;
    }
}

int PageNumber(const std::wstring& name)
{
    for (int number = 0; number < kPages; ++number)
        if (lstrcmpiW(kTabPages[number].name, name.c_str()) == 0)
            return number;
    return -1;
}

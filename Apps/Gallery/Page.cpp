#include "Page.h"

#include <algorithm>
#include <commctrl.h>

namespace {
constexpr const wchar_t* kClass = L"TvlGalleryPage";
constexpr COLORREF kProblemColour = RGB(176, 0, 0);
constexpr int kUsualDpi = USER_DEFAULT_SCREEN_DPI;

}   // namespace

void RegisterWindowClass(const wchar_t* name, WNDPROC procedure, HICON icon)
{
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = procedure;
    description.hInstance = GetModuleHandleW(nullptr);
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.hIcon = icon;
    description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    description.lpszClassName = name;
    RegisterClassExW(&description);   // fails for a class that is there, which is as good
}

Page::Page(HWND parent)
{
    RegisterWindowClass(kClass, &Page::Procedure, nullptr);
    m_window = CreateWindowExW(WS_EX_CONTROLPARENT, kClass, L"", WS_CHILD | WS_CLIPCHILDREN, 0, 0, 0, 0, parent,
        nullptr, GetModuleHandleW(nullptr), nullptr);
    SetWindowLongPtrW(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

Page::~Page()
{
    // What the controls tell while they end has nobody to listen any more.
    SetWindowLongPtrW(m_window, GWLP_USERDATA, 0);
    DestroyWindow(m_window);
}

void Page::Scale(UINT dpi, HFONT font)
{
    m_dpi = dpi;
    const auto scaled = [dpi](int length) { return MulDiv(length, static_cast<int>(dpi), kUsualDpi); };
    for (const auto& [control, box] : m_placed) {
        SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
        MoveWindow(control, scaled(box.x), scaled(box.y), scaled(box.width), scaled(box.height), TRUE);
    }
}

HWND Page::Add(const wchar_t* windowClass, const wchar_t* text, DWORD style, int id, const Box& box)
{
    const bool isEdge = lstrcmpiW(windowClass, WC_EDITW) == 0 || lstrcmpiW(windowClass, WC_LISTBOXW) == 0
        || lstrcmpiW(windowClass, WC_LISTVIEWW) == 0;
    const HWND control =
        CreateWindowExW(isEdge ? WS_EX_CLIENTEDGE : 0, windowClass, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0,
            m_window, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr), nullptr);
    m_placed.push_back({control, box});
    return control;
}

HWND Page::AddLabel(const wchar_t* text, const Box& box, int id) { return Add(WC_STATICW, text, SS_LEFT, id, box); }

HWND Page::AddButton(const wchar_t* text, int id, const Box& box)
{
    return Add(WC_BUTTONW, text, WS_TABSTOP | BS_PUSHBUTTON, id, box);
}

HWND Page::AddEdit(const wchar_t* text, int id, const Box& box, DWORD style)
{
    return Add(WC_EDITW, text, WS_TABSTOP | ES_AUTOHSCROLL | style, id, box);
}

HWND Page::AddCombo(int id, const Box& box)
{
    return Add(WC_COMBOBOXW, L"", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, id, box);
}

std::wstring Page::Text(int id) const { return WindowText(Control(id)); }

LRESULT CALLBACK Page::Procedure(HWND window, UINT message, WPARAM first, LPARAM second)
{
    auto* const page = reinterpret_cast<Page*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return page ? page->Handle(message, first, second) : DefWindowProcW(window, message, first, second);
}

LRESULT Page::Handle(UINT message, WPARAM first, LPARAM second)
{
    switch (message) {
    case WM_COMMAND:
        OnCommand(LOWORD(first), HIWORD(first));
        return 0;
    case WM_NOTIFY:
        return OnNotify(*reinterpret_cast<const NMHDR*>(second));
    case WM_HSCROLL:
        OnSlide(reinterpret_cast<HWND>(second));
        return 0;
    case WM_DRAWITEM:
        OnDraw(*reinterpret_cast<const DRAWITEMSTRUCT*>(second));
        return TRUE;
    case WM_CTLCOLORSTATIC:
        return ColourOfText(reinterpret_cast<HDC>(first), reinterpret_cast<HWND>(second));
    default:
        return OnMessage(message, first, second) ? 0 : DefWindowProcW(m_window, message, first, second);
    }
}

LRESULT Page::ColourOfText(HDC context, HWND control) const
{
    if (std::find(m_problems.begin(), m_problems.end(), GetDlgCtrlID(control)) == m_problems.end())
        return DefWindowProcW(
            m_window, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(context), reinterpret_cast<LPARAM>(control));
    SetTextColor(context, kProblemColour);
    SetBkColor(context, GetSysColor(COLOR_BTNFACE));
    return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_BTNFACE));
}

std::wstring WindowText(HWND window)
{
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

void AddEntry(HWND combo, const wchar_t* text, int value)
{
    const LRESULT place = SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
    SendMessageW(combo, CB_SETITEMDATA, static_cast<WPARAM>(place), value);
}

int ChosenEntry(HWND combo)
{
    const LRESULT place = SendMessageW(combo, CB_GETCURSEL, 0, 0);
    return place == CB_ERR ? -1 : static_cast<int>(SendMessageW(combo, CB_GETITEMDATA, static_cast<WPARAM>(place), 0));
}

void ChooseEntry(HWND combo, int value)
{
    const LRESULT count = SendMessageW(combo, CB_GETCOUNT, 0, 0);
    for (LRESULT place = 0; place < count; ++place)
        if (SendMessageW(combo, CB_GETITEMDATA, static_cast<WPARAM>(place), 0) == value) {
            SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(place), 0);
            return;
        }
}

void AddColumns(HWND list, std::initializer_list<ListColumn> columns)
{
    const int dpi = static_cast<int>(GetDpiForWindow(list));
    int place = 0;
    for (const auto& [title, width] : columns) {
        std::wstring text = title;
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH;
        column.cx = MulDiv(width, dpi, kUsualDpi);
        column.pszText = text.data();
        ListView_InsertColumn(list, place++, &column);
    }
}

void AddListRow(HWND list, std::initializer_list<const wchar_t*> cells)
{
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = ListView_GetItemCount(list);
    for (std::wstring text : cells) {
        item.pszText = text.data();
        SendMessageW(list, item.iSubItem == 0 ? LVM_INSERTITEMW : LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        ++item.iSubItem;
    }
}

std::wstring ListCell(HWND list, int row, int column)
{
    std::wstring text(1024, L'\0');
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    const LRESULT length =
        SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    return item.pszText ? std::wstring(item.pszText, static_cast<std::size_t>(length)) : std::wstring();
}

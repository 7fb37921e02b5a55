// The gallery's window: tabs, and the page of the one that is chosen.
#pragma once

#include "Page.h"

#include <memory>

/// Pages are made when they are shown first. Ctrl+Tab and Ctrl+Page Down go to the next page, with Shift and Ctrl+Page Up to
/// the one before.
class MainWindow {
public:
    /// @param page number of the page to begin with, from 0
    explicit MainWindow(int page);
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;
    ~MainWindow();

    HWND Window() const { return m_window; }
    /// Shows the window and serves it until it is closed.
    void Run();

private:
    struct DeleteFont {
        using pointer = HFONT;
        void operator()(HFONT font) const { DeleteObject(font); }
    };

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second);
    bool Handle(UINT message, WPARAM first, LPARAM second);
    bool TakeKey(const MSG& message);
    void AddTabs();
    void ShowPage(int number);
    /// Gives the keyboard to the page's first control.
    void FocusPage();
    void MovePage(int by);
    void TakeEnter();
    /// Lays everything out for a resolution, in dots per inch.
    void Scale(UINT dpi);
    void ScalePage(Page& page);

    HWND m_window = nullptr;
    HWND m_tabs = nullptr;
    UINT m_dpi = USER_DEFAULT_SCREEN_DPI;
    std::unique_ptr<HFONT, DeleteFont> m_font;
    std::vector<std::unique_ptr<Page>> m_pages;   // null before it is shown
    Page* m_page = nullptr;
};

/// The number of the page with this name, such as "papers", from 0; -1 when there is none.
int PageNumber(const std::wstring& name);

// A page of the window.
#pragma once

#include <initializer_list>
#include <string>
#include <vector>
#include <windows.h>

/// Where a control stands on its page, in 1/96 inch.
struct Box {
    int x;
    int y;
    int width;
    int height;
};

/// Registers a class of the program's windows, in the colour of dialogs. One of that name stays as it is.
/// @param icon the system's own while the class lives; null for windows that show none
void RegisterWindowClass(const wchar_t* name, WNDPROC procedure, HICON icon);

/// A window below the tabs with controls, laid out for the resolution of the screen that it is on. Pages make their
/// controls in their constructors, in the order in which the Tab key visits them.
class Page {
public:
    explicit Page(HWND parent);
    Page(const Page&) = delete;
    Page& operator=(const Page&) = delete;
    virtual ~Page();

    HWND Window() const { return m_window; }
    /// Places the controls for a resolution, in dots per inch, with their texts in a font, which must outlive the page.
    void Scale(UINT dpi, HFONT font);
    /// The page comes to the front.
    virtual void Show() { }
    /// Enter was pressed in a control that has no use for it.
    virtual void TakeEnter() { }

    HWND Add(const wchar_t* windowClass, const wchar_t* text, DWORD style, int id, const Box& box);
    /// A text of its own, or the name of the control that follows: "&" marks the key that leads there.
    HWND AddLabel(const wchar_t* text, const Box& box, int id = -1);
    HWND AddButton(const wchar_t* text, int id, const Box& box);
    HWND AddEdit(const wchar_t* text, int id, const Box& box, DWORD style = 0);
    /// A list that drops down.
    HWND AddCombo(int id, const Box& box);
    HWND Control(int id) const { return GetDlgItem(m_window, id); }
    void SetText(int id, const wchar_t* text) const { SetDlgItemTextW(m_window, id, text); }
    std::wstring Text(int id) const;
    /// Texts of this control tell of problems: they are red.
    void ShowAsProblem(int id) { m_problems.push_back(id); }

protected:
    /// A control tells something: WM_COMMAND's notification.
    virtual void OnCommand(int /*id*/, int /*code*/) { }
    /// WM_NOTIFY.
    virtual LRESULT OnNotify(const NMHDR& /*notice*/) { return 0; }
    /// A slider has moved.
    virtual void OnSlide(HWND /*slider*/) { }
    /// A control that draws itself wants to be drawn.
    virtual void OnDraw(const DRAWITEMSTRUCT& /*item*/) { }
    /// Any other message; false for those of no interest.
    virtual bool OnMessage(UINT /*message*/, WPARAM, LPARAM) { return false; }
    UINT Dpi() const { return m_dpi; }

private:
    struct Placed {
        HWND control;
        Box box;
    };

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second);
    LRESULT Handle(UINT message, WPARAM first, LPARAM second);
    LRESULT ColourOfText(HDC context, HWND control) const;

    HWND m_window;
    UINT m_dpi = 96;
    std::vector<Placed> m_placed;
    std::vector<int> m_problems;
};

/// The text of a window.
std::wstring WindowText(HWND window);
/// Adds an entry to a list that drops down.
void AddEntry(HWND combo, const wchar_t* text, int value);
/// The value of the entry that is chosen; -1 for none.
int ChosenEntry(HWND combo);
/// Chooses the entry of a value, if there is one.
void ChooseEntry(HWND combo, int value);

/// A column of a list in report form; the width counts in 1/96 inch.
struct ListColumn {
    const wchar_t* title;
    int width;
};

void AddColumns(HWND list, std::initializer_list<ListColumn> columns);
/// Appends a row with its cells.
void AddListRow(HWND list, std::initializer_list<const wchar_t*> cells);
std::wstring ListCell(HWND list, int row, int column);

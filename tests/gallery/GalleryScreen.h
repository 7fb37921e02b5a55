// The gallery on a screen, and a user at its keyboard.
#pragma once

#include "ControlIds.h"
#include "MainWindow.h"
#include "UserWorld.h"

#include <functional>
#include <thread>
#include <windows.h>

/// Runs the window on a thread of its own, in a world of its own with German regional settings, until the object ends.
class GalleryScreen {
public:
    GalleryScreen();
    GalleryScreen(const GalleryScreen&) = delete;
    GalleryScreen& operator=(const GalleryScreen&) = delete;
    ~GalleryScreen();

    /// Whether the window has come up and has the keyboard.
    bool IsThere() const { return m_window != nullptr; }
    const UserWorld& World() const { return m_world; }
    /// Goes to a page with Ctrl+Page Down; false when it does not come.
    bool GoTo(const wchar_t* page);
    /// A control of the page that is shown.
    HWND Control(int id) const;
    std::wstring Text(int id) const { return TextOf(Control(id)); }
    bool IsShown(int id) const { return IsWindowVisible(Control(id)) != FALSE; }
    LRESULT Send(int id, UINT message, WPARAM first = 0, LPARAM second = 0) const;
    /// The control that has the keyboard; 0 for one without id.
    int Focus() const;
    /// Gives the keyboard to a control, as a click does.
    bool Click(int id) const;
    /// Replaces a field's text by typing.
    void Type(int id, const wchar_t* text) const;
    std::wstring Cell(int list, int row, int column) const;

    static void Press(WORD key, WORD with = 0);
    /// Waits until something holds; false when it does not come to that.
    static bool Waits(const std::function<bool()>& holds);
    /// Waits for a control's text; gives what stands there in the end.
    std::wstring Await(int id, const std::wstring& text) const;

private:
    static std::wstring TextOf(HWND control);
    HWND ShownPage() const;

    UserWorld m_world;
    std::thread m_thread;
    HWND m_window = nullptr;
    DWORD m_threadId = 0;
};

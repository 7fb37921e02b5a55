// Windows and message boxes.
#pragma once

#include "siblings/SiblingsApi.h"

#include <string>

namespace Ports {

/// Corners of a rectangle on the screen, in pixels.
struct WindowRect {
    int left = 0;     // the leftmost column
    int top = 0;      // the uppermost row
    int right = 0;    // the first column beyond
    int bottom = 0;   // the first row beyond
};

/// Windows, boxes and drawing, as far as the library has to do with them.
class TVLSIBLINGS_API Windowing {
public:
    /// The system's, or the one that stands in for it.
    static Windowing& Get();
    /// Replaces the port; null restores the system's. The caller keeps ownership.
    static void SetForTests(Windowing*);

    virtual ~Windowing() = default;
    /// MessageBeep.
    virtual void Beep(UINT type) = 0;
    /// MessageBoxW: shows a box, waits for its answer and returns the button. On linux the text goes to the log and the
    /// answer is 1, the default button's.
    virtual int ShowBox(HWND owner, const std::wstring& text, const std::wstring& caption, UINT style) = 0;
    /// IsWindow: whether there is a window of this handle. On linux every handle but null counts as one.
    virtual bool IsWindow(HWND window) const = 0;
    /// LockWindowUpdate: nothing is drawn in the window from now on; null draws again. False when another window is
    /// locked already.
    virtual bool LockUpdate(HWND window) = 0;
    /// RedrawWindow of the whole window; `flags` are those of the call (RDW_...).
    virtual void Redraw(HWND window, UINT flags) = 0;
    /// IsWindow and IsWindowVisible.
    virtual bool IsVisible(HWND window) const = 0;
    /// Rectangle of the foreground window; all zero when there is none.
    virtual WindowRect ForegroundRect() const = 0;
    /// CreateWindowExW of class "STATIC" without size, parent and menu; null when it fails. Always null on linux.
    virtual HWND CreateStatic(DWORD extendedStyle, const std::wstring& title, DWORD style, int x, int y) = 0;
    /// SetActiveWindow; returns the window that was active before.
    virtual HWND Activate(HWND window) = 0;
    /// EnableWindow.
    virtual void Enable(HWND window) = 0;
    /// SetForegroundWindow.
    virtual void BringToForeground(HWND window) = 0;
    /// Handles every message that waits for a window, without waiting for more.
    virtual void PumpMessages(HWND window) = 0;
    /// GetSystemMetrics; 0 on linux.
    virtual int SystemMetric(int) const { return 0; }
    /// CloseWindow and DestroyWindow.
    virtual void Destroy(HWND window) = 0;
};

}   // namespace Ports

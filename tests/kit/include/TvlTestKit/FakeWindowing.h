// Records message boxes and pretends windows, for tests that nobody answers.
#pragma once

#include "windows/Windowing.h"

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace TvlTestKit {

/// In the system's place as long as it lives.
class FakeWindowing : public Ports::Windowing {
public:
    /// A message box that was asked for.
    struct Box {
        HWND owner;             ///< null for none
        std::wstring text;      ///< with its line ends
        std::wstring caption;   ///< of the box's frame
        UINT style;             ///< MB_... bits of the call
    };

    /// Puts the recorder in place of the system's windows.
    FakeWindowing() { SetForTests(this); }
    ~FakeWindowing() override { SetForTests(nullptr); }

    void Beep(UINT type) override { beeps.push_back(type); }
    int ShowBox(HWND owner, const std::wstring& text, const std::wstring& caption, UINT style) override
    {
        boxes.push_back({owner, text, caption, style});
        return answer;
    }
    bool IsWindow(HWND window) const override { return window && !gone.contains(window); }
    bool LockUpdate(HWND window) override
    {
        calls.push_back(window ? L"lock" : L"unlock");
        return canLock;
    }
    void Redraw(HWND, UINT flags) override { calls.push_back(L"redraw " + std::to_wstring(flags)); }
    bool IsVisible(HWND window) const override { return window && window == visible; }
    Ports::WindowRect ForegroundRect() const override { return foreground; }
    HWND CreateStatic(DWORD, const std::wstring&, DWORD, int x, int y) override
    {
        calls.push_back(L"create " + std::to_wstring(x) + L"," + std::to_wstring(y));
        return created;
    }
    HWND Activate(HWND window) override
    {
        calls.push_back(L"activate");
        return std::exchange(active, window);
    }
    void Enable(HWND) override { calls.push_back(L"enable"); }
    void BringToForeground(HWND) override { calls.push_back(L"foreground"); }
    void PumpMessages(HWND) override { calls.push_back(L"pump"); }
    void Destroy(HWND) override { calls.push_back(L"destroy"); }

    std::vector<Box> boxes;            ///< in the order in which they were shown
    std::vector<UINT> beeps;           ///< types of the sounds
    std::vector<std::wstring> calls;   ///< the other calls, such as L"activate" or L"create 10,20"
    std::set<HWND> gone;               ///< handles of windows that were destroyed
    bool canLock = true;               ///< what LockUpdate answers
    int answer = 1;                    ///< the button that every box is closed with
    HWND visible = nullptr;            ///< the window that counts as visible
    HWND created = nullptr;            ///< what CreateStatic gives
    HWND active = nullptr;             ///< the window that is active
    Ports::WindowRect foreground;      ///< of the window in the foreground
};

}   // namespace TvlTestKit

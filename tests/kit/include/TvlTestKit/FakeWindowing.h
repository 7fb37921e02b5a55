// Records message boxes and pretends windows, for tests that nobody answers.
#pragma once

#include "windows/Windowing.h"

#include <string>
#include <utility>
#include <vector>

namespace TvlTestKit {

/// In the system's place as long as it lives.
class FakeWindowing : public Ports::Windowing {
public:
    /// A message box that was asked for.
    struct Box {
        HWND owner;
        std::wstring text;
        std::wstring caption;
        UINT style;
    };

    FakeWindowing() { SetForTests(this); }
    ~FakeWindowing() override { SetForTests(nullptr); }

    void Beep(UINT type) override { beeps.push_back(type); }
    int ShowBox(HWND owner, const std::wstring& text, const std::wstring& caption, UINT style) override
    {
        boxes.push_back({owner, text, caption, style});
        return answer;
    }
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

    std::vector<Box> boxes;
    std::vector<UINT> beeps;
    std::vector<std::wstring> calls;
    int answer = 1;
    HWND visible = nullptr;
    HWND created = nullptr;
    HWND active = nullptr;
    Ports::WindowRect foreground;
};

}   // namespace TvlTestKit

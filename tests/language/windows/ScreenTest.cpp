// The dialog on a screen, answered with keys.
#include "LanguageSelectionDialog.h"
#include "LanguageWorld.h"

#include <chrono>
#include <thread>
#include <windows.h>

namespace {

/// The dialog, once it is up; null when it does not come.
HWND WaitForDialog()
{
    for (int tries = 0; tries < 3000; ++tries) {
        const HWND dialog = FindWindowW(L"#32770", L"Select Language");
        if (dialog && IsWindowVisible(dialog))
            return dialog;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return nullptr;
}

void PressKey(HWND control, WPARAM key)
{
    PostMessageW(control, WM_KEYDOWN, key, 1);
    PostMessageW(control, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
}

class Screen : public LanguageWorld {
protected:
    Screen()
    {
        Ports::Dialogs::SetForTests(nullptr);
        Ports::Windowing::SetForTests(nullptr);
        Install("DEU ENU FRA");
        StoreText(L"ENU");
        StoreNumber(L"QueryStartupLang", 1);
    }
};

TEST_F(Screen, IsAnsweredWithKeys)
{
    bool closes = true;
    bool checked = true;
    bool hasFocus = false;
    std::wstring selected(100, L'\0');
    std::thread user([&] {
        const HWND dialog = WaitForDialog();
        if (!dialog)
            return;
        closes = (GetMenuState(GetSystemMenu(dialog, FALSE), SC_CLOSE, MF_BYCOMMAND) & MF_DISABLED) == 0;
        const HWND list = GetDlgItem(dialog, kLanguageList);
        const HWND check = GetDlgItem(dialog, kLanguageAlwaysUse);
        GUITHREADINFO thread{};
        thread.cbSize = sizeof thread;
        hasFocus = GetGUIThreadInfo(GetWindowThreadProcessId(dialog, nullptr), &thread) && thread.hwndFocus == list;
        checked = SendMessageW(check, BM_GETCHECK, 0, 0) != 0;
        selected.resize(static_cast<std::size_t>(GetWindowTextW(list, selected.data(), 100)));
        PressKey(list, VK_ESCAPE);              // does not end it
        PostMessageW(dialog, WM_CLOSE, 0, 0);   // nor does this
        PressKey(list, VK_DOWN);                // by name: DEU, ENU, FRA
        PressKey(check, VK_SPACE);
        PressKey(list, VK_RETURN);
    });
    EXPECT_EQ(Chosen(), L"FRA");
    user.join();
    EXPECT_FALSE(closes);
    EXPECT_TRUE(hasFocus) << "keys go to the list";
    EXPECT_FALSE(checked) << "the user wants to be asked";
    EXPECT_EQ(selected, L"Name ENU");
    EXPECT_EQ(StoredLanguage(), L"FRA");
    EXPECT_EQ(IGLB_UILanguage::GetInst().ReadQueryStartupLang(), 0) << "the check box was set with the space bar";
}

}   // namespace

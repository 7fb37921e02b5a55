// Boxes and owner windows on the screen.
#include "FatalError.h"
#include "TopMostOwnerWnd.h"

#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <windows.h>

namespace {

struct SeenBox {
    std::wstring caption;
    std::wstring text;
    LONG style = 0;
};

/// Waits for a box with a caption, notes it and answers it.
SeenBox AnswerBox(const wchar_t* caption)
{
    SeenBox seen;
    HWND box = nullptr;
    for (int i = 0; i < 200 && !box; ++i) {
        Sleep(50);
        box = FindWindowW(nullptr, caption);
    }
    if (!box)
        return seen;
    wchar_t text[512] = L"";
    GetWindowTextW(box, text, 512);
    seen.caption = text;
    for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        if (GetWindowTextW(child, text, 512) > 20)
            seen.text = text;
    seen.style = GetWindowLongW(box, GWL_EXSTYLE);
    PostMessageW(box, WM_COMMAND, IDOK, 0);
    return seen;
}

TEST(FatalErrorOnScreen, ShowsATopMostBoxAndReturns)
{
    SeenBox seen;
    std::thread answer([&seen] { seen = AnswerBox(L"Host: error 1002 in LISTMAN, line 717"); });
    UIMSG_FatalError(1002, "ListMan.cpp", 717, L"Host", 1);
    answer.join();
    EXPECT_EQ(seen.caption, L"Host: error 1002 in LISTMAN, line 717");
    EXPECT_NE(seen.text.find(L"serious error"), std::wstring::npos);
    EXPECT_TRUE(seen.style & WS_EX_TOPMOST);
}

TEST(TopMostOwnerOnScreen, ReplacesAHiddenOwnerForAsLongAsItLives)
{
    HWND const hidden =
        CreateWindowExW(0, L"STATIC", L"hidden", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(hidden, nullptr);
    HWND made = nullptr;
    {
        TvlUtl::TopMostOwnerWnd owner(hidden);
        made = owner.GetOwnerWnd(L"Owner");
        EXPECT_NE(made, hidden);
        EXPECT_TRUE(IsWindow(made));
        EXPECT_TRUE(IsWindowVisible(made));
        EXPECT_TRUE(GetWindowLongW(made, GWL_EXSTYLE) & WS_EX_TOPMOST);
        EXPECT_TRUE(GetWindowLongW(made, GWL_STYLE) & WS_CAPTION);
    }
    EXPECT_FALSE(IsWindow(made));
    ShowWindow(hidden, SW_SHOW);
    TvlUtl::TopMostOwnerWnd owner(hidden);
    EXPECT_EQ(owner.GetOwnerWnd(L"Owner"), hidden);
    DestroyWindow(hidden);
}

}   // namespace

// The fatal error box and its owner windows.
#include "FatalError.h"
#include "FakeWindowing.h"
#include "TopMostOwnerWnd.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

HWND Window(std::intptr_t number) { return reinterpret_cast<HWND>(number); }

TEST(FatalError, ShowsNamesUpToTheFirstPoint)
{
    FakeWindowing windowing;
    UIMSG_FatalError(1002, "ListMan.cpp", 717, L"Host", 1);
    UIMSG_FatalError(5002, "../../Engines/TvlUtl/ListMan.cpp", 1429, nullptr, 0);
    UIMSG_FatalError(1, "", 2, L"", 0);
    ASSERT_EQ(windowing.boxes.size(), 3u);
    EXPECT_EQ(windowing.boxes[0].caption, L"Host: error 1002 in LISTMAN, line 717");
    EXPECT_EQ(windowing.boxes[1].caption, L"Tovel: error 5002 in , line 1429");
    EXPECT_EQ(windowing.boxes[2].caption, L"Tovel: error 1 in , line 2");
    EXPECT_NE(windowing.boxes[0].text, windowing.boxes[1].text);
    EXPECT_THAT(windowing.boxes[0].text, Not(IsEmpty()));
    EXPECT_EQ(windowing.boxes[0].style, 4112u);
    EXPECT_EQ(windowing.boxes[0].owner, nullptr);
    EXPECT_THAT(windowing.beeps, ElementsAre(16u, 16u, 16u));
}

TEST(TopMostOwnerWnd, TakesAVisibleOwnerAsItIs)
{
    FakeWindowing windowing;
    windowing.visible = Window(7);
    {
        TvlUtl::TopMostOwnerWnd owner(Window(7));
        EXPECT_EQ(owner.GetOwnerWnd(L"t"), Window(7));
    }
    EXPECT_THAT(windowing.calls, IsEmpty());
}

TEST(TopMostOwnerWnd, MakesAWindowInTheMiddleOfTheForeground)
{
    FakeWindowing windowing;
    windowing.created = Window(9);
    windowing.active = Window(3);
    windowing.foreground = {10, 20, 110, 60};
    {
        TvlUtl::TopMostOwnerWnd owner(Window(7));   // hidden
        EXPECT_EQ(owner.GetOwnerWnd(L"t"), Window(9));
        EXPECT_EQ(windowing.active, Window(9));
    }
    EXPECT_EQ(windowing.active, Window(3));
    EXPECT_THAT(windowing.calls,
        ElementsAre(L"create 60,40", L"activate", L"enable", L"foreground", L"pump", L"destroy", L"activate"));
}

TEST(TopMostOwnerWnd, MakesAWindowWithoutAnyOther)
{
    FakeWindowing windowing;
    windowing.created = Window(9);
    TvlUtl::TopMostOwnerWnd owner(nullptr);
    EXPECT_EQ(owner.GetOwnerWnd(nullptr), Window(9));
    EXPECT_THAT(windowing.calls, ElementsAre(L"create 0,0", L"activate", L"enable", L"pump"));
    windowing.created = Window(10);
    EXPECT_EQ(owner.GetOwnerWnd(L"t"), Window(10));   // a second one; the first is forgotten
    {
        const TvlUtl::TopMostOwnerWnd copy = owner;
        windowing.calls.clear();
    }
    EXPECT_THAT(windowing.calls, ElementsAre(L"destroy", L"activate"));   // a copy takes the window away as well
}

TEST(TopMostOwnerWnd, GivesTheOwnerBackWhenNoWindowCanBeMade)
{
    FakeWindowing windowing;
    TvlUtl::TopMostOwnerWnd owner(Window(7));
    EXPECT_EQ(owner.GetOwnerWnd(L"t"), Window(7));
}

}   // namespace

// The gallery as its user has it: keys go in, texts come out.
#include "CFileLocations.h"
#include "GalleryScreen.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <cmath>
#include <commctrl.h>
#include <gtest/gtest.h>
#include <memory>

namespace {

/// One window for all tests: each goes to its page.
class Gallery : public testing::Test {
protected:
    static void SetUpTestSuite() { s_screen = std::make_unique<GalleryScreen>(); }
    static void TearDownTestSuite() { s_screen.reset(); }
    void SetUp() override { ASSERT_TRUE(s_screen->IsThere()); }

    static GalleryScreen& Screen() { return *s_screen; }
    static bool Waits(const std::function<bool()>& holds) { return GalleryScreen::Waits(holds); }

private:
    static inline std::unique_ptr<GalleryScreen> s_screen;
};

struct Typed {
    const wchar_t* text;
    const wchar_t* shown;
};

TEST_F(Gallery, ShowsAnExpressionInAnyUnitInTheFieldsOwn)
{
    constexpr Typed kTyped[] = {
        {L"5in + 3mm", L"130 mm"},
        {L"2*(1/2 ft)", L"304,8 mm"},
        {L"1234,5", L"1.234,5 mm"},
        {L"1m * sin(30)", L"500 mm"},
    };
    ASSERT_TRUE(Screen().GoTo(L"Measures"));
    for (const auto& [text, shown] : kTyped) {
        Screen().Type(kFirstMeasure, text);
        GalleryScreen::Press(VK_RETURN);
        EXPECT_EQ(Screen().Await(kFirstMeasure, shown), shown) << TvlPlatform::ToUtf8(text);
    }
}

TEST_F(Gallery, TabTakesTheTextAndGoesOn)
{
    ASSERT_TRUE(Screen().GoTo(L"Measures"));
    Screen().Type(kFirstMeasure, L"1in");
    GalleryScreen::Press(VK_TAB);
    EXPECT_EQ(Screen().Await(kFirstMeasure, L"25,4 mm"), L"25,4 mm");
    EXPECT_TRUE(Waits([] { return Screen().Focus() == kFirstMeasure + kMeasureUnit; }));
    GalleryScreen::Press(VK_DOWN);   // picas
    GalleryScreen::Press(VK_DOWN);
    EXPECT_EQ(Screen().Await(kFirstMeasure, L"72 pt"), L"72 pt");
    GalleryScreen::Press(VK_UP);
    GalleryScreen::Press(VK_UP);
    EXPECT_EQ(Screen().Await(kFirstMeasure, L"25,4 mm"), L"25,4 mm");
    GalleryScreen::Press(VK_TAB, VK_SHIFT);
    EXPECT_TRUE(Waits([] { return Screen().Focus() == kFirstMeasure; }));
}

TEST_F(Gallery, SelectsThePlaceThatIsWrong)
{
    ASSERT_TRUE(Screen().GoTo(L"Measures"));
    Screen().Type(kFirstMeasure, L"40mm");
    GalleryScreen::Press(VK_RETURN);
    ASSERT_EQ(Screen().Await(kFirstMeasure, L"40 mm"), L"40 mm");
    Screen().Type(kFirstMeasure, L"3 + # mm");
    GalleryScreen::Press(VK_RETURN);
    ASSERT_TRUE(Waits([] { return !Screen().Text(kFirstMeasure + kFieldProblem).empty(); }));
    EXPECT_EQ(Screen().Text(kFirstMeasure + kFieldProblem).find(L"character 5: "), 0U);
    EXPECT_EQ(Screen().Send(kFirstMeasure, EM_GETSEL), MAKELPARAM(4, 8));
    EXPECT_EQ(Screen().Text(kFirstMeasure), L"3 + # mm") << "what was typed stays";
    GalleryScreen::Press(VK_ESCAPE);
    EXPECT_EQ(Screen().Await(kFirstMeasure, L"40 mm"), L"40 mm");
    EXPECT_EQ(Screen().Text(kFirstMeasure + kFieldProblem), L"");
}

struct KeyStep {
    WORD key;
    WORD with;
    const wchar_t* shown;
};

TEST_F(Gallery, StepsWithKeysAndArrows)
{
    constexpr KeyStep kSteps[] = {
        {VK_UP, 0, L"10,1 mm"},
        {VK_UP, VK_SHIFT, L"10,6 mm"},
        {VK_PRIOR, 0, L"11,6 mm"},
        {VK_DOWN, VK_CONTROL, L"10,6 mm"},
        {VK_DOWN, 0, L"10,5 mm"},
    };
    ASSERT_TRUE(Screen().GoTo(L"Measures"));
    Screen().Type(kFirstMeasure, L"10");
    for (const auto& [key, with, shown] : kSteps) {
        GalleryScreen::Press(key, with);
        EXPECT_EQ(Screen().Await(kFirstMeasure, shown), shown) << key << " with " << with;
    }
    // The upper one of the two arrows.
    Screen().Send(kFirstMeasure + kFieldSpin, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(4, 4));
    Screen().Send(kFirstMeasure + kFieldSpin, WM_LBUTTONUP, 0, MAKELPARAM(4, 4));
    EXPECT_EQ(Screen().Await(kFirstMeasure, L"10,6 mm"), L"10,6 mm");
}

TEST_F(Gallery, SlidesEachMappingInItsOwnWay)
{
    ASSERT_TRUE(Screen().GoTo(L"Sliders"));
    double values[kSliderCount] = {};
    for (int index = 0; index < kSliderCount; ++index) {
        const int bar = kFirstSlider + index * kSliderStride;
        ASSERT_TRUE(Screen().Click(bar)) << index;
        GalleryScreen::Press(VK_HOME);
        EXPECT_EQ(Screen().Await(bar + kSliderValue, L"1"), L"1") << index;
        for (int step = 0; step < 5; ++step)
            GalleryScreen::Press(VK_NEXT);
        ASSERT_TRUE(Waits([bar] { return Screen().Send(bar, TBM_GETPOS) == kSliderPositions / 2; })) << index;
        values[index] = std::stod(Screen().Text(bar + kSliderValue));
        GalleryScreen::Press(VK_END);
        EXPECT_EQ(Screen().Await(bar + kSliderValue, L"1.000"), L"1.000") << index;
    }
    EXPECT_NEAR(values[0], 500.5, 1.0);
    EXPECT_LT(values[1], values[0]) << "logarithmic: fine at the minimum";
    EXPECT_GT(values[2], values[0]) << "exponential: fine at the maximum";
    EXPECT_EQ(values[3], 100.0) << "the centre";
}

TEST_F(Gallery, TakesTypedValuesOfSlidersAndRefusesRangesThatAreNone)
{
    ASSERT_TRUE(Screen().GoTo(L"Sliders"));
    Screen().Type(kFirstSlider + kSliderValue, L"2*125");
    GalleryScreen::Press(VK_RETURN);
    EXPECT_EQ(Screen().Await(kFirstSlider + kSliderValue, L"250"), L"250");
    EXPECT_NEAR(static_cast<double>(Screen().Send(kFirstSlider, TBM_GETPOS)), 249.0, 1.0);
    Screen().Type(kSliderMaximum, L"0");
    GalleryScreen::Press(VK_RETURN);
    EXPECT_TRUE(Waits([] { return !Screen().Text(kSliderProblem).empty(); }));
    Screen().Type(kSliderMaximum, L"1000");
    GalleryScreen::Press(VK_RETURN);
    EXPECT_EQ(Screen().Await(kSliderProblem, L""), L"");
}

/// Width by height of the sheet in the picture, by its white pixels through the middle.
double SheetShape(HWND view)
{
    RECT room{};
    GetClientRect(view, &room);
    const HDC context = GetDC(view);
    int width = 0;
    int height = 0;
    for (int x = 0; x < room.right; ++x)
        width += GetPixel(context, x, room.bottom / 2) == GetSysColor(COLOR_WINDOW);
    for (int y = 0; y < room.bottom; ++y)
        height += GetPixel(context, room.right / 2, y) == GetSysColor(COLOR_WINDOW);
    ReleaseDC(view, context);
    return height > 0 ? static_cast<double>(width) / height : 0.0;
}

TEST_F(Gallery, ShowsAPaperWithItsSizeAndTurnsIt)
{
    ASSERT_TRUE(Screen().GoTo(L"Papers"));
    EXPECT_EQ(Screen().Text(kPaperSize), L"210 \u00D7 297 millimeters");
    EXPECT_TRUE(Waits([] { return std::abs(SheetShape(Screen().Control(kPaperView)) - 210.0 / 297.0) < 0.02; }));
    GalleryScreen::Press('T', VK_MENU);
    EXPECT_EQ(Screen().Await(kPaperSize, L"297 \u00D7 210 millimeters"), L"297 \u00D7 210 millimeters");
    EXPECT_TRUE(Waits([] { return std::abs(SheetShape(Screen().Control(kPaperView)) - 297.0 / 210.0) < 0.02; }));
    EXPECT_EQ(Screen().Text(kPaperScale), L"Drawn 1:5");
    GalleryScreen::Press('T', VK_MENU);
    EXPECT_EQ(Screen().Await(kPaperSize, L"210 \u00D7 297 millimeters"), L"210 \u00D7 297 millimeters");
    GalleryScreen::Press('P', VK_MENU);   // the picker
    EXPECT_TRUE(Waits([] { return Screen().Focus() == kPaperList; }));
    for (const WORD key : {VK_HOME, VK_END}) {
        GalleryScreen::Press(key);
        const LRESULT place = key == VK_HOME ? 0 : Screen().Send(kPaperList, CB_GETCOUNT) - 1;
        EXPECT_TRUE(Waits([place] { return Screen().Send(kPaperList, CB_GETCURSEL) == place; }));
        EXPECT_TRUE(Waits([] { return Screen().Text(kPaperList).ends_with(L" \u2013 " + Screen().Text(kPaperSize)); }));
    }
}

TEST_F(Gallery, TakesAScaleFromTheListAndFromTheKeyboard)
{
    ASSERT_TRUE(Screen().GoTo(L"Scales"));
    Screen().Type(kScaleText, L"1:25*4");
    GalleryScreen::Press(VK_RETURN);
    EXPECT_EQ(Screen().Await(kScaleLabel, L"1:100"), L"1:100");
    EXPECT_EQ(Screen().Text(kScalePage), L"50 mm") << "of five metres";
    Screen().Type(kScalePage, L"1cm");
    GalleryScreen::Press(VK_RETURN);
    EXPECT_EQ(Screen().Await(kScaleWorld, L"1 m"), L"1 m");
    Screen().Type(kScaleText, L"1:0");
    GalleryScreen::Press('A', VK_MENU);
    EXPECT_TRUE(Waits([] { return !Screen().Text(kScaleProblem).empty(); }));
    EXPECT_EQ(Screen().Text(kScaleLabel), L"1:100") << "the last one stays";
    ASSERT_TRUE(Screen().Click(kScaleList));
    GalleryScreen::Press(VK_END);
    EXPECT_TRUE(Waits([] { return Screen().Text(kScaleLabel) != L"1:100"; }));
}

TEST_F(Gallery, ShowsTasksAndCancelsThem)
{
    ASSERT_TRUE(Screen().GoTo(L"Tasks"));
    GalleryScreen::Press('L', VK_MENU);
    ASSERT_EQ(Screen().Await(kFirstTask, L"Long 1"), L"Long 1");
    EXPECT_TRUE(Waits([] { return Screen().Text(kFirstTask + kTaskStep) == L"Page 1: drawing"; }));
    EXPECT_GT(Screen().Send(kFirstTask + kTaskBar, PBM_GETPOS), 0);
    GalleryScreen::Press('S', VK_MENU);
    EXPECT_TRUE(Waits([] { return Screen().Text(kTaskCount) == L"1 task is running.   Last: Short 2: done"; }));
    GalleryScreen::Press('1', VK_MENU);
    EXPECT_TRUE(Waits([] { return Screen().Text(kTaskCount) == L"No task is running.   Last: Long 1: cancelled"; }));
    EXPECT_TRUE(Waits([] { return !Screen().IsShown(kFirstTask); }));
    GalleryScreen::Press('F', VK_MENU);
    EXPECT_TRUE(Waits([] {
        return Screen().Text(kTaskCount) == L"No task is running.   Last: Failing 3: failed, the disk is full";
    }));
    GalleryScreen::Press('L', VK_MENU);   // runs when the window is closed
}

TEST_F(Gallery, ListsFileLocations)
{
    constexpr int kLocations = 26;
    constexpr int kFills = 2;
    ASSERT_TRUE(Screen().GoTo(L"Locations"));
    ASSERT_EQ(Screen().Send(kLocationList, LVM_GETITEMCOUNT), kLocations);
    EXPECT_EQ(Screen().Cell(kLocationList, kFills, 0), L"Fills");
    EXPECT_EQ(Screen().Cell(kLocationList, kFills, 1), CFileLocations::GetFileLocationsFillsDir().Std());
    const std::wstring before = Screen().Text(kLocationFolder);
    EXPECT_EQ(before, Screen().Cell(kLocationList, 0, 1));
    GalleryScreen::Press(VK_DOWN);
    EXPECT_TRUE(Waits([&] { return Screen().Text(kLocationFolder) == Screen().Cell(kLocationList, 1, 1); }));
}

/// The row of the workspace that is marked as current; -1 for none.
int CurrentRow(const GalleryScreen& screen)
{
    const LRESULT count = screen.Send(kWorkspaceList, LVM_GETITEMCOUNT);
    for (int row = 0; row < count; ++row)
        if (!screen.Cell(kWorkspaceList, row, 0).empty())
            return row;
    return -1;
}

TEST_F(Gallery, SwitchesWorkspaces)
{
    ASSERT_TRUE(Screen().GoTo(L"Workspaces"));
    ASSERT_GE(Screen().Send(kWorkspaceList, LVM_GETITEMCOUNT), 4) << "those that the suite comes with";
    const int before = CurrentRow(Screen());
    ASSERT_GE(before, 0);
    ASSERT_TRUE(Waits([] { return Screen().Focus() == kWorkspaceList; }));
    const int after = before == 0 ? 1 : before - 1;
    GalleryScreen::Press(before == 0 ? VK_DOWN : VK_UP);
    GalleryScreen::Press(VK_RETURN);
    EXPECT_TRUE(Waits([after] { return CurrentRow(Screen()) == after; }));
    EXPECT_NE(Screen().Text(kWorkspaceTold).find(L"Told of changes: 2 times"), std::wstring::npos)
        << "before and after";
}

TEST_F(Gallery, MakesWorkspaces)
{
    ASSERT_TRUE(Screen().GoTo(L"Workspaces"));
    const LRESULT before = Screen().Send(kWorkspaceList, LVM_GETITEMCOUNT);
    Screen().Type(kWorkspaceName, L"mine");
    GalleryScreen::Press(VK_RETURN);
    EXPECT_TRUE(Waits([before] { return Screen().Send(kWorkspaceList, LVM_GETITEMCOUNT) == before + 1; }));
}

}   // namespace

// The gallery as its user has it: keys go in, texts come out.
#include "CFileLocations.h"
#include "GalleryScreen.h"

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
        {L"sin(30) m", L"500 mm"},
    };
    ASSERT_TRUE(Screen().GoTo(L"Measures"));
    for (const auto& [text, shown] : kTyped) {
        Screen().Type(kFirstMeasure, text);
        GalleryScreen::Press(VK_RETURN);
        EXPECT_EQ(Screen().Await(kFirstMeasure, shown), shown) << TvlString(text).c_str();
    }
}

TEST_F(Gallery, TabTakesTheTextAndGoesOn)
{
    ASSERT_TRUE(Screen().GoTo(L"Measures"));
    Screen().Type(kFirstMeasure, L"1in");
    GalleryScreen::Press(VK_TAB);
    EXPECT_EQ(Screen().Await(kFirstMeasure, L"25,4 mm"), L"25,4 mm");
    EXPECT_TRUE(Waits([] { return Screen().Focus() == kFirstMeasure + kMeasureUnit; }));
    GalleryScreen::Press(VK_DOWN);   // the list's next unit
    EXPECT_EQ(Screen().Await(kFirstMeasure, L"6 pc 0 pt"), L"6 pc 0 pt");
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

int ValueOf(int slider) { return std::stoi(Screen_Text(slider)); }

}   // namespace

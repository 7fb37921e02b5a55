// Boxes and owner windows on a system without windows.
#include "FatalError.h"
#include "TopMostOwnerWnd.h"
#include "siblings/TvlUtils/LogMessage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

TEST(FatalErrorWithoutWindows, IsALineOfTheLog)
{
    std::vector<std::wstring> lines;
    TvlUtils::SetLogReceiver([&lines](TvlUtils::LogLevel level, const TvlString& text) {
        if (level == TvlUtils::LogLevel::Error)
            lines.push_back(text.Std());
    });
    UIMSG_FatalError(1002, "ListMan.cpp", 717, L"Host %s", 0);
    TvlUtils::SetLogReceiver(nullptr);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_THAT(lines[0], testing::StartsWith(L"Host %s: error 1002 in LISTMAN, line 717: An error has occurred."));
}

TEST(TopMostOwnerWithoutWindows, IsThePreferredOwner)
{
    HWND const preferred = reinterpret_cast<HWND>(std::intptr_t{7});
    TvlUtl::TopMostOwnerWnd owner(preferred);
    EXPECT_EQ(owner.GetOwnerWnd(L"t"), preferred);
}

}   // namespace

// What the library hands to its siblings when it is loaded.
#include "FakeWindowing.h"
#include "siblings/TvlComponent/Application.h"
#include "siblings/TvlConfig/Dependencies.h"
#include "siblings/TvlFeatureManagement/Dependencies.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

struct Application : ITovelCmn_App {
    Application() { TvlComponent::SetAppInterface(this); }
    ~Application() override { TvlComponent::SetAppInterface(nullptr); }
    void ShowMessage(const wchar_t* text) override { messages.push_back(text); }

    std::vector<std::wstring> messages;
};

TEST(ModuleEntry, GivesMessagesToTheApplicationOrElseToABox)
{
    FakeWindowing windowing;
    const auto& show = FeatureManagement::GetTvlUtlDependencies().ShowMessage;
    show(L"alone");
    {
        Application application;
        show(L"together");
        EXPECT_THAT(application.messages, testing::ElementsAre(L"together"));
    }
    ASSERT_EQ(windowing.boxes.size(), 1u);
    EXPECT_EQ(windowing.boxes[0].text, L"alone");
    EXPECT_EQ(windowing.boxes[0].style, 0u);
}

TEST(ModuleEntry, SiblingsAreInertWithoutTheLibrary)
{
    TvlString text = L"unchanged";
    const TvlConfig::TvlUtlDependencies configuration;
    EXPECT_EQ(configuration.GetLanguagePath(text), 0);
    EXPECT_EQ(configuration.GetLanguageDirName(text), 0);
    EXPECT_FALSE(configuration.IsInternetUseAllowed());
    EXPECT_EQ(text, L"unchanged");
    FakeWindowing windowing;
    FeatureManagement::TvlUtlDependencies().ShowMessage(text);
    EXPECT_TRUE(windowing.boxes.empty());
}

}   // namespace

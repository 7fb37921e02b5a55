// The injected callables over answers that a test chooses.
#include "InjectedServices.h"
#include "siblings/TvlConfig/Dependencies.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;

std::vector<std::string> calls;
bool isNetworkInstall = false;
bool isDisabled = false;

class InjectedCallables : public testing::Test {
protected:
    InjectedCallables()
    {
        ExposeDynamicEntryPointsToOtherLibraries();
        calls.clear();
        InjectedServices services;
        services.getLanguage = [] { return calls.push_back("language"), 5; };
        services.getLanguagePath = [](TvlString& path) { return calls.push_back("path"), path = L"P", 7; };
        services.getLanguageDirName = [](TvlString& name) { return calls.push_back("folder"), name = L"N", 9; };
        services.isNetworkInstall = [] { return calls.push_back("network"), isNetworkInstall; };
        services.isInternetFeaturesDisabled = [] { return calls.push_back("disabled"), isDisabled; };
        TheInjectedServices() = services;
    }
    ~InjectedCallables() override { TheInjectedServices() = {}; }

    const TvlConfig::TvlUtlDependencies& m_callables = TvlConfig::GetDependencies();
};

TEST_F(InjectedCallables, ThePathRunsTheSelectionAndTheFolderNameDoesNot)
{
    TvlString text;
    EXPECT_EQ(m_callables.GetLanguagePath(text), 7);
    EXPECT_EQ(text, L"P");
    EXPECT_THAT(calls, ElementsAre("language", "path"));

    calls.clear();
    EXPECT_EQ(m_callables.GetLanguageDirName(text), 9);
    EXPECT_EQ(text, L"N");
    EXPECT_THAT(calls, ElementsAre("folder"));
}

TEST_F(InjectedCallables, OnlyANetworkInstallIsAskedWhetherInternetIsOff)
{
    struct Row {
        bool isNetworkInstall;
        bool isDisabled;
        bool isAllowed;
        std::vector<std::string> asked;
    };
    const Row kRows[] = {
        {false, false, true, {"network"}},
        {false, true, true, {"network"}},
        {true, false, true, {"network", "disabled"}},
        {true, true, false, {"network", "disabled"}},
    };
    for (const Row& row : kRows) {
        calls.clear();
        isNetworkInstall = row.isNetworkInstall;
        isDisabled = row.isDisabled;
        EXPECT_EQ(m_callables.IsInternetUseAllowed(), row.isAllowed);
        EXPECT_EQ(calls, row.asked);
    }
}

TEST_F(InjectedCallables, AreInertWithoutServices)
{
    TheInjectedServices() = {};
    TvlString text = L"unchanged";
    EXPECT_EQ(m_callables.GetLanguagePath(text), 0);
    EXPECT_EQ(m_callables.GetLanguageDirName(text), 0);
    EXPECT_TRUE(m_callables.IsInternetUseAllowed());
    EXPECT_EQ(text, L"unchanged");
}

}   // namespace

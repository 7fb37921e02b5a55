// Machine-wide switches.
#include "Policy.h"

#include "FakeEnvironment.h"
#include "MemoryRegistry.h"
#include "WUTLRegistry.h"

#include <gtest/gtest.h>

namespace {

constexpr const wchar_t* kProductKey = L"HKEY_LOCAL_MACHINE\\SOFTWARE\\Tovel\\Suite";

void Set(const wchar_t* name, const wchar_t* text)
{
    WUTLRegistry(kProductKey, WUTLRegistry::kWriteAccess, 1).SetValue(name, text);
}

struct Row {
    bool (*ask)();
    const wchar_t* name;
    const wchar_t* text;
    bool answer;
};

TEST(Policy, ReadsSwitchesAnewEachTime)
{
    const MemoryRegistry registry;
    constexpr Row kRows[] = {
        {TvlUtl::IsNetworkInstall, L"IsAdminPackage", L"1", true},
        {TvlUtl::IsNetworkInstall, L"IsAdminPackage", L"TRUE", true},
        {TvlUtl::IsNetworkInstall, L"IsAdminPackage", L"yes", false},
        {TvlUtl::IsMsgOptOutAtSetup, L"MessagesOpt", L"Disable", true},
        {TvlUtl::IsInternetFeaturesDisabled, L"InternetFeatures", L"OFF", true},
        {TvlUtl::IsOnlineAIFeaturesDisabled, L"GenAiFeatures", L"on", false},
        {TvlUtl::IsWelcomeBookOnline, L"welcomescreenonline", L"off", false},
        {TvlUtl::IsCorporateCloudFeaturesOn, L"CorporateCloudFeatures", L"whatever", true},
        {TvlUtl::IsTDAEnterpriseAccessEnabled, L"TDAEnterpriseAccess", L"enable", true},
    };
    for (const Row& row : kRows)
        EXPECT_FALSE(row.ask()) << row.name;   // nothing is set yet
    for (const auto& [ask, name, text, answer] : kRows) {
        Set(name, text);
        EXPECT_EQ(ask(), answer) << name;
    }
    EXPECT_EQ(TvlUtl::OfflineContentLocation(), L"");
}

TEST(Policy, RemembersTwoAnswersForTheLifeOfTheProcess)
{
    const MemoryRegistry registry;
    EXPECT_TRUE(TvlUtl::IsUserAllowedToUseOnlineAI());
    Set(L"GenAiFeatures", L"off");
    EXPECT_TRUE(TvlUtl::IsOnlineAIFeaturesDisabled());
    EXPECT_TRUE(TvlUtl::IsUserAllowedToUseOnlineAI()) << "until the next start";

    const bool isSandboxed = TvlUtl::IsAppStoreApp();
    FakeEnvironment environment;
    environment.isSandboxed = !isSandboxed;
    EXPECT_EQ(TvlUtl::IsAppStoreApp(), isSandboxed);
}

class Offline : public TvlUtl::INetworkManager {
public:
    bool IsConnectedToInternet() override { return connected; }
    bool IsCloudAllowed() override { return true; }
    bool connected = true;
};

TEST(Policy, SwitchesTheNetworkOffOnAnAdministratorsInstallationAlone)
{
    const MemoryRegistry registry;
    Offline network;
    TvlUtl::SetNetworkManagerForTests(&network);
    Set(L"InternetFeatures", L"off");
    EXPECT_TRUE(TvlUtl::IsOnline());
    EXPECT_TRUE(TvlUtl::IsUserAllowedToUseInternet());
    Set(L"IsAdminPackage", L"1");
    EXPECT_FALSE(TvlUtl::IsOnline());
    EXPECT_FALSE(TvlUtl::IsUserAllowedToUseInternet());
    Set(L"InternetFeatures", L"on");
    EXPECT_TRUE(TvlUtl::IsOnline());
    network.connected = false;
    EXPECT_FALSE(TvlUtl::IsOnline());
    EXPECT_TRUE(TvlUtl::IsCloudAllowed());
    TvlUtl::SetNetworkManagerForTests(nullptr);
    EXPECT_NE(&TvlUtl::GetNetworkManager(), &network);
}

}   // namespace

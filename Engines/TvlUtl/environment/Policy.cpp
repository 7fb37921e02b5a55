#include "Policy.h"

#include "UnitTestProcess.h"
#include "WUTLRegistry.h"
#include "siblings/TvlConfig/ProductKey.h"
#include "siblings/TvlUtils/AppUtils.h"
#include "windows/Internet.h"

#include <optional>

namespace TvlUtl {

namespace {
std::optional<TvlString> ReadText(const TvlString& path, const wchar_t* name)
{
    WUTLRegistry key(path.c_str(), WUTLRegistry::kReadAccess);
    TvlString text;
    if (key.IsValid() != 0 || key.GetValue(name, text) != 0)
        return std::nullopt;
    return text;
}

std::optional<TvlString> ReadSwitch(const wchar_t* name)
{
    return ReadText(TvlString(L"HKEY_LOCAL_MACHINE\\") + INIGetRegistryProductKey(), name);
}

bool SwitchIs(const wchar_t* name, const wchar_t* word)
{
    const auto value = ReadSwitch(name);
    return value && value->CompareNoCase(word) == 0;
}

bool SwitchDiffers(const wchar_t* name, const wchar_t* word)
{
    const auto value = ReadSwitch(name);
    return value && value->CompareNoCase(word) != 0;
}
}   // namespace

bool IsNetworkInstall()
{
    const auto value = ReadSwitch(L"IsAdminPackage");
    return value && (*value == L"1" || value->CompareNoCase(L"true") == 0);
}

bool IsMsgOptOutAtSetup() { return SwitchIs(L"MessagesOpt", L"disable"); }
bool IsInternetFeaturesDisabled() { return SwitchIs(L"InternetFeatures", L"off"); }
bool IsOnlineAIFeaturesDisabled() { return SwitchIs(L"GenAiFeatures", L"off"); }
bool IsWelcomeBookOnline() { return SwitchDiffers(L"welcomescreenonline", L"off"); }
bool IsCorporateCloudFeaturesOn() { return SwitchDiffers(L"CorporateCloudFeatures", L"off"); }
bool IsTDAEnterpriseAccessEnabled() { return SwitchIs(L"TDAEnterpriseAccess", L"enable"); }

TvlString OfflineContentLocation()
{
    return ReadText(L"HKEY_LOCAL_MACHINE\\Software\\Tovel\\Media\\Tovel Content", L"Path").value_or(TvlString());
}

bool IsUserAllowedToUseInternet() { return !(IsNetworkInstall() && IsInternetFeaturesDisabled()); }

bool IsUserAllowedToUseOnlineAI()
{
    static const bool allowed = !IsOnlineAIFeaturesDisabled();
    return allowed;
}

bool IsAppStoreApp()
{
    static const bool sandboxed = TvlUtils::AppUtils::IsSandboxedApp();
    return sandboxed;
}

namespace {
class NetworkManager final : public INetworkManager {
public:
    bool IsConnectedToInternet() override { return !IsUnitTestProcess() && Ports::Internet::Get().IsConnected(); }
    bool IsCloudAllowed() override { return !IsUnitTestProcess() && !TvlUtils::AppUtils::IsSandboxedApp(); }
};

INetworkManager* managerForTests = nullptr;
}   // namespace

INetworkManager& GetNetworkManager()
{
    static NetworkManager manager;
    return managerForTests ? *managerForTests : manager;
}

void SetNetworkManagerForTests(INetworkManager* manager) { managerForTests = manager; }
bool IsConnectedToInternet() { return GetNetworkManager().IsConnectedToInternet(); }
bool IsCloudAllowed() { return GetNetworkManager().IsCloudAllowed(); }
bool IsOnline() { return IsUserAllowedToUseInternet() && IsConnectedToInternet(); }

}   // namespace TvlUtl

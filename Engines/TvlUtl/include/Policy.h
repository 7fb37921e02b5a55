// What the administrator switched off for the machine, and whether the machine is online.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlPlatform/TvlString.h"

/// What the library offers by names of its own; plain exports and the older classes stand outside.
namespace TvlUtl {

// Machine-wide switches: text values of the product key under HKEY_LOCAL_MACHINE, read anew by every call. Words
// compare without case. A switch that can't be read is false.

/// "IsAdminPackage" is "1" or "true": the installation came from an administrator's package.
TVLUTL_API bool IsNetworkInstall();
/// "MessagesOpt" is "disable".
TVLUTL_API bool IsMsgOptOutAtSetup();
/// "InternetFeatures" is "off". It takes effect only where IsNetworkInstall is true.
TVLUTL_API bool IsInternetFeaturesDisabled();
/// "GenAiFeatures" is "off".
TVLUTL_API bool IsOnlineAIFeaturesDisabled();
/// "welcomescreenonline" is there and not "off".
TVLUTL_API bool IsWelcomeBookOnline();
/// "CorporateCloudFeatures" is there and not "off".
TVLUTL_API bool IsCorporateCloudFeaturesOn();
/// "TDAEnterpriseAccess" is "enable".
TVLUTL_API bool IsTDAEnterpriseAccessEnabled();

/// Folder of content installed for use without a network; empty when there is none.
TVLUTL_API TvlString OfflineContentLocation();

/// False only where IsNetworkInstall and IsInternetFeaturesDisabled are both true.
TVLUTL_API bool IsUserAllowedToUseInternet();
/// Not IsOnlineAIFeaturesDisabled, as the first call found it: a later change acts from the next start on.
/// For the user interface thread.
TVLUTL_API bool IsUserAllowedToUseOnlineAI();
/// Whether the process runs in the sandbox of an application store. For the user interface thread.
TVLUTL_API bool IsAppStoreApp();

/// Answers for the network. Slot order is part of the interface.
class INetworkManager {
public:
    /// Whether the machine reaches the internet now.
    virtual bool IsConnectedToInternet() = 0;
    /// Whether documents of the cloud may be used.
    virtual bool IsCloudAllowed() = 0;

protected:
    ~INetworkManager() = default;
};

/// The override that is set, else the machine's own: connected as the system tells, cloud allowed outside a sandbox,
/// both false in a unit test process.
TVLUTL_API INetworkManager& GetNetworkManager();
/// Replaces the answers; null restores the machine's own. The caller keeps ownership.
TVLUTL_API void SetNetworkManagerForTests(INetworkManager* manager);

/// @{
/// What GetNetworkManager answers.
TVLUTL_API bool IsConnectedToInternet();
TVLUTL_API bool IsCloudAllowed();
/// @}
/// False where the policy switches the network off (IsUserAllowedToUseInternet), else IsConnectedToInternet.
TVLUTL_API bool IsOnline();

}   // namespace TvlUtl

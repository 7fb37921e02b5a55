#include "InjectedServices.h"

#include "siblings/TvlComponent/Application.h"
#include "siblings/TvlConfig/Dependencies.h"
#include "siblings/TvlFeatureManagement/Dependencies.h"
#include "windows/Windowing.h"

namespace {
void ShowMessage(const TvlString& text)
{
    if (TvlComponent::GetAppInterface())
        TvlComponent::MessageMgr::ShowMessage(text.c_str());
    else
        Ports::Windowing::Get().ShowBox(nullptr, text.Std(), GetAppSkinSettingData().GetAppUIName().Std(), 0);
}

int GetLanguagePath(TvlString& path)
{
    // The language is asked for first, which runs its selection.
    TheInjectedServices().getLanguage();
    return TheInjectedServices().getLanguagePath(path);
}

bool IsInternetUseAllowed()
{
    const InjectedServices& services = TheInjectedServices();
    return !(services.isNetworkInstall() && services.isInternetFeaturesDisabled());
}

int GetLanguageDirName(TvlString& name) { return TheInjectedServices().getLanguageDirName(name); }
}   // namespace

InjectedServices& TheInjectedServices()
{
    static InjectedServices services;
    return services;
}

void ExposeDynamicEntryPointsToOtherLibraries()
{
    FeatureManagement::TvlUtlDependencies features;
    features.ShowMessage = ShowMessage;
    FeatureManagement::InjectTvlUtlDependencies(features);

    TvlConfig::TvlUtlDependencies configuration;
    configuration.GetLanguagePath = GetLanguagePath;
    configuration.IsInternetUseAllowed = IsInternetUseAllowed;
    configuration.GetLanguageDirName = GetLanguageDirName;
    TvlConfig::InjectDependencies(configuration);
}

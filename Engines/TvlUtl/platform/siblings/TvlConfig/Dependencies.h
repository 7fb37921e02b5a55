// What the configuration calls in the library: callables that the library injects when it is loaded.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlUtils/Callables.h"

#include <functional>

namespace TvlConfig {

/// Callables of the library. The defaults answer while it has injected none.
struct TvlUtlDependencies {
    /// IGLB_UILanguage::GetLanguagePath.
    std::function<int(TvlString&)> GetLanguagePath = TvlUtils::always_return_t<int>{0};
    /// TvlUtl::IsUserAllowedToUseInternet.
    std::function<bool()> IsInternetUseAllowed = TvlUtils::always_return_t<bool>{false};
    /// IGLB_UILanguage::GetLanguageDirName.
    std::function<int(TvlString&)> GetLanguageDirName = TvlUtils::always_return_t<int>{0};
};

/// Puts the callables in place of those injected before. For the load of the library, before another thread asks.
TVLSIBLINGS_API void InjectDependencies(TvlUtlDependencies dependencies);
/// What was injected last; inert callables before.
TVLSIBLINGS_API const TvlUtlDependencies& GetDependencies();

}   // namespace TvlConfig

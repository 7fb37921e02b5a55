// What the configuration calls in the library: callables that the library injects when it is loaded.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlUtils/Callables.h"

#include <functional>

namespace TvlConfig {

struct TvlUtlDependencies {
    std::function<int(TvlString&)> GetLanguagePath = TvlUtils::always_return_t<int>{0};
    std::function<bool()> IsInternetUseAllowed = TvlUtils::always_return_t<bool>{false};
    std::function<int(TvlString&)> GetLanguageDirName = TvlUtils::always_return_t<int>{0};
};

TVLSIBLINGS_API void InjectDependencies(TvlUtlDependencies dependencies);
/// What was injected last; inert callables before.
TVLSIBLINGS_API const TvlUtlDependencies& GetDependencies();

}   // namespace TvlConfig

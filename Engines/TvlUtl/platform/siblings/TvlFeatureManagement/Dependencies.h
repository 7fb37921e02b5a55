// What feature management calls in the library: callables that the library injects when it is loaded.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlUtils/Callables.h"

#include <functional>

namespace FeatureManagement {

struct TvlUtlDependencies {
    std::function<void(const TvlString&)> ShowMessage = TvlUtils::do_nothing_t();
};

TVLSIBLINGS_API void InjectTvlUtlDependencies(TvlUtlDependencies dependencies);
/// What was injected last; inert callables before.
TVLSIBLINGS_API const TvlUtlDependencies& GetTvlUtlDependencies();

}   // namespace FeatureManagement

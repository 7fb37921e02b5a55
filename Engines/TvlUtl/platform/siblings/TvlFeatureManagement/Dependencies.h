// What feature management calls in the library: callables that the library injects when it is loaded.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlUtils/Callables.h"

#include <functional>

namespace FeatureManagement {

/// Callables of the library. The defaults answer while it has injected none.
struct TvlUtlDependencies {
    /// Shows a text to the user and waits until it is read.
    std::function<void(const TvlString&)> ShowMessage = TvlUtils::do_nothing_t();
};

/// Puts the callables in place of those injected before. For the load of the library, before another thread asks.
TVLSIBLINGS_API void InjectTvlUtlDependencies(TvlUtlDependencies dependencies);
/// What was injected last; inert callables before.
TVLSIBLINGS_API const TvlUtlDependencies& GetTvlUtlDependencies();

}   // namespace FeatureManagement

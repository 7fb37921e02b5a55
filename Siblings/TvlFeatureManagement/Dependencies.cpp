#include "siblings/TvlFeatureManagement/Dependencies.h"

#include <utility>

namespace FeatureManagement {

namespace {
TvlUtlDependencies& Injected()
{
    static TvlUtlDependencies injected;
    return injected;
}
}   // namespace

void InjectTvlUtlDependencies(TvlUtlDependencies dependencies) { Injected() = std::move(dependencies); }
const TvlUtlDependencies& GetTvlUtlDependencies() { return Injected(); }

}   // namespace FeatureManagement

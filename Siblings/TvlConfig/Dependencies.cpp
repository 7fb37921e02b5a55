#include "siblings/TvlConfig/Dependencies.h"

#include <utility>

namespace TvlConfig {

namespace {
TvlUtlDependencies& Injected()
{
    static TvlUtlDependencies injected;
    return injected;
}
}   // namespace

void InjectDependencies(TvlUtlDependencies dependencies) { Injected() = std::move(dependencies); }
const TvlUtlDependencies& GetDependencies() { return Injected(); }

}   // namespace TvlConfig

#include "siblings/TvlUtils/AppUtils.h"

#include "windows/Environment.h"

namespace TvlUtils::AppUtils {

bool IsSandboxedApp() { return Ports::Environment::Get().IsSandboxed(); }

}   // namespace TvlUtils::AppUtils

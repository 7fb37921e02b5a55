#include "TvlPref/SystemRegistry.h"

#include <atomic>

namespace PREFUTILS {

namespace {
std::atomic<IRegistry*> replacement = nullptr;
}

IRegistry& IRegistry::GetInstance()
{
    IRegistry* const replaced = replacement.load(std::memory_order_acquire);
    return replaced ? *replaced : SystemRegistry();
}

void IRegistry::SetForTests(IRegistry* registry) { replacement.store(registry, std::memory_order_release); }

}   // namespace PREFUTILS

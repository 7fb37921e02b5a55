#include "TvlPref/SystemRegistry.h"

#include <atomic>
#include <utility>

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

RegistryBatch::RegistryBatch(IRegistry& registry)
    : m_registry(registry), m_begun(registry.BeginBatch()), m_isOpen(m_begun == kRegistryOk)
{
}

RegistryBatch::~RegistryBatch()
{
    if (m_isOpen)
        m_registry.EndBatch(false);
}

LONG RegistryBatch::Commit() { return std::exchange(m_isOpen, false) ? m_registry.EndBatch(true) : m_begun; }

}   // namespace PREFUTILS

// A registry in memory in the process-wide one's place, for the time of a test: nothing of the machine is touched.
#pragma once

#include "siblings/TvlPref/StoredRegistry.h"

namespace TvlTestKit {

/// Empty at first, gone with its object. One at a time.
class MemoryRegistry {
public:
    /// Puts the empty registry in place of the process-wide one.
    MemoryRegistry() { PREFUTILS::IRegistry::SetForTests(&m_registry); }
    ~MemoryRegistry() { PREFUTILS::IRegistry::SetForTests(nullptr); }
    MemoryRegistry(const MemoryRegistry&) = delete;
    MemoryRegistry& operator=(const MemoryRegistry&) = delete;

    /// Keys that are open, for tests that look for leaks.
    std::size_t OpenKeys() const { return m_registry.OpenKeys(); }

private:
    PREFUTILS::StoredRegistry m_registry{PREFUTILS::MakeMemoryStore()};
};

}   // namespace TvlTestKit

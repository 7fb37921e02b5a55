// The time of day, and how long something takes.
#pragma once

#include "siblings/SiblingsApi.h"

#include <chrono>

namespace Ports {

/// Asks the machine's clocks.
class TVLSIBLINGS_API Clock {
public:
    /// The system's, or the one that stands in for it.
    static Clock& Get();
    /// Replaces the port; null restores the system's. The caller keeps ownership.
    static void SetForTests(Clock*);

    virtual ~Clock() = default;
    /// The time of day in UTC. Users and networks set it: it may jump, and go back.
    virtual std::chrono::sys_time<std::chrono::nanoseconds> Now() const = 0;
    /// The time since a point that stays as long as the process lives. Never goes back.
    virtual std::chrono::nanoseconds Elapsed() const = 0;
};

}   // namespace Ports

// The machine's clocks, by the standard library.
#include "Windows/SystemPorts.h"

namespace Ports {

namespace {
class MachineClock final : public Clock {
public:
    std::chrono::sys_time<std::chrono::nanoseconds> Now() const override { return std::chrono::system_clock::now(); }
    std::chrono::nanoseconds Elapsed() const override { return std::chrono::steady_clock::now().time_since_epoch(); }
};
}   // namespace

template <>
Clock& SystemPort<Clock>()
{
    static MachineClock clock;
    return clock;
}

}   // namespace Ports

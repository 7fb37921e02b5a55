// Which implementation of a port is in use: the system's, or one that a test put in its place.
#include "Windows/SystemPorts.h"

#include <atomic>

namespace Ports {

namespace {
template <class Port>
std::atomic<Port*> replacement = nullptr;

template <class Port>
Port& Current()
{
    Port* const replaced = replacement<Port>.load(std::memory_order_acquire);
    return replaced ? *replaced : SystemPort<Port>();
}
}   // namespace

// The two forms that every port has.
#define TVL_PORT(Port)                                                                                                 \
    Port& Port::Get() { return Current<Port>(); }                                                                      \
    void Port::SetForTests(Port* port) { replacement<Port>.store(port, std::memory_order_release); }

TVL_PORT(Clock)
TVL_PORT(Debug)
TVL_PORT(Dialogs)
TVL_PORT(Environment)
TVL_PORT(Internet)
TVL_PORT(Keyboard)
TVL_PORT(Locale)
TVL_PORT(ManagedRuntimes)
TVL_PORT(Modules)
TVL_PORT(NamedObjects)
TVL_PORT(Processor)
TVL_PORT(ProfileFiles)
TVL_PORT(Shell)
TVL_PORT(Sound)
TVL_PORT(Terminal)
TVL_PORT(UserFolders)
TVL_PORT(Users)
TVL_PORT(Windowing)

}   // namespace Ports

// The keys that give a click or a command another meaning.
#pragma once

#include "siblings/SiblingsApi.h"

#include <memory>

/// What controls of the user interface ask for.
namespace Framework::UI {

/// What keys are down while a message is handled. For the user interface thread.
class IKeyContext {
public:
    virtual ~IKeyContext() = default;
    /// @{
    /// Whether either key of the pair is down.
    virtual bool IsShiftDown() const = 0;
    virtual bool IsControlDown() const = 0;
    virtual bool IsAltDown() const = 0;
    /// @}
    /// Whether the key of a Windows virtual-key code is down.
    virtual bool IsKeyDown(int virtualKey) const = 0;
};

/// What stands behind the interfaces on one system.
namespace Win32Detail {

/// A context over the keyboard of the machine.
TVLSIBLINGS_API std::unique_ptr<IKeyContext> CreateKeyContext();

}   // namespace Win32Detail

}   // namespace Framework::UI

// Objects that tell listeners of their changes.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <vector>

/// Is told of a broadcaster's changes.
class IListener {
public:
    /// @param subject what has changed, in the broadcaster's words
    virtual void Update(const TvlString& subject) = 0;

protected:
    ~IListener() = default;
};

/// Keeps listeners, which it does not own, and tells them of changes on the caller's thread. Slot order is part of the
/// interface.
class TVLSIBLINGS_API IBroadcaster {
public:
    /// A listener that is added twice is told once.
    virtual void AddListener(IListener* listener);
    /// The listener is told no more, from now on. One that was not added is ignored.
    virtual void RemoveListener(IListener* listener);
    /// Whether anybody would be told.
    virtual bool HasListeners() const;
    /// Tells each listener that is there when its turn comes. Listeners may add and remove listeners meanwhile.
    virtual void UpdateListeners(const TvlString& subject);

protected:
    ~IBroadcaster() = default;

private:
    std::vector<IListener*> m_listeners;
};

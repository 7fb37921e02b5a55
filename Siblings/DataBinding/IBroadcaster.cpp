#include "siblings/DataBinding/IBroadcaster.h"

#include <algorithm>

void IBroadcaster::AddListener(IListener* listener)
{
    if (listener && std::find(m_listeners.begin(), m_listeners.end(), listener) == m_listeners.end())
        m_listeners.push_back(listener);
}

void IBroadcaster::RemoveListener(IListener* listener) { std::erase(m_listeners, listener); }
bool IBroadcaster::HasListeners() const { return !m_listeners.empty(); }

void IBroadcaster::UpdateListeners(const TvlString& subject)
{
    for (IListener* const listener : std::vector(m_listeners))
        if (std::find(m_listeners.begin(), m_listeners.end(), listener) != m_listeners.end())
            listener->Update(subject);
}

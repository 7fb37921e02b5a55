#include "siblings/TvlPref/PrefManager.h"

#include <algorithm>
#include <utility>

// Never destroyed: preferences leave while modules go away, in an order of their own.
CAppPrefManager& CAppPrefManager::GetInstance()
{
    static CAppPrefManager& manager = *new CAppPrefManager;
    return manager;
}

CAppPrefManager& CBoxPrefManager::GetInstance() { return CAppPrefManager::GetInstance(); }

void CAppPrefManager::Register(CPrefObjectBase& object)
{
    const std::lock_guard hold(m_lock);
    m_objects.push_back(&object);
    object.m_store = m_store;
}

void CAppPrefManager::Unregister(CPrefObjectBase& object)
{
    const std::lock_guard hold(m_lock);
    std::erase(m_objects, &object);
    object.m_store = nullptr;
}

CPrefObjectBase* CAppPrefManager::Find(const TvlString& name) const
{
    const std::lock_guard hold(m_lock);
    const auto found = std::find_if(
        m_objects.begin(), m_objects.end(), [&](const CPrefObjectBase* object) { return object->GetName() == name; });
    return found == m_objects.end() ? nullptr : *found;
}

IPrefStore* CAppPrefManager::AttachStore(IPrefStore* store)
{
    const std::lock_guard hold(m_lock);
    for (CPrefObjectBase* const object : m_objects)
        object->m_store = store;
    return std::exchange(m_store, store);
}

IPrefStore* CAppPrefManager::GetStore() const
{
    const std::lock_guard hold(m_lock);
    return m_store;
}

int CAppPrefManager::AddListener(Listener listener)
{
    const std::lock_guard hold(m_lock);
    m_listeners.emplace_back(++m_lastListener, std::move(listener));
    return m_lastListener;
}

void CAppPrefManager::RemoveListener(int number)
{
    const std::lock_guard hold(m_lock);
    std::erase_if(m_listeners, [&](const auto& listener) { return listener.first == number; });
}

void CAppPrefManager::NotifyChanged(const CPrefObjectBase& object)
{
    // Copied, since listeners may read, change and listen themselves.
    std::vector<std::pair<int, Listener>> listeners;
    {
        const std::lock_guard hold(m_lock);
        listeners = m_listeners;
    }
    for (const auto& [number, listener] : listeners)
        listener(object);
}

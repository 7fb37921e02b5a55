// The managers of preferences: who is registered, and where values are kept.
#pragma once

#include "siblings/TvlPref/PrefStore.h"
#include "siblings/TvlPref/RegistryPrefStore.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

/// What a preference is to its manager.
class TVLSIBLINGS_API CPrefObjectBase {
public:
    /// @param name group, slash and key
    explicit CPrefObjectBase(const wchar_t* name) : m_name(name) { }
    CPrefObjectBase(const CPrefObjectBase&) = delete;
    CPrefObjectBase& operator=(const CPrefObjectBase&) = delete;

    /// Group, slash and key.
    const TvlString& GetName() const { return m_name; }

protected:
    ~CPrefObjectBase() = default;
    /// The store that the manager has attached, or null.
    IPrefStore* Store() const { return m_store.load(std::memory_order_acquire); }

private:
    friend class CAppPrefManager;

    const TvlString m_name;
    std::atomic<IPrefStore*> m_store = nullptr;
};

/// Keeps the registered preferences and attaches their store to them: the registry, until AttachStore names another.
/// Preferences register during the static initialisation of their modules and leave when those go away. Safe to call
/// from any thread; the store is changed while no preference is in use.
class TVLSIBLINGS_API CAppPrefManager {
public:
    /// The manager of the process.
    static CAppPrefManager& GetInstance();

    /// Adds a preference, which must live until Unregister, and attaches the store to it.
    void Register(CPrefObjectBase& object);
    /// Takes a preference out again; one that is not registered is ignored.
    void Unregister(CPrefObjectBase& object);
    /// The first registered preference of a name, or null.
    CPrefObjectBase* Find(const TvlString& name) const;

    /// Attaches a store to all preferences, present and future; null detaches, so that they have their defaults. The
    /// caller keeps ownership. Returns the one that was attached before.
    IPrefStore* AttachStore(IPrefStore* store);
    /// The attached store, or null.
    IPrefStore* GetStore() const;

    /// Is called with each preference that CPrefObject::Change has changed, on the thread that changed it.
    using Listener = std::function<void(const CPrefObjectBase&)>;
    /// Returns a number for RemoveListener.
    int AddListener(Listener listener);
    /// A call that is under way on another thread may still come to its end.
    void RemoveListener(int number);
    /// Tells the listeners that a preference has changed.
    void NotifyChanged(const CPrefObjectBase& object);

private:
    CAppPrefManager() = default;

    mutable std::mutex m_lock;
    std::vector<CPrefObjectBase*> m_objects;   // in the order of registration
    RegistryPrefStore m_registry;
    IPrefStore* m_store = &m_registry;
    std::vector<std::pair<int, Listener>> m_listeners;
    int m_lastListener = 0;
};

/// Names the manager for the preferences that all applications of the box share.
class TVLSIBLINGS_API CBoxPrefManager {
public:
    /// The same object as CAppPrefManager's: the values of both stand in one store.
    static CAppPrefManager& GetInstance();
};

// One object of a type in the whole process, made on first use.
#pragma once

#include "siblings/TvlUtils/SingletonLibrary.h"

#include <atomic>
#include <cstdlib>
#include <memory>
#include <typeindex>

namespace TvlUtils {

/// Base of a class that has one object. `Flag` is stored in the process-wide entry. The object lives until it is
/// released, or until the module that made it goes away. Getting an object that lives takes no lock; any thread may.
template <class T, int Flag>
class Singleton {
public:
    struct SingletonData {
        std::atomic<T*> instance = nullptr;   // the live object, or null
        bool released = false;   // set by ReleaseInstance(true), and when the block is destroyed; never asked here
        ThreadLock lock;         // guards creation and release
    };

    /// The object, made when there is none.
    static T& GetInstance()
    {
        SingletonData& data = *GetSingletonData(true);
        CreateSingletonData(data);
        return *data.instance;
    }

    /// Whether an object lives. Makes none.
    static bool HasInstance()
    {
        const SingletonData* const data = GetSingletonData(false);
        return data && data->instance;
    }

    /// Deletes the object. A later GetInstance makes a new one, after a permanent release too: callers rely on it.
    static void ReleaseInstance(bool permanent)
    {
        SingletonData* const data = GetSingletonData(false);
        if (!data)
            return;
        const WriteLock hold(data->lock);
        DeleteInstance(data->instance.exchange(nullptr));
        if (permanent)
            data->released = true;
    }

    /// Puts StaticFinalizer on the module's exit list.
    static void RegisterFinalizer() { std::atexit(&StaticFinalizer); }

    /// Tears down what this module made. Its address is the module's identity.
    static void StaticFinalizer() { SingletonLibrary::NotifySingletonModuleUnloaded(FinalizerKey()); }

protected:
    Singleton() = default;
    static T* CreateInstance() { return new T; }
    static void DeleteInstance(T* instance) { delete instance; }

private:
    static unsigned long long FinalizerKey() { return reinterpret_cast<unsigned long long>(&StaticFinalizer); }

    static SingletonData* GetSingletonData(bool create)
    {
        static std::atomic<SingletonLibrary*> g_pEntry = nullptr;
        static const std::unique_ptr<basic_safe_function<void()>, void (*)(basic_safe_function<void()>*)> resetEntry(
            new basic_safe_function<void()>([] { g_pEntry.exchange(nullptr); }), &EndReset);
        SingletonLibrary* entry = g_pEntry.load(std::memory_order_acquire);
        if (!entry) {
            entry = SingletonLibrary::GetEntryForType(typeid(T), &FillEntry, create, resetEntry.get());
            g_pEntry.exchange(entry);
        }
        return entry ? static_cast<SingletonData*>(entry->data) : nullptr;
    }

    /// At the module's end: the cached entry is cleared, and the register forgets the callable.
    static void EndReset(basic_safe_function<void()>* reset)
    {
        if (*reset)
            (*reset)();
        SingletonLibrary::RemoveCallback(typeid(T), reinterpret_cast<unsigned long long>(reset));
        delete reset;
    }

    static void FillEntry(SingletonLibrary& entry, bool create)
    {
        const WriteLock hold(entry.lock);
        if (!create || entry.data)
            return;
        auto* const data = new SingletonData;
        entry.finalizerKey = FinalizerKey();
        entry.flag = Flag != 0;
        entry.data = data;
        entry.deleter = &DeleteData;
        CreateSingletonData(*data);
    }

    static void CreateSingletonData(SingletonData& data)
    {
        if (data.instance)
            return;
        const WriteLock hold(data.lock);
        if (data.instance)
            return;
        T* const older = data.instance.exchange(CreateInstance());
        DeleteInstance(older);
        RegisterFinalizer();
    }

    static void DeleteData(void* block)
    {
        auto* const data = static_cast<SingletonData*>(block);
        if (!data)
            return;
        data->released = true;
        // The lock goes before the object, whose destructor may not come back here.
        data->lock.~ThreadLock();
        DeleteInstance(data->instance.exchange(nullptr));
        ::operator delete(data);
    }
};

}   // namespace TvlUtils

// One object of a type in the whole process, made on first use.
#pragma once

#include "siblings/TvlUtils/SingletonLibrary.h"

#include <atomic>
#include <cstdlib>
#include <memory>
#include <new>
#include <typeindex>

namespace TvlUtils {

/// Base of a class that has one object, whichever modules of the process ask for it. `Flag`, 0 or 1, is stored in the
/// process-wide entry. The object lives until it is released, or until the module that made it goes away. Any thread
/// may call; getting an object that lives takes no lock.
///
/// A class that other modules name has its instantiation exported by the module that it belongs to. Its header says so
/// before the class, and one source file makes the members:
///
///     class CpuID;
///     extern template class TVLUTL_API TvlUtils::Singleton<CpuID, 0>;
///     class TVLUTL_API CpuID : public TvlUtils::Singleton<CpuID, 0> { ... };
///
///     template class TvlUtils::Singleton<CpuID, 0>;   // in the source file
///
/// Members are defined outside the class for this: inline ones would be made anew in every module.
template <class T, int Flag>
class Singleton {
    static_assert(Flag == 0 || Flag == 1);

public:
    /// What the process-wide entry points to.
    struct SingletonData {
        std::atomic<T*> instance = nullptr;   // the live object, or null
        bool released = false;   // set by ReleaseInstance(true), and when the block is destroyed; never asked here
        ThreadLock lock;         // guards creation and release
    };

    /// The object, made when there is none.
    static T& GetInstance();
    /// Whether an object lives. Makes none.
    static bool HasInstance();
    /// Deletes the object. A later GetInstance makes a new one, after a permanent release too: callers rely on it.
    static void ReleaseInstance(bool permanent);
    /// Puts StaticFinalizer on the module's exit list.
    static void RegisterFinalizer();
    /// Tears down what this module made. Its address is the module's identity.
    static void StaticFinalizer();

protected:
    /// For the derived class alone.
    Singleton();
    /// Makes the object.
    static T* CreateInstance();
    /// Deletes an object; null is ignored.
    static void DeleteInstance(T* instance);

private:
    using Reset = basic_safe_function<void()>;

    /// The end of a module's reset callable: the cached entry is cleared, and the register forgets the callable.
    struct EndReset {
        void operator()(Reset* reset) const
        {
            if (*reset)
                (*reset)();
            SingletonLibrary::RemoveCallback(typeid(T), reinterpret_cast<unsigned long long>(reset));
            delete reset;
        }
    };

    static SingletonData* GetSingletonData(bool create);
    static void CreateSingletonData(SingletonData& data);
};

template <class T, int Flag>
Singleton<T, Flag>::Singleton() = default;

template <class T, int Flag>
T& Singleton<T, Flag>::GetInstance()
{
    SingletonData& data = *GetSingletonData(true);
    CreateSingletonData(data);
    return *data.instance.load(std::memory_order_acquire);
}

template <class T, int Flag>
bool Singleton<T, Flag>::HasInstance()
{
    const SingletonData* const data = GetSingletonData(false);
    return data && data->instance;
}

template <class T, int Flag>
void Singleton<T, Flag>::ReleaseInstance(bool permanent)
{
    SingletonData* const data = GetSingletonData(false);
    if (!data)
        return;
    const WriteLock hold(data->lock);
    DeleteInstance(data->instance.exchange(nullptr));
    if (permanent)
        data->released = true;
}

template <class T, int Flag>
void Singleton<T, Flag>::RegisterFinalizer()
{
    std::atexit(&StaticFinalizer);
}

template <class T, int Flag>
void Singleton<T, Flag>::StaticFinalizer()
{
    SingletonLibrary::NotifySingletonModuleUnloaded(reinterpret_cast<unsigned long long>(&StaticFinalizer));
}

template <class T, int Flag>
T* Singleton<T, Flag>::CreateInstance()
{
    return new T;
}

template <class T, int Flag>
void Singleton<T, Flag>::DeleteInstance(T* instance)
{
    delete instance;
}

template <class T, int Flag>
auto Singleton<T, Flag>::GetSingletonData(bool create) -> SingletonData*
{
    constexpr void (*deleteData)(void*) = [](void* block) {
        auto* const data = static_cast<SingletonData*>(block);
        if (!data)
            return;
        data->released = true;
        // The lock goes before the object, whose destructor may not come back here.
        data->lock.~ThreadLock();
        DeleteInstance(data->instance.exchange(nullptr));
        ::operator delete(data);
    };
    constexpr void (*fillEntry)(SingletonLibrary&, bool) = [](SingletonLibrary& entry, bool mayCreate) {
        const WriteLock hold(entry.lock);
        if (!mayCreate || entry.data)
            return;
        auto* const data = new SingletonData;
        entry.finalizerKey = reinterpret_cast<unsigned long long>(&StaticFinalizer);
        entry.flag = Flag != 0;
        entry.data = data;
        entry.deleter = deleteData;
        CreateSingletonData(*data);
    };

    static std::atomic<SingletonLibrary*> g_pEntry = nullptr;
    static const std::unique_ptr<Reset, EndReset> resetEntry(new Reset([] { g_pEntry.exchange(nullptr); }));
    SingletonLibrary* entry = g_pEntry.load(std::memory_order_acquire);
    if (!entry) {
        entry = SingletonLibrary::GetEntryForType(typeid(T), fillEntry, create, resetEntry.get());
        g_pEntry.exchange(entry);
    }
    return entry ? static_cast<SingletonData*>(entry->data.load(std::memory_order_acquire)) : nullptr;
}

template <class T, int Flag>
void Singleton<T, Flag>::CreateSingletonData(SingletonData& data)
{
    if (data.instance.load(std::memory_order_acquire))
        return;
    const WriteLock hold(data.lock);
    if (data.instance)
        return;
    T* const older = data.instance.exchange(CreateInstance());
    DeleteInstance(older);
    RegisterFinalizer();
}

}   // namespace TvlUtils

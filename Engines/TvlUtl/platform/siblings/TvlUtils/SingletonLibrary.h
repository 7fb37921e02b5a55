// The process-wide register of single objects, one entry a type however many modules know the type.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlUtils/Callables.h"
#include "siblings/TvlUtils/ThreadLock.h"

#include <atomic>
#include <typeindex>

namespace TvlUtils {

/// One type's entry. It crosses the borders of modules: the layout is fixed. Entries live as long as the process; what
/// goes away with a module is the block behind `data`.
class TVLSIBLINGS_API SingletonLibrary {
public:
    void (*deleter)(void*) = nullptr;                   // destroys the block behind `data`
    std::atomic<void*> data = nullptr;                  // the block, null until it is made
    std::atomic<unsigned long long> finalizerKey = 0;   // address of the finalizer of the module that made it
    ThreadLock lock;                                    // guards the making and the end of the block
    bool flag = false;                                  // the template's flag

    /// Finds or makes the entry of a type, calls `callback` with it and `create`, and returns it. With `create` false:
    /// null when there is no entry with data. `reset` is kept and called when the entry's data goes away, until
    /// RemoveCallback takes it back. The callback may ask for other types' entries.
    static SingletonLibrary* GetEntryForType(std::type_index type, void (*callback)(SingletonLibrary&, bool),
        bool create, basic_safe_function<void()>* reset);
    /// Forgets the reset callable at an address.
    static void RemoveCallback(std::type_index type, unsigned long long reset);
    /// The module with this finalizer key goes away: its entries are torn down.
    static void NotifySingletonModuleUnloaded(unsigned long long finalizerKey);
};

}   // namespace TvlUtils

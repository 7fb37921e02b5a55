// The process-wide register of single objects, one entry a type however many modules know the type.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlUtils/Callables.h"
#include "siblings/TvlUtils/ThreadLock.h"

#include <typeindex>

namespace TvlUtils {

/// One type's entry. It crosses the borders of modules: the layout is fixed.
class TVLSIBLINGS_API SingletonLibrary {
public:
    void (*deleter)(void*) = nullptr;      // destroys the block behind `data`
    void* data = nullptr;                  // the block, null until it is made
    unsigned long long finalizerKey = 0;   // address of the finalizer of the module that made it
    ThreadLock lock;
    bool flag = false;   // the template's flag

    /// Finds or makes the entry of a type, calls `callback` with it and `create`, and returns it. With `create` false:
    /// null when there is no entry with data. `reset` is kept and called when the entry's data goes away, until
    /// RemoveCallback takes it back.
    static SingletonLibrary* GetEntryForType(std::type_index type, void (*callback)(SingletonLibrary&, bool),
        bool create, basic_safe_function<void()>* reset);
    /// Forgets the reset callable at an address.
    static void RemoveCallback(std::type_index type, unsigned long long reset);
    /// The module with this finalizer key goes away: its entries are torn down.
    static void NotifySingletonModuleUnloaded(unsigned long long finalizerKey);
};

}   // namespace TvlUtils

#include "siblings/TvlUtils/ThreadLock.h"

#include <mutex>

namespace TvlUtils {

struct ThreadLock::Mutex {
    std::recursive_mutex mutex;
};

ThreadLock::~ThreadLock() { delete m_mutex.load(std::memory_order_acquire); }

ThreadLock::Mutex& ThreadLock::Get()
{
    Mutex* mutex = m_mutex.load(std::memory_order_acquire);
    if (mutex)
        return *mutex;
    auto* const made = new Mutex;
    if (m_mutex.compare_exchange_strong(mutex, made, std::memory_order_acq_rel))
        return *made;
    // Another thread was faster.
    delete made;
    return *mutex;
}

void ThreadLock::Lock() { Get().mutex.lock(); }
void ThreadLock::Unlock() { Get().mutex.unlock(); }

}   // namespace TvlUtils

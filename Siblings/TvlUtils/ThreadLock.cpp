#include "siblings/TvlUtils/ThreadLock.h"

#include <mutex>
#include <thread>

namespace TvlUtils {

/// A mutex that its owner may take again. A plain one beside the owner's name takes half the instructions of the C library's
/// recursive one, and locks stand in the way of every step of progress.
struct ThreadLock::Mutex {
    void Lock()
    {
        const auto self = std::this_thread::get_id();
        // Nobody but this thread makes it the owner.
        if (owner.load(std::memory_order_relaxed) != self) {
            mutex.lock();
            owner.store(self, std::memory_order_relaxed);
        }
        ++depth;
    }
    void Unlock()
    {
        if (--depth > 0)
            return;
        owner.store(std::thread::id(), std::memory_order_relaxed);
        mutex.unlock();
    }

    std::mutex mutex;
    std::atomic<std::thread::id> owner = std::thread::id();
    std::size_t depth = 0;   // guarded by the mutex
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

void ThreadLock::Lock() { Get().Lock(); }
void ThreadLock::Unlock() { m_mutex.load(std::memory_order_relaxed)->Unlock(); }

}   // namespace TvlUtils

// The lock between the threads of a process.
#pragma once

#include "siblings/SiblingsApi.h"

#include <atomic>

namespace TvlUtils {

/// A lock that its owner may take again. Eight bytes, as the layouts that hold one demand: the mutex behind it is made
/// on first use. It must be free when it is destroyed.
class TVLSIBLINGS_API ThreadLock {
public:
    /// Nobody has it.
    ThreadLock() = default;
    ~ThreadLock();
    ThreadLock(const ThreadLock&) = delete;
    ThreadLock& operator=(const ThreadLock&) = delete;

    /// Takes the lock, waiting as long as another thread has it.
    void Lock();
    /// Gives the lock back; as often as it was taken.
    void Unlock();

private:
    struct Mutex;
    Mutex& Get();

    std::atomic<Mutex*> m_mutex = nullptr;
};

static_assert(sizeof(ThreadLock) == 8);

/// Holds a lock as long as it lives, for changing what the lock guards.
class WriteLock {
public:
    /// Takes the lock, which must live as long as this object.
    explicit WriteLock(ThreadLock& lock) : m_lock(lock) { m_lock.Lock(); }
    ~WriteLock() { m_lock.Unlock(); }
    WriteLock(const WriteLock&) = delete;
    WriteLock& operator=(const WriteLock&) = delete;

private:
    ThreadLock& m_lock;
};

/// Holds a lock as long as it lives, for reading what the lock guards. Readers exclude each other too: sections are
/// short, and a reader may thereby call on to a writer.
class ReadLock : private WriteLock {
public:
    using WriteLock::WriteLock;   ///< as WriteLock's
};

}   // namespace TvlUtils

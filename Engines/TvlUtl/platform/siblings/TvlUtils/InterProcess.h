// What processes tell one another by name: mutexes and events of the user's session.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <memory>

namespace TvlUtils {

/// In the place of milliseconds: a wait that ends with what it waits for alone.
inline constexpr DWORD kNoTimeout = 0xFFFFFFFFul;

/// A yes or no that processes share under a name, as long as one of them holds it. Any thread may call.
class TVLSIBLINGS_API InterProcessEvent {
public:
    virtual ~InterProcessEvent() = default;
    /// Whether the event is set. One that resets itself is reset by being found set.
    virtual bool isSignalled() = 0;
    /// Sets the event: who waits for it goes on, one alone where it resets itself.
    virtual void set() = 0;
    /// Resets the event, set or not.
    virtual void reset() = 0;
    /// Waits until the event is set, and resets one that resets itself; false when the time is over first.
    virtual bool wait(DWORD milliseconds = kNoTimeout) = 0;

    /// Makes the event, or holds the one of this name, which keeps its kind and its state; null when that fails.
    /// @param autoReset    1 for an event that a single successful test or wait resets, 0 for one that stays set
    /// @param initialState 1 for an event that is set when it is made
    static std::unique_ptr<InterProcessEvent> createEvent(const TvlString& name, int autoReset, int initialState);
    /// Holds the event of this name; null when nobody made it.
    static std::unique_ptr<InterProcessEvent> openEvent(const TvlString& name);
};

/// How an InterProcessMutex was taken, or not.
enum class MutexState {
    Taken,   ///< the caller owns it
    /// It is taken, and whoever had it last ended without giving it back: what the mutex guards may be half done.
    TakenFromTheDead,
    TimedOut,   ///< another owned it all the time
    Failed,     ///< the system refuses it
};

/// A mutex between the threads of all processes of the user that hold it by its name. Its owner may take it again, and
/// gives it back as often. When a process ends, the mutex is free for others. A mutex that could not be made is false,
/// and lock fails.
class TVLSIBLINGS_API InterProcessMutex {
public:
    /// Holds the mutex of this name, made when nobody holds it. Does not take it.
    explicit InterProcessMutex(const TvlString& name);
    ~InterProcessMutex();
    InterProcessMutex(const InterProcessMutex&) = delete;
    InterProcessMutex& operator=(const InterProcessMutex&) = delete;

    /// Whether there is a mutex.
    explicit operator bool() const;
    /// Takes the mutex, waiting so long for it; 0 does not wait.
    MutexState lock(DWORD milliseconds = kNoTimeout);
    /// False when the calling thread does not own the mutex.
    bool unlock();

private:
    struct Handle;
    std::unique_ptr<Handle> m_handle;
};

/// Takes a mutex, and gives it back at its end.
class TVLSIBLINGS_API InterProcessLock {
public:
    /// Takes the mutex, waiting so long for it. It must live as long as this object.
    explicit InterProcessLock(InterProcessMutex& mutex, DWORD milliseconds = kNoTimeout);
    ~InterProcessLock();
    InterProcessLock(const InterProcessLock&) = delete;
    InterProcessLock& operator=(const InterProcessLock&) = delete;

    /// How the mutex was taken, or why not.
    MutexState state() const { return m_state; }
    /// Whether the mutex is taken.
    explicit operator bool() const { return m_state == MutexState::Taken || m_state == MutexState::TakenFromTheDead; }

private:
    InterProcessMutex& m_mutex;
    MutexState m_state;
};

}   // namespace TvlUtils

// Mutexes and events that the processes of a user share by name.
#pragma once

#include "siblings/SiblingsApi.h"

#include <memory>
#include <string>

namespace Ports {

/// How a wait ended, with the numbers of WaitForSingleObject.
enum WaitResult : DWORD {
    kWaitDone = 0,                // WAIT_OBJECT_0
    kWaitAbandoned = 0x80,        // WAIT_ABANDONED: the mutex is taken, and its last owner ended without giving it back
    kWaitTimeout = 0x102,         // WAIT_TIMEOUT
    kWaitFailed = 0xFFFFFFFFul,   // WAIT_FAILED
};

constexpr DWORD kWaitForever = 0xFFFFFFFFul;   // INFINITE, in the place of milliseconds

/// One handle to a mutex; the mutex itself ends with its last handle, in whichever process that is. A thread that owns it
/// may take it again, through this handle or another, and gives it back as often. Any thread may call. A handle that ends
/// while its thread owns the mutex does not give it back.
class TVLSIBLINGS_API NamedMutex {
public:
    virtual ~NamedMutex() = default;
    /// WaitForSingleObject: takes the mutex, waiting up to `milliseconds` for it.
    virtual WaitResult Wait(DWORD milliseconds) = 0;
    /// ReleaseMutex; false when the calling thread does not own it.
    virtual bool Release() = 0;
};

/// One handle to an event; the event itself ends with its last handle, in whichever process that is. Any thread may call.
class TVLSIBLINGS_API NamedEvent {
public:
    virtual ~NamedEvent() = default;
    /// WaitForSingleObject: waits up to `milliseconds` until the event is set. An event that resets itself is reset by the
    /// one wait that it ends; 0 milliseconds ask for the state that way too.
    virtual WaitResult Wait(DWORD milliseconds) = 0;
    /// SetEvent.
    virtual bool Set() = 0;
    /// ResetEvent.
    virtual bool Reset() = 0;
};

/// Names compare with case, and hold neither "\" nor "/"; a name serves a mutex or an event, not both. On windows they
/// belong to the session. On linux the objects are files, which the kernel frees with the process that holds them, in the
/// folder "Run" of TVL_USER_DIR or else in "tovel" of XDG_RUNTIME_DIR or "tovel-<user id>" of the temporary files; names
/// have up to 200 characters that are letters, digits, "-", "_" or ".", others count for three or more.
class TVLSIBLINGS_API NamedObjects {
public:
    /// The system's, or the one that stands in for it.
    static NamedObjects& Get();
    /// Replaces the port; null restores the system's. The caller keeps ownership.
    static void SetForTests(NamedObjects*);

    virtual ~NamedObjects() = default;
    /// CreateMutexW: a handle to the mutex of this name, which is made free when there is none; null on failure.
    virtual std::unique_ptr<NamedMutex> CreateMutexW(const std::wstring& name) = 0;
    /// CreateEventW: a handle to the event of this name. One that is there keeps its kind and its state; null on failure.
    /// @param manualReset whether the event stays set until it is reset, and ends every wait until then
    virtual std::unique_ptr<NamedEvent> CreateEventW(const std::wstring& name, bool manualReset, bool initiallySet) = 0;
    /// OpenEventW: a handle to an event that there is; null when there is none.
    virtual std::unique_ptr<NamedEvent> OpenEventW(const std::wstring& name) = 0;
};

}   // namespace Ports

// Handle memory: blocks of the process heap behind small records. The interface is that of a manager of movable blocks;
// blocks move only on a resize, and locks cost nothing.
#pragma once

#include "TvlUtlApi.h"

/// A block's record, 16 bytes of the same heap. Callers treat it as opaque and ask the functions below.
struct HMEM__ {
    void* data;   // the block; never null in a live handle
    int size;     // bytes, as last requested
};

// Sizes are in bytes. A negative size is a huge request that fails. Functions that return int give 1 for success and 0
// for failure. A handle belongs to one thread at a time. Nothing here reports a failure by message.
extern "C" {

/// A new handle with a zero-filled block, owned by the caller; null when the heap has no room.
TVLUTL_API HMEM__* MEMMANAlloc(int size) noexcept;
/// Resizes the block, which may move. Returns the same handle, or null when `handle` is null or the heap fails; the
/// handle then keeps its block and size. New bytes are not cleared. A size of 0 fails.
TVLUTL_API HMEM__* MEMMANReAlloc(HMEM__* handle, int size) noexcept;
/// A new handle with a copy of the block; null when `handle` is null or the heap has no room.
TVLUTL_API HMEM__* MEMMANDuplicate(HMEM__* handle) noexcept;
/// The block, valid until the next resize or free however often it is unlocked; null for a null handle.
TVLUTL_API void* MEMMANLock(HMEM__* handle) noexcept;
/// Does nothing. Always 1.
TVLUTL_API int MEMMANUnlock(const void* anything) noexcept;
/// Frees block and record. 0 for a null handle.
TVLUTL_API int MEMMANFree(HMEM__* handle) noexcept;
/// MEMMANAlloc and MEMMANLock in one. 0 when an out argument is null (nothing is allocated then) or the heap has no
/// room: `*handle` is null then and `*pointer` left alone.
TVLUTL_API int MEMMANAllocLock(HMEM__** handle, void** pointer, int size) noexcept;
/// MEMMANReAlloc and MEMMANLock in one. 0 when an argument or the handle is null or the heap fails: nothing changes then.
TVLUTL_API int MEMMANReAllocLock(HMEM__** handle, void** pointer, int size) noexcept;
/// Frees block and record of `*handle` and sets it to null. A null handle in the variable is a success.
TVLUTL_API int MEMMANUnlockFree(HMEM__** handle) noexcept;
/// Size in bytes as last requested; 0 for a null handle.
TVLUTL_API int MEMMANGetSize(HMEM__* handle) noexcept;
/// Always 0: there are no lock counts.
TVLUTL_API int MEMMANGetLockCount(const void* anything) noexcept;
/// Always 0: there are no flags.
TVLUTL_API int MEMMANGetFlags(const void* anything) noexcept;
/// memmove of `count` bytes. 0 when a pointer is null.
TVLUTL_API int MEMMANMoveHuge(void* destination, const void* source, int count) noexcept;

// The temporary family: the same code under other names, with no pool behind it.

/// Does nothing. Always 1. The same function as MEMMANUnlock.
TVLUTL_API int MMInitTemp(const void* anything) noexcept;
/// Does nothing. Always 1. The same function as MEMMANUnlock.
TVLUTL_API int MMShutdownTemp(const void* anything) noexcept;
/// Does nothing. Always 1. The same function as MEMMANUnlock.
TVLUTL_API int MMUnlockTemp(const void* anything) noexcept;
/// MEMMANAlloc of `size`; the first two arguments have no effect.
TVLUTL_API HMEM__* MMAllocTemp(const void* unused1, const void* unused2, int size) noexcept;
/// MEMMANLock under a second name.
TVLUTL_API void* MMLockTemp(HMEM__* handle) noexcept;
/// MEMMANFree under a second name.
TVLUTL_API int MMFreeTemp(HMEM__* handle) noexcept;
/// MEMMANReAlloc under a second name.
TVLUTL_API HMEM__* MMReAllocTemp(HMEM__* handle, int size) noexcept;
/// MEMMANUnlockFree under a second name.
TVLUTL_API int MMUnlockFreeTemp(HMEM__** handle) noexcept;
/// Behaves as MEMMANAllocLock.
TVLUTL_API int MMAllocLockTemp(HMEM__** handle, void** pointer, int size) noexcept;
/// Behaves as MEMMANReAllocLock.
TVLUTL_API int MMReAllocLockTemp(HMEM__** handle, void** pointer, int size) noexcept;
}

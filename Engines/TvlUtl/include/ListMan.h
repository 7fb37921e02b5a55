// Ordered lists of variable-sized byte elements, each list in one block of handle memory: header, offset table, element
// bytes. Access by index is constant, every add and remove costs the size of the list, a copy is one copy of the block.
#pragma once

#include "HandleMemory.h"

/// The head of a list's block, as seen through MEMMANLock. Offsets count from the block's first byte. Between the head
/// and the offset table stand the bytes that LIST_CtorExt left to the caller.
struct LIST {
    ULONG totalSize;     // bytes in use, head and table included; the table's last entry says the same
    ULONG count;         // elements, free slots (elements without bytes) included
    ULONG tableOffset;   // of `count` + 1 offsets: element i lies from entry i up to entry i + 1
};

/// Called by LIST_Enum for an element. The pointer holds until the list changes. 0 stops the walk.
using LIST_ENUMPROC = LONG (*)(void* element, ULONG size, LONG index, long long context);

// Sizes are in bytes. -1 is failure wherever a LONG is returned. A handle that can't be locked, a failed allocation and
// the bad arguments that are named "reported" show UIMSG_FatalError; the list stays valid. The block ends at INT32_MAX
// bytes. Data may be null where an element is added: its bytes are then left as they are. Data must not lie in the list.
// Any add or remove may move the block. A list belongs to one thread at a time.
extern "C" {

/// A new empty list, owned by the caller; null when the heap has no room (reported).
TVLUTL_API HMEM__* LIST_Ctor() noexcept;
/// As LIST_Ctor, with the offset table at `headerSize`: the bytes from 12 up to there are zero and the caller's own.
/// `headerSize` is 12 or more and not tested.
TVLUTL_API HMEM__* LIST_CtorExt(ULONG headerSize) noexcept;
/// A new list with a copy of everything, owned by the caller; null when the heap has no room (reported).
TVLUTL_API HMEM__* LIST_DupCtor(HMEM__* handle) noexcept;
/// Frees the list. Null is accepted.
TVLUTL_API void LIST_Dtor(HMEM__* handle) noexcept;

/// Number of elements, free slots included.
TVLUTL_API LONG LIST_Size(HMEM__* handle) noexcept;
/// Appends an element. Returns the new count; -1 for a size of 0.
TVLUTL_API LONG LIST_Push(HMEM__* handle, const void* data, ULONG size) noexcept;
/// Removes element 0 after copying up to `size` bytes of it to `out`. Returns the new count; -1 for an empty list.
/// When the block fails to shrink (reported) the element is gone all the same and the result is -1.
TVLUTL_API LONG LIST_PopOldest(HMEM__* handle, void* out, ULONG size) noexcept;
/// Inserts an element at index 0. Returns the new count; -1 for a size of 0.
TVLUTL_API LONG LIST_InsertTop(HMEM__* handle, const void* data, ULONG size) noexcept;
/// Inserts an element before `index`; appends it when `index` is the count or beyond, or negative. Returns the new
/// count; -1 for a size of 0.
TVLUTL_API LONG LIST_Insert(HMEM__* handle, LONG index, const void* data, ULONG size) noexcept;
/// Removes an element and its slot after copying up to `size` bytes of it to `out`, which may be null; nothing is copied
/// of a free slot. Returns the new count. An index out of range is reported. A failed shrink is as with LIST_PopOldest.
TVLUTL_API LONG LIST_Remove(HMEM__* handle, LONG index, void* out, ULONG size) noexcept;
/// As LIST_Remove, but the slot stays, free. Returns the unchanged count, for a free slot too.
TVLUTL_API LONG LIST_DeleteIth(HMEM__* handle, LONG index, void* out, ULONG size) noexcept;

/// Copies up to `size` bytes of an element. Returns the number copied; 0 for a size of 0 whatever the rest; -1 for a null
/// argument (reported), an index out of range or a free slot.
TVLUTL_API LONG LIST_GetIth(HMEM__* handle, LONG index, void* out, ULONG size) noexcept;
/// LIST_ReplaceIth below the count; else extends the list with free slots and the element at `index`. Returns 0, or -1,
/// also for a size of 0.
TVLUTL_API LONG LIST_PutIth(HMEM__* handle, LONG index, const void* data, ULONG size) noexcept;
/// Replaces an element: in place when the size stays, else by LIST_Remove and LIST_Insert, so that a size of 0 takes an
/// element that holds bytes away and returns -1. Returns the count. An index out of range is reported.
TVLUTL_API LONG LIST_ReplaceIth(HMEM__* handle, LONG index, const void* data, ULONG size) noexcept;
/// 1 when the element exists and holds bytes, else 0. A null handle is reported.
TVLUTL_API LONG LIST_ExistIth(HMEM__* handle, LONG index) noexcept;

/// First element from `start` on that equals the key in `length` bytes at `offset` of both; -1 when none does, `start` is
/// out of range or the key is null, empty or shorter than `offset` + `length`. The key is the image of a whole record.
TVLUTL_API LONG LIST_FindElement(
    HMEM__* handle, LONG start, const void* key, ULONG keySize, ULONG offset, ULONG length) noexcept;
/// First element from `start` on that has exactly the key's size and bytes; -1 as with LIST_FindElement.
TVLUTL_API LONG LIST_FindCompleteElement(HMEM__* handle, LONG start, const void* key, ULONG size) noexcept;
/// Puts an element into the first free slot, or appends it. Returns its index; 0 for a size of 0, unlike the other adds:
/// callers rely on it. A null handle is reported.
TVLUTL_API LONG LIST_InsertAtFree(HMEM__* handle, const void* data, ULONG size) noexcept;
/// Calls back for every element that holds bytes, in order. The callback may add and remove elements; when it takes away
/// the element that would have come next, that index is reported and passed over. Returns the index at which the callback
/// gave 0, else the index at which the walk ended.
TVLUTL_API LONG LIST_Enum(HMEM__* handle, LIST_ENUMPROC callback, long long context) noexcept;
/// Makes the table's last entry say `totalSize`, for callers that have changed the block by themselves.
TVLUTL_API void LIST_FixOffsetTable(HMEM__* handle) noexcept;

/// An element's bytes in the locked block, its size stored unless `size` is null. An index out of range is reported,
/// stores 0 and gives null.
TVLUTL_API void* LIST_LGetIth(LIST* list, LONG index, unsigned* size) noexcept;
/// The count; 0 for a null list.
TVLUTL_API LONG LIST_LSize(const LIST* list) noexcept;
/// Bytes in use. The list must not be null.
TVLUTL_API ULONG LIST_LLength(const LIST* list) noexcept;

/// Number of items of `itemSize` bytes behind a header of `headerSize` bytes in one element, by unsigned division; -1
/// for an `itemSize` below 1 or an index out of range.
TVLUTL_API LONG LIST_SizeSubList(HMEM__* handle, LONG index, LONG headerSize, LONG itemSize) noexcept;
/// Inserts an element before `index`, or at the end, or with a size of 0 a free slot. Returns 0 whether or not there was
/// room; -1 for a negative index or size.
TVLUTL_API LONG LIST_InsertSubList(HMEM__* handle, LONG index, const void* data, LONG size) noexcept;
}

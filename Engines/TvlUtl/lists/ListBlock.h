// The block of a list: entries of the offset table, and the operations that move bytes and resize.
#pragma once

#include "ListMan.h"

#include <cstring>

namespace ListBlock {

enum class Failure : int { Allocation = 1000, Lock = 1001, Resize = 1002, Argument = 5002 };

/// Shows the error box. `line` tells support which place it was; the numbers stay when the source moves.
void Report(Failure failure, int line);
/// The same as a function's result, which is -1.
LONG Fail(Failure failure, int line);
/// The block, or null after reporting `line`. What MEMMANLock gives, without the call.
inline LIST* Lock(HMEM__* handle, int line)
{
    void* const block = handle ? handle->data : nullptr;
    if (!block)
        Report(Failure::Lock, line);
    return static_cast<LIST*>(block);
}

inline BYTE* Bytes(LIST* list) { return reinterpret_cast<BYTE*>(list); }
inline bool Holds(const LIST* list, LONG index) { return static_cast<ULONG>(index) < list->count; }

// The table has no alignment when the caller's header has none.
inline BYTE* EntryAt(LIST* list, std::size_t index) { return Bytes(list) + list->tableOffset + 4 * index; }
inline ULONG Entry(LIST* list, std::size_t index)
{
    ULONG offset;
    std::memcpy(&offset, EntryAt(list, index), sizeof offset);
    return offset;
}
inline void SetEntry(LIST* list, std::size_t index, ULONG offset)
{
    std::memcpy(EntryAt(list, index), &offset, sizeof offset);
}
inline ULONG ElementSize(LIST* list, std::size_t index) { return Entry(list, index + 1) - Entry(list, index); }
inline BYTE* Element(LIST* list, std::size_t index) { return Bytes(list) + Entry(list, index); }

// Each of these gives the new count, or -1 after reporting that the resize failed. `line` is that of a failed lock.

/// Grows the list to `index` + 1 elements, `index` being the count or beyond: free slots, then the element.
LONG ExtendTo(HMEM__* handle, LIST* list, ULONG index, const void* data, ULONG size, int line);
/// Appends an element.
LONG Append(HMEM__* handle, LIST* list, const void* data, ULONG size);
/// Inserts an element before one of the list.
LONG InsertBefore(HMEM__* handle, LIST* list, ULONG index, const void* data, ULONG size);
/// Gives a free slot of the list its bytes.
LONG Fill(HMEM__* handle, LIST* list, ULONG index, const void* data, ULONG size);
/// Removes an element and its slot. When the resize fails, both are gone all the same.
LONG RemoveSlot(HMEM__* handle, LIST* list, ULONG index, void* out, ULONG size);
/// Removes an element's bytes and leaves a free slot. When the resize fails, they are gone all the same.
LONG Empty(HMEM__* handle, LIST* list, ULONG index, void* out, ULONG size);

}   // namespace ListBlock

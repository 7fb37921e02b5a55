// Lists whose elements are heap blocks of their own: an element's pointer stays while others come and go. A slot may be
// free; a list may carry one header block. Not the lists of ListMan.h, which differ in what a free slot or an index out of
// range does.
#pragma once

#include "TvlUtlApi.h"

/// A slot. While it is free it still tells the last pointer and size; the bytes are gone for callers.
struct LISTELEMENT {
    void* data;   // from the process heap
    LONG size;    // bytes
    int used;     // 1 while the slot holds an element, 0 while it is free
};

/// Positions count from 0, free slots included; sizes are in bytes. Data may be null where an element is stored: its bytes
/// are then left as they are. Failures are results, never messages. A list belongs to one thread at a time.
class TVLUTL_API WGList {
public:
    /// Called for an element. 0 stops the walk.
    using Callback = LONG (*)(void* element, ULONG size, LONG index, long long context);

    /// Room for 16 elements. Without memory the list is empty and has no room, but grows like any other.
    WGList() noexcept;
    /// Elements and header with blocks of their own; what finds no memory becomes a free slot or no header. Free slots stay.
    WGList(WGList& source) noexcept;
    /// Takes the fields as they are and frees nothing: both lists then own the same blocks, so one of them must never be
    /// destroyed.
    WGList& operator=(const WGList& source) noexcept;
    ~WGList();

    /// Stores an element before the one at `position`, or in the slot there when it is free, or at the end when `position`
    /// is beyond it. Returns the index; -1 for a negative position, 2 when the slots found no room, 3 when the element
    /// found none: elements from `position` up may have moved then, and the slot is free. 2 and 3 are indices as well.
    int Insert(int position, const void* data, LONG size) noexcept;
    /// Stores an element in the first free slot, or at the end. Returns the index, 2 or 3.
    int Insert(const void* data, LONG size) noexcept;
    /// Insert(0, ...).
    int InsertStart(const void* data, LONG size) noexcept;
    /// Stores an element behind the last slot. Returns the index, 2 or 3.
    int InsertEnd(const void* data, LONG size) noexcept;

    /// Stores an element in a slot, free or not, or in the last one when `position` is beyond it. Returns the index; -1
    /// for a negative position or a list without slots; 3 when there is no memory, and the slot is as it was.
    int Replace(int position, const void* data, LONG size) noexcept;
    /// Replace(0, ...).
    int ReplaceStart(const void* data, LONG size) noexcept;
    /// Replace of the last slot.
    int ReplaceEnd(const void* data, LONG size) noexcept;

    /// Copies up to `size` bytes of an element and returns the number; 0 out of range or for a null `out`. Ask Exist
    /// first: a free slot gives what was in it.
    LONG Retrieve(int position, void* out, LONG size) const noexcept;
    /// Retrieve of the first slot.
    LONG RetrieveStart(void* out, LONG size) const noexcept;
    /// Retrieve of the last slot.
    LONG RetrieveEnd(void* out, LONG size) const noexcept;
    /// An element's bytes; null when out of range or free.
    void* Get(int position) const noexcept;
    /// The same with the size: 0 for a free slot, left alone when out of range.
    void* Get(int position, LONG& size) const noexcept;
    /// Get of the first slot.
    void* GetStart() const noexcept;
    /// Get of the first slot, with its size.
    void* GetStart(LONG& size) const noexcept;
    /// Get of the last slot.
    void* GetEnd() const noexcept;
    /// Get of the last slot, with its size.
    void* GetEnd(LONG& size) const noexcept;
    /// 1 when a slot holds an element; 0 when it is free or out of range.
    int Exist(int position) const noexcept;
    /// Size of a slot, of a free one too; -1 out of range.
    LONG Size(int position) const noexcept;
    /// Number of elements; free slots don't count.
    int ListSize() const noexcept;
    /// The header block, owned by the list; null when there is none.
    void* GetHeader() const noexcept;
    /// Size of the header block.
    LONG GetHeaderSize() const noexcept;

    /// First element from `start` on that equals the key in `length` bytes at `offset` of both; -1 when none does or
    /// `start` is out of range.
    int FindElement(int start, const void* key, LONG offset, LONG length) const noexcept;
    /// First element from `start` on that begins with the key, whatever follows; -1 as with FindElement.
    int FindCompleteElement(int start, const void* key, LONG length) const noexcept;
    /// Calls back for every element in order; the callback may change the list. Returns the index at which the callback
    /// gave 0, else the index at which the walk ended.
    int Enumerate(Callback callback, long long context) noexcept;

    /// Frees a slot; the last one leaves the list with that. 0, or -1 when it is out of range or free already.
    int Delete(int position) noexcept;
    /// Delete(0).
    int DeleteStart() noexcept;
    /// Delete of the last slot.
    int DeleteEnd() noexcept;
    /// Empties the list. The header stays.
    void DeleteAll() noexcept;
    /// Takes an element or free slot out and closes the gap. A free last slot stays. 1, or 0 when out of range.
    int Remove(int position) noexcept;
    /// Remove(0).
    int RemoveStart() noexcept;
    /// Remove of the last slot.
    int RemoveEnd() noexcept;
    /// Takes all free slots out.
    void Compact() noexcept;

    /// Makes the header `size` bytes long, a copy of `data` or zeroes when that is null. A size of 0 takes the header away.
    /// Nothing changes when there is no memory.
    void SetHeader(const void* data, LONG size) noexcept;

protected:
    /// Gives slots back when 9 or more are unused, but for 8.
    void Shrink() noexcept;
    /// Makes a slot an element with a copy of `source`. The slot is left alone when `source` is null or there is no memory.
    void CopyElement(LISTELEMENT* destination, const void* source, LONG size) noexcept;

    LISTELEMENT* elements;   // slots, from the process heap
    int capacity;            // slots as the list counts them, in steps of 8
    int count;               // slots in the list, free ones included
    void* header;            // from the process heap, or null
    LONG headerSize;         // bytes
    int allocated;   // slots that `elements` has room for: fewer than `capacity` after a growth that failed, more
                     // after one that went ahead of it

private:
    bool Holds(int position) const noexcept;
    bool GrowArray() noexcept;
    bool Grow() noexcept;
    void Reallocate(int slots) noexcept;
    void CloseGap(int position) noexcept;
};

/// The opaque handle of the flat functions: a WGList from LISTCtor.
struct HGLIST__;

// WGList for callers without classes; each function is the member's code.
extern "C" {

/// A new list, owned by the caller; null when there is no memory.
TVLUTL_API HGLIST__* LISTCtor() noexcept;
/// Frees the list. Null is accepted.
TVLUTL_API void LISTDtor(HGLIST__* list) noexcept;
/// WGList::InsertEnd.
TVLUTL_API int LISTPush(HGLIST__* list, const void* data, LONG size) noexcept;
/// WGList::Replace: never extends the list.
TVLUTL_API int LISTPutIth(HGLIST__* list, int position, const void* data, LONG size) noexcept;
/// WGList::Replace.
TVLUTL_API int LISTReplaceIth(HGLIST__* list, int position, const void* data, LONG size) noexcept;
/// WGList::Retrieve.
TVLUTL_API LONG LISTGetIth(HGLIST__* list, int position, void* out, LONG size) noexcept;
/// WGList::Size.
TVLUTL_API LONG LISTSizeIth(HGLIST__* list, LONG position) noexcept;
/// WGList::ListSize: free slots don't count.
TVLUTL_API int LISTSize(HGLIST__* list) noexcept;
/// WGList::FindCompleteElement.
TVLUTL_API int LISTFindCompleteElement(HGLIST__* list, int start, const void* key, LONG length) noexcept;
}

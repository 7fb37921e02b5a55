#include "ListMan.h"

#include "ListBlock.h"
#include "ListLines.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

using ListBlock::Failure;
using ListBlock::Lock;
using ListBlock::Report;

static_assert(sizeof(LIST) == 12);

namespace {
constexpr ULONG kEntrySize = 4;
constexpr std::int64_t kSmallestBlock = sizeof(LIST) + kEntrySize;

/// A new locked block of zeroes. It has room for a list's head however few bytes are asked for.
LIST* NewBlock(HMEM__*& handle, std::int64_t bytes, int allocationLine, int lockLine)
{
    const std::int64_t room = std::max(bytes, kSmallestBlock);
    handle = room > INT32_MAX ? nullptr : MEMMANAlloc(static_cast<int>(room));
    if (!handle) {
        Report(Failure::Allocation, allocationLine);
        return nullptr;
    }
    handle->size = static_cast<int>(bytes);
    LIST* const list = Lock(handle, lockLine);
    if (!list)
        MEMMANUnlockFree(&handle);
    return list;
}

HMEM__* NewList(ULONG headerSize, int allocationLine, int lockLine)
{
    HMEM__* handle;
    LIST* const list = NewBlock(handle, std::int64_t{headerSize} + kEntrySize, allocationLine, lockLine);
    if (!list)
        return nullptr;
    list->tableOffset = headerSize;
    list->totalSize = headerSize + kEntrySize;
    list->count = 0;
    // Not through `tableOffset`, which the entry itself overwrites when the header is too small.
    std::memcpy(ListBlock::Bytes(list) + headerSize, &list->totalSize, kEntrySize);
    return handle;
}

}   // namespace

extern "C" {

HMEM__* LIST_Ctor() noexcept { return NewList(sizeof(LIST), Line::CtorAllocation, Line::CtorLock); }

HMEM__* LIST_CtorExt(ULONG headerSize) noexcept
{
    return NewList(headerSize, Line::CtorExtAllocation, Line::CtorExtLock);
}

HMEM__* LIST_DupCtor(HMEM__* handle) noexcept
{
    const LIST* const source = Lock(handle, Line::DupCtorSourceLock);
    if (!source)
        return nullptr;
    HMEM__* copy;
    LIST* const list = NewBlock(copy, source->totalSize, Line::DupCtorAllocation, Line::DupCtorCopyLock);
    if (list)
        std::memcpy(ListBlock::Bytes(list), source, source->totalSize);
    return copy;
}

void LIST_Dtor(HMEM__* handle) noexcept { MEMMANFree(handle); }

LONG LIST_Size(HMEM__* handle) noexcept
{
    const LIST* const list = Lock(handle, Line::SizeLock);
    return list ? static_cast<LONG>(list->count) : -1;
}

LONG LIST_Push(HMEM__* handle, const void* data, ULONG size) noexcept
{
    if (size == 0)
        return -1;
    LIST* const list = Lock(handle, Line::PushLock);
    return list ? ListBlock::Append(handle, list, data, size) : -1;
}

LONG LIST_PopOldest(HMEM__* handle, void* out, ULONG size) noexcept
{
    LIST* const list = Lock(handle, Line::PopOldestLock);
    return list && list->count > 0 ? ListBlock::RemoveSlot(handle, list, 0, out, size) : -1;
}

static LONG InsertAt(HMEM__* handle, LONG index, const void* data, ULONG size, int lockLine) noexcept
{
    if (size == 0)
        return -1;
    LIST* const list = Lock(handle, lockLine);
    if (!list)
        return -1;
    if (!ListBlock::Holds(list, index))
        return ListBlock::Append(handle, list, data, size);
    return ListBlock::InsertBefore(handle, list, static_cast<ULONG>(index), data, size);
}

LONG LIST_InsertTop(HMEM__* handle, const void* data, ULONG size) noexcept
{
    return InsertAt(handle, 0, data, size, Line::InsertTopLock);
}

LONG LIST_Insert(HMEM__* handle, LONG index, const void* data, ULONG size) noexcept
{
    return InsertAt(handle, index, data, size, Line::InsertLock);
}

LONG LIST_Remove(HMEM__* handle, LONG index, void* out, ULONG size) noexcept
{
    LIST* const list = Lock(handle, Line::RemoveLock);
    if (!list)
        return -1;
    if (!ListBlock::Holds(list, index))
        return ListBlock::Fail(Failure::Argument, Line::RemoveIndex);
    return ListBlock::RemoveSlot(handle, list, static_cast<ULONG>(index), out, size);
}

LONG LIST_DeleteIth(HMEM__* handle, LONG index, void* out, ULONG size) noexcept
{
    LIST* const list = Lock(handle, Line::DeleteIthLock);
    if (!list)
        return -1;
    if (!ListBlock::Holds(list, index))
        return ListBlock::Fail(Failure::Argument, Line::DeleteIthIndex);
    return ListBlock::Empty(handle, list, static_cast<ULONG>(index), out, size);
}

LONG LIST_GetIth(HMEM__* handle, LONG index, void* out, ULONG size) noexcept
{
    if (size == 0)
        return 0;
    if (!handle || !out)
        return ListBlock::Fail(Failure::Argument, Line::GetIthArgument);
    LIST* const list = Lock(handle, Line::GetIthLock);
    if (!list || !ListBlock::Holds(list, index))
        return -1;
    const auto i = static_cast<std::size_t>(index);
    const ULONG copied = std::min(ListBlock::ElementSize(list, i), size);
    if (copied == 0)
        return -1;
    std::memcpy(out, ListBlock::Element(list, i), copied);
    return static_cast<LONG>(copied);
}

LONG LIST_PutIth(HMEM__* handle, LONG index, const void* data, ULONG size) noexcept
{
    if (size == 0)
        return -1;
    LIST* const list = Lock(handle, Line::PutIthLock);
    if (!list)
        return -1;
    const LONG count = index < static_cast<LONG>(list->count)
        ? LIST_ReplaceIth(handle, index, data, size)
        : ListBlock::ExtendTo(handle, list, static_cast<ULONG>(index), data, size, Line::PutBeyondResizedLock);
    return count < 0 ? -1 : 0;
}

LONG LIST_ReplaceIth(HMEM__* handle, LONG index, const void* data, ULONG size) noexcept
{
    LIST* const list = Lock(handle, Line::ReplaceIthLock);
    if (!list)
        return -1;
    if (!ListBlock::Holds(list, index))
        return ListBlock::Fail(Failure::Argument, Line::ReplaceIthIndex);
    if (ListBlock::ElementSize(list, static_cast<std::size_t>(index)) == size) {
        if (data && size > 0)
            std::memcpy(ListBlock::Element(list, static_cast<std::size_t>(index)), data, size);
        return static_cast<LONG>(list->count);
    }
    LIST_Remove(handle, index, nullptr, 0);
    return LIST_Insert(handle, index, data, size);
}

LONG LIST_ExistIth(HMEM__* handle, LONG index) noexcept
{
    if (!handle) {
        Report(Failure::Argument, Line::ExistIthArgument);
        return 0;
    }
    LIST* const list = Lock(handle, Line::ExistIthLock);
    return list && ListBlock::Holds(list, index) && ListBlock::ElementSize(list, static_cast<std::size_t>(index)) > 0;
}

void LIST_FixOffsetTable(HMEM__* handle) noexcept
{
    if (auto* const list = static_cast<LIST*>(MEMMANLock(handle)))
        ListBlock::SetEntry(list, list->count, list->totalSize);
}

void* LIST_LGetIth(LIST* list, LONG index, unsigned* size) noexcept
{
    const bool held = list && ListBlock::Holds(list, index);
    if (!held)
        Report(Failure::Argument, Line::LGetIthIndex);
    if (size)
        *size = held ? static_cast<unsigned>(ListBlock::ElementSize(list, static_cast<std::size_t>(index))) : 0;
    return held ? ListBlock::Element(list, static_cast<std::size_t>(index)) : nullptr;
}

LONG LIST_LSize(const LIST* list) noexcept { return list ? static_cast<LONG>(list->count) : 0; }

ULONG LIST_LLength(const LIST* list) noexcept { return list->totalSize; }

LONG LIST_SizeSubList(HMEM__* handle, LONG index, LONG headerSize, LONG itemSize) noexcept
{
    LIST* const list = Lock(handle, Line::SizeSubListLock);
    if (!list || itemSize < 1 || !ListBlock::Holds(list, index))
        return -1;
    const ULONG size = ListBlock::ElementSize(list, static_cast<std::size_t>(index));
    return static_cast<LONG>((size - static_cast<ULONG>(headerSize)) / static_cast<ULONG>(itemSize));
}

LONG LIST_InsertSubList(HMEM__* handle, LONG index, const void* data, LONG size) noexcept
{
    if (index < 0 || size < 0)
        return -1;
    const LONG count = LIST_Size(handle);
    if (count < 0)
        return -1;
    const LONG place = std::min(index, count);
    if (size > 0) {
        LIST_Insert(handle, place, data, static_cast<ULONG>(size));
        return 0;
    }
    // Slots are made of elements that are emptied. Without room for one, no other element may be emptied.
    constexpr ULONG kPlaceholder = 65535;
    if (LIST_Insert(handle, place, &kPlaceholder, sizeof kPlaceholder) > 0)
        LIST_DeleteIth(handle, place, nullptr, 0);
    return 0;
}
}

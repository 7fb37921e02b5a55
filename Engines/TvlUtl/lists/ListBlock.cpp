#include "ListBlock.h"

#include "FatalError.h"
#include "ListLines.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace ListBlock {
namespace {
constexpr char kSource[] = "../../Engines/TvlUtl/ListMan.cpp";

// Sizes are summed in 64 bits, so that no sum wraps below what a block may have.
using Size = std::int64_t;

LIST* Resize(HMEM__* handle, Size bytes, int line)
{
    if (bytes > INT32_MAX || !MEMMANReAlloc(handle, static_cast<int>(bytes))) {
        Report(Failure::Resize, Line::Resize);
        return nullptr;
    }
    return Lock(handle, line);
}

/// How far the elements must move up to make room for a table of `entries`.
Size Shift(LIST* list, Size entries)
{
    const Size need = list->tableOffset + 4 * entries - Entry(list, 0);
    return need > 0 ? (need + 3) & ~Size{3} : 0;
}

/// Adds to `count` entries from `table` on. A run of one constant, kept in a form that compilers turn into vectors
/// whatever the alignment.
inline void AddToRun(BYTE* table, std::size_t count, ULONG delta)
{
#pragma GCC unroll 4
    for (std::size_t i = 0; i < count; ++i) {
        ULONG offset;
        std::memcpy(&offset, table + 4 * i, sizeof offset);
        offset += delta;
        std::memcpy(table + 4 * i, &offset, sizeof offset);
    }
}

/// Adds to entries `first` up to `last`, that one included: the hot loop of every add and remove. Subtraction wraps.
void AddToEntries(LIST* list, std::size_t first, std::size_t last, ULONG delta)
{
    if (last < first)
        return;
    // Vectors that begin at their own multiple never lie across two lines of a cache.
    constexpr std::size_t kVector = 16;
    BYTE* const table = EntryAt(list, first);
    const std::size_t count = last - first + 1;
    const std::size_t before = (kVector - reinterpret_cast<std::uintptr_t>(table) % kVector) % kVector / 4;
    const std::size_t head = std::min(before, count);
    AddToRun(table, head, delta);
    AddToRun(table + 4 * head, count - head, delta);
}

void CopyIn(BYTE* element, const void* data, ULONG size)
{
    if (data)
        std::memcpy(element, data, size);
}

/// Takes an element's bytes out of the elements and the table. Leaves `totalSize` to the caller, as the size removed.
ULONG RemoveBytes(LIST* list, ULONG index, void* out, ULONG size)
{
    const ULONG begin = Entry(list, index);
    const ULONG end = Entry(list, index + 1);
    const ULONG removed = end - begin;
    if (removed == 0)
        return 0;
    if (out && size > 0)
        std::memcpy(out, Bytes(list) + begin, std::min(removed, size));
    std::memmove(Bytes(list) + begin, Bytes(list) + end, list->totalSize - end);
    AddToEntries(list, index + 1, list->count, 0 - removed);
    return removed;
}

/// Takes an entry out of the table. The first spare entry stays, a second goes: returns the bytes by which the elements
/// have come down.
ULONG RemoveEntry(LIST* list, ULONG index, ULONG end)
{
    const ULONG slack = Entry(list, 0) - list->tableOffset - 4 * list->count;
    BYTE* const entry = EntryAt(list, index);
    if (slack >= 4 && slack < 8) {
        std::memmove(entry, entry + 4, 4 * (std::size_t{list->count} - index));
        --list->count;
        return 0;
    }
    std::memmove(entry, entry + 4, static_cast<std::size_t>(Bytes(list) + end - (entry + 4)));
    --list->count;
    AddToEntries(list, 0, list->count, 0 - 4u);
    return 4;
}
}   // namespace

void Report(Failure failure, int line)
{
    UIMSG_FatalError(static_cast<int>(failure), kSource, line, nullptr, failure == Failure::Resize);
}

LONG Fail(Failure failure, int line)
{
    Report(failure, line);
    return -1;
}

LONG ExtendTo(HMEM__* handle, LIST* list, ULONG index, const void* data, ULONG size, int line)
{
    const Size shift = Shift(list, Size{index} + 2);
    const Size total = list->totalSize + shift + size;
    list = Resize(handle, total, line);
    if (!list)
        return -1;
    if (shift > 0) {
        BYTE* const elements = Element(list, 0);
        std::memmove(elements + shift, elements, list->totalSize - Entry(list, 0));
        AddToEntries(list, 0, list->count, static_cast<ULONG>(shift));
    }
    const ULONG end = Entry(list, list->count);
    for (std::size_t free = std::size_t{list->count} + 1; free <= index; ++free)
        SetEntry(list, free, end);
    SetEntry(list, std::size_t{index} + 1, end + size);
    list->totalSize = static_cast<ULONG>(total);
    list->count = index + 1;
    CopyIn(Bytes(list) + end, data, size);
    return static_cast<LONG>(list->count);
}

LONG Append(HMEM__* handle, LIST* list, const void* data, ULONG size)
{
    return ExtendTo(handle, list, list->count, data, size, Line::AppendResizedLock);
}

LONG InsertBefore(HMEM__* handle, LIST* list, ULONG index, const void* data, ULONG size)
{
    const Size shift = Shift(list, Size{list->count} + 2);
    const Size total = list->totalSize + shift + size;
    list = Resize(handle, total, Line::InsertResizedLock);
    if (!list)
        return -1;
    const ULONG first = Entry(list, 0);
    const ULONG offset = Entry(list, index);
    BYTE* const element = Bytes(list) + offset;
    std::memmove(element + shift + size, element, list->totalSize - offset);
    if (shift > 0 && index > 0)
        std::memmove(Bytes(list) + first + shift, Bytes(list) + first, offset - first);
    BYTE* const entry = EntryAt(list, index);
    std::memmove(entry + 4, entry, 4 * (std::size_t{list->count} + 1 - index));
    if (shift > 0)
        AddToEntries(list, 0, index, static_cast<ULONG>(shift));
    AddToEntries(list, std::size_t{index} + 1, std::size_t{list->count} + 1, static_cast<ULONG>(shift) + size);
    list->totalSize = static_cast<ULONG>(total);
    ++list->count;
    CopyIn(element + shift, data, size);
    return static_cast<LONG>(list->count);
}

LONG Fill(HMEM__* handle, LIST* list, ULONG index, const void* data, ULONG size)
{
    list = Resize(handle, Size{list->totalSize} + size, Line::FillResizedLock);
    if (!list)
        return -1;
    const ULONG offset = Entry(list, index);
    BYTE* const element = Bytes(list) + offset;
    std::memmove(element + size, element, list->totalSize - offset);
    AddToEntries(list, std::size_t{index} + 1, list->count, size);
    list->totalSize += size;
    CopyIn(element, data, size);
    return static_cast<LONG>(list->count);
}

// Removals change the list first and shrink the block last: a block that fails to shrink is larger than its list, which
// is valid.

LONG RemoveSlot(HMEM__* handle, LIST* list, ULONG index, void* out, ULONG size)
{
    const ULONG removed = RemoveBytes(list, index, out, size);
    const ULONG shrink = removed + RemoveEntry(list, index, list->totalSize - removed);
    list->totalSize -= shrink;
    if (shrink > 0)
        list = Resize(handle, list->totalSize, Line::RemoveResizedLock);
    return list ? static_cast<LONG>(list->count) : -1;
}

LONG Empty(HMEM__* handle, LIST* list, ULONG index, void* out, ULONG size)
{
    const ULONG removed = RemoveBytes(list, index, out, size);
    list->totalSize -= removed;
    if (removed > 0)
        list = Resize(handle, list->totalSize, Line::DeleteResizedLock);
    return list ? static_cast<LONG>(list->count) : -1;
}

}   // namespace ListBlock

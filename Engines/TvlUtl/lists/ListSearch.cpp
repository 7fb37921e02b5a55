// Walks over the elements of a list.
#include "ListBlock.h"
#include "ListLines.h"

#include <cstdint>
#include <cstring>

using ListBlock::Failure;
using ListBlock::Lock;

namespace {
/// First index from `start` on whose element matches, or -1.
template <class Matches>
LONG Find(LIST* list, LONG start, Matches matches)
{
    if (!list)
        return -1;
    for (LONG i = start; ListBlock::Holds(list, i); ++i)
        if (matches(ListBlock::Element(list, static_cast<std::size_t>(i)),
                ListBlock::ElementSize(list, static_cast<std::size_t>(i))))
            return i;
    return -1;
}
}   // namespace

extern "C" {

LONG LIST_FindElement(HMEM__* handle, LONG start, const void* key, ULONG keySize, ULONG offset, ULONG length) noexcept
{
    const std::uint64_t end = std::uint64_t{offset} + length;
    if (!key || keySize == 0 || keySize < end)
        return -1;
    return Find(Lock(handle, Line::FindElementLock), start, [=](const BYTE* element, ULONG size) {
        return size > 0 && size >= end
            && std::memcmp(element + offset, static_cast<const BYTE*>(key) + offset, length) == 0;
    });
}

LONG LIST_FindCompleteElement(HMEM__* handle, LONG start, const void* key, ULONG keySize) noexcept
{
    if (!key || keySize == 0)
        return -1;
    return Find(Lock(handle, Line::FindCompleteElementLock), start,
        [=](const BYTE* element, ULONG size) { return size == keySize && std::memcmp(element, key, size) == 0; });
}

LONG LIST_InsertAtFree(HMEM__* handle, const void* data, ULONG size) noexcept
{
    if (size == 0)
        return 0;
    if (!handle)
        return ListBlock::Fail(Failure::Argument, Line::InsertAtFreeArgument);
    LIST* const list = Lock(handle, Line::InsertAtFreeLock);
    if (!list)
        return -1;
    const LONG slot = Find(list, 0, [](const BYTE*, ULONG held) { return held == 0; });
    if (slot >= 0)
        return ListBlock::Fill(handle, list, static_cast<ULONG>(slot), data, size) < 0 ? -1 : slot;
    const LONG count = ListBlock::Append(handle, list, data, size);
    return count < 0 ? -1 : count - 1;
}

LONG LIST_Enum(HMEM__* handle, LIST_ENUMPROC callback, long long context) noexcept
{
    ULONG before = 0;
    for (LONG index = 0;; ++index) {
        LIST* const list = Lock(handle, Line::EnumLock);
        if (!list)
            return -1;
        // One step beyond the end reports the element that the callback took away.
        if (!ListBlock::Holds(list, index) && static_cast<ULONG>(index) >= before)
            return index;
        before = list->count;
        unsigned size;
        void* const element = LIST_LGetIth(list, index, &size);
        if (size > 0 && callback(element, size, index, context) == 0)
            return index;
    }
}
}

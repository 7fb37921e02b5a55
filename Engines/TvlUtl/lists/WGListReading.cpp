// What a WGList answers without changing.
#include "WGList.h"

#include "MemberAlias.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

LONG WGList::Retrieve(int position, void* out, LONG size) const noexcept
{
    if (!Holds(position) || !out)
        return 0;
    const LONG copied = std::max<LONG>(std::min(size, elements[position].size), 0);
    if (copied > 0)
        std::memcpy(out, elements[position].data, static_cast<std::size_t>(copied));
    return copied;
}

LONG WGList::RetrieveStart(void* out, LONG size) const noexcept { return Retrieve(0, out, size); }
LONG WGList::RetrieveEnd(void* out, LONG size) const noexcept { return Retrieve(count - 1, out, size); }

void* WGList::Get(int position) const noexcept { return Exist(position) ? elements[position].data : nullptr; }

void* WGList::Get(int position, LONG& size) const noexcept
{
    if (Holds(position))
        size = elements[position].used ? elements[position].size : 0;
    return Get(position);
}

void* WGList::GetStart() const noexcept { return Get(0); }
void* WGList::GetStart(LONG& size) const noexcept { return Get(0, size); }
void* WGList::GetEnd() const noexcept { return Get(count - 1); }
void* WGList::GetEnd(LONG& size) const noexcept { return Get(count - 1, size); }

int WGList::Exist(int position) const noexcept { return Holds(position) ? elements[position].used : 0; }
LONG WGList::Size(int position) const noexcept { return Holds(position) ? elements[position].size : -1; }

int WGList::ListSize() const noexcept
{
    return static_cast<int>(std::count_if(elements, elements + count, [](const LISTELEMENT& e) { return e.used; }));
}

void* WGList::GetHeader() const noexcept { return header; }
LONG WGList::GetHeaderSize() const noexcept { return headerSize; }

int WGList::FindElement(int start, const void* key, LONG offset, LONG length) const noexcept
{
    if (start < 0 || !key || offset < 0 || length < 0)
        return -1;
    const long long end = static_cast<long long>(offset) + length;
    for (int i = start; i < count; ++i) {
        const LISTELEMENT& slot = elements[i];
        if (slot.used && slot.size >= end
            && std::memcmp(static_cast<const BYTE*>(slot.data) + offset, static_cast<const BYTE*>(key) + offset,
                   static_cast<std::size_t>(length))
                == 0)
            return i;
    }
    return -1;
}

int WGList::FindCompleteElement(int start, const void* key, LONG length) const noexcept
{
    return FindElement(start, key, 0, length);
}

int WGList::Enumerate(Callback callback, long long context) noexcept
{
    int index = 0;
    for (; index < count; ++index) {
        const LISTELEMENT& slot = elements[index];
        if (slot.used && callback(slot.data, static_cast<ULONG>(slot.size), index, context) == 0)
            break;
    }
    return index;
}

extern "C" {

TVLUTL_MEMBER_ALIAS(LONG, LISTGetIth, (HGLIST__*, int, void*, LONG), "_ZNK6WGList8RetrieveEiPv" LONG_LETTER)
TVLUTL_MEMBER_ALIAS(LONG, LISTSizeIth, (HGLIST__*, LONG), "_ZNK6WGList4SizeEi")
TVLUTL_MEMBER_ALIAS(int, LISTSize, (HGLIST__*), "_ZNK6WGList8ListSizeEv")
TVLUTL_MEMBER_ALIAS(int, LISTFindCompleteElement, (HGLIST__*, int, const void*, LONG),
    "_ZNK6WGList19FindCompleteElementEiPKv" LONG_LETTER)
}

// The slots of a WGList: how they come, go and are stored into.
#include "WGList.h"

#include "MemberAlias.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>
#include <type_traits>

static_assert(std::is_standard_layout_v<WGList> && sizeof(LISTELEMENT) == 16 && sizeof(WGList) == 32);

namespace {
constexpr int kStep = 8;             // slots by which the capacity grows and that a shrink leaves
constexpr int kFirstCapacity = 16;   // slots of a new list
constexpr int kMost = 1 << 30;       // slots of the longest list, far from where an int ends
constexpr int kDoubled = 1024;       // slots up to which the array doubles; then it grows by half

constexpr int kRefused = -1;
constexpr int kNoSlots = 2;
constexpr int kNoBlock = 3;

/// A block for an element, filled when there is something to fill it with. A negative size is more than any heap has.
void* NewBlock(const void* data, LONG size)
{
    if (size < 0)
        return nullptr;
    const auto bytes = static_cast<std::size_t>(size);
    void* const block = std::malloc(std::max<std::size_t>(bytes, 1));
    if (block && data)
        std::memcpy(block, data, bytes);
    return block;
}

std::size_t SlotBytes(int slots) { return static_cast<std::size_t>(slots) * sizeof(LISTELEMENT); }

LISTELEMENT* NewSlots(int slots)
{
    // The heap's fast lists serve malloc and not calloc.
    const std::size_t bytes = SlotBytes(std::max(slots, 1));
    void* const block = std::malloc(bytes);
    return static_cast<LISTELEMENT*>(block ? std::memset(block, 0, bytes) : nullptr);
}

/// Puts a block into a slot. What the slot held goes, also what a free one had been left with.
void Store(LISTELEMENT& slot, void* block, LONG size)
{
    if (slot.data)
        std::free(slot.data);
    slot = {block, size, 1};
}

void FillHeader(void* header, const void* data, LONG size)
{
    const auto bytes = static_cast<std::size_t>(size);
    if (bytes > 0 && data)
        std::memmove(header, data, bytes);
    else if (bytes > 0)
        std::memset(header, 0, bytes);
}
}   // namespace

// The bytes of a slot that Delete has emptied stay allocated until the slot is used again or leaves the list, because
// callers read free slots.

WGList::WGList() noexcept
    : elements(NewSlots(kFirstCapacity)), capacity(elements ? kFirstCapacity : 0), count(0), header(nullptr),
      headerSize(0), allocated(capacity)
{
}

WGList::WGList(WGList& source) noexcept
    : elements(NewSlots(source.capacity)), capacity(0), count(0), header(nullptr), headerSize(0), allocated(0)
{
    if (!elements)
        return;
    capacity = allocated = source.capacity;
    count = source.count;
    SetHeader(source.header, source.headerSize);
    for (int i = 0; i < count; ++i)
        if (source.elements[i].used)
            CopyElement(&elements[i], source.elements[i].data, source.elements[i].size);
}

WGList& WGList::operator=(const WGList& source) noexcept = default;

WGList::~WGList()
{
    for (int i = 0; i < count; ++i)
        std::free(elements[i].data);
    std::free(header);
    std::free(elements);
}

bool WGList::Holds(int position) const noexcept { return position >= 0 && position < count; }

/// Makes the array longer, by so much that appending costs the same however long the list is. Out of line: a caller that
/// finds room saves fewer registers.
[[gnu::noinline]] bool WGList::GrowArray() noexcept
{
    if (count >= kMost)
        return false;
    const int slots = std::max(capacity, count + (count < kDoubled ? count : count / 2));
    auto* const grown = static_cast<LISTELEMENT*>(std::realloc(elements, SlotBytes(slots)));
    if (!grown)
        return false;
    elements = grown;
    allocated = slots;
    return true;
}

/// Makes room for one more slot. The capacity stays raised when there is none. The array runs ahead of the capacity.
bool WGList::Grow() noexcept
{
    if (count == capacity)
        capacity += kStep;
    return count < allocated || GrowArray();
}

/// Lowers the capacity, unless the array can't be reallocated.
void WGList::Reallocate(int slots) noexcept
{
    auto* const shrunk = static_cast<LISTELEMENT*>(std::realloc(elements, SlotBytes(slots)));
    if (!shrunk)
        return;
    elements = shrunk;
    capacity = allocated = slots;
}

void WGList::Shrink() noexcept
{
    if (capacity - count > kStep)
        Reallocate(count + kStep);
}

void WGList::CopyElement(LISTELEMENT* destination, const void* source, LONG size) noexcept
{
    void* const block = source ? NewBlock(source, size) : nullptr;
    if (block)
        *destination = {block, size, 1};
}

int WGList::Insert(int position, const void* data, LONG size) noexcept
{
    if (position < 0)
        return kRefused;
    if (position >= count)
        return InsertEnd(data, size);
    if (!Grow())
        return kNoSlots;
    LISTELEMENT& slot = elements[position];
    if (slot.used) {
        std::memmove(&slot + 1, &slot, SlotBytes(count - position));
        ++count;
        slot = {};   // what stood there has moved
    }
    void* const block = NewBlock(data, size);
    if (!block)
        return kNoBlock;
    Store(slot, block, size);
    return position;
}

int WGList::InsertEnd(const void* data, LONG size) noexcept
{
    if (!Grow())
        return kNoSlots;
    void* const block = NewBlock(data, size);
    elements[count] = {block, block ? size : 0, block ? 1 : 0};
    return block ? count++ : kNoBlock;
}

int WGList::Insert(const void* data, LONG size) noexcept
{
    for (int i = 0; i < count; ++i)
        if (!elements[i].used)
            return Replace(i, data, size);
    return InsertEnd(data, size);
}

int WGList::InsertStart(const void* data, LONG size) noexcept { return Insert(0, data, size); }

int WGList::Replace(int position, const void* data, LONG size) noexcept
{
    position = std::min(position, count - 1);
    if (position < 0)
        return kRefused;
    void* const block = NewBlock(data, size);
    if (!block)
        return kNoBlock;
    Store(elements[position], block, size);
    return position;
}

int WGList::ReplaceStart(const void* data, LONG size) noexcept { return Replace(0, data, size); }
int WGList::ReplaceEnd(const void* data, LONG size) noexcept { return Replace(count, data, size); }

int WGList::Delete(int position) noexcept
{
    if (!Exist(position))
        return kRefused;
    elements[position].used = 0;
    if (position == count - 1)
        std::free(elements[--count].data);
    return 0;
}

int WGList::DeleteStart() noexcept { return Delete(0); }
int WGList::DeleteEnd() noexcept { return Delete(count - 1); }

void WGList::DeleteAll() noexcept
{
    for (int i = 0; i < count; ++i)
        std::free(elements[i].data);
    count = 0;
    if (capacity > kStep)
        Reallocate(kStep);
}

/// Takes a slot out that others follow.
void WGList::CloseGap(int position) noexcept
{
    LISTELEMENT& slot = elements[position];
    std::free(slot.data);
    --count;
    std::memmove(&slot, &slot + 1, SlotBytes(count - position));
}

int WGList::Remove(int position) noexcept
{
    if (!Holds(position))
        return 0;
    Delete(position);
    // A used last slot has left by now; a free one stays.
    if (position < count - 1)
        CloseGap(position);
    Shrink();
    return 1;
}

int WGList::RemoveStart() noexcept { return Remove(0); }
int WGList::RemoveEnd() noexcept { return Remove(count - 1); }

void WGList::Compact() noexcept
{
    if (!elements)
        return;
    int kept = 0;
    for (int i = 0; i < count; ++i) {
        if (elements[i].used)
            elements[kept++] = elements[i];
        else
            std::free(elements[i].data);
    }
    count = kept;
    Shrink();
}

void WGList::SetHeader(const void* data, LONG size) noexcept
{
    if (size < 0)
        return;
    if (size == 0) {
        std::free(header);
        header = nullptr;
    } else if (size != headerSize) {
        void* const block = std::realloc(header, static_cast<std::size_t>(size));
        if (!block)
            return;
        header = block;
    }
    headerSize = size;
    FillHeader(header, data, size);
}

extern "C" {

HGLIST__* LISTCtor() noexcept { return reinterpret_cast<HGLIST__*>(new (std::nothrow) WGList()); }
void LISTDtor(HGLIST__* list) noexcept { delete reinterpret_cast<WGList*>(list); }

TVLUTL_MEMBER_ALIAS(int, LISTPush, (HGLIST__*, const void*, LONG), "_ZN6WGList9InsertEndEPKv" LONG_LETTER)
TVLUTL_MEMBER_ALIAS(int, LISTPutIth, (HGLIST__*, int, const void*, LONG), "_ZN6WGList7ReplaceEiPKv" LONG_LETTER)
TVLUTL_MEMBER_ALIAS(int, LISTReplaceIth, (HGLIST__*, int, const void*, LONG), "_ZN6WGList7ReplaceEiPKv" LONG_LETTER)
}

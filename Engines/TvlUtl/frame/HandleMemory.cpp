#include "HandleMemory.h"

#include <cstdlib>
#include <cstring>

static_assert(sizeof(HMEM__) == 16);

namespace {
// Sizes are sign-extended, so that a negative one asks for more than any heap has.
std::size_t HeapSize(int size) { return static_cast<std::size_t>(static_cast<long long>(size)); }

// The heap's fast lists serve malloc and not calloc, while calloc has large blocks cleared by the system.
constexpr std::size_t kLargeBlock = 64 * 1024;

void* ClearedBlock(std::size_t bytes)
{
    if (bytes >= kLargeBlock)
        return std::calloc(bytes, 1);
    void* const block = std::malloc(bytes);
    return block ? std::memset(block, 0, bytes) : nullptr;
}

// The record comes first and goes again when the block fails.
template <class Allocate>
HMEM__* NewHandle(int size, Allocate allocate)
{
    auto* const handle = static_cast<HMEM__*>(std::malloc(sizeof(HMEM__)));
    if (!handle)
        return nullptr;
    handle->data = allocate(HeapSize(size));
    if (!handle->data) {
        std::free(handle);
        return nullptr;
    }
    handle->size = size;
    return handle;
}

bool Resize(HMEM__* handle, int size)
{
    // The heap frees the block when asked for 0 bytes and answers null, while the handle would keep the block.
    void* const data = size == 0 ? nullptr : std::realloc(handle->data, HeapSize(size));
    if (!data)
        return false;
    handle->data = data;
    handle->size = size;
    return true;
}
}   // namespace

extern "C" {

HMEM__* MEMMANAlloc(int size) noexcept { return NewHandle(size, ClearedBlock); }

HMEM__* MEMMANReAlloc(HMEM__* handle, int size) noexcept { return handle && Resize(handle, size) ? handle : nullptr; }
TVLUTL_ALIAS(HMEM__*, MMReAllocTemp, (HMEM__*, int), MEMMANReAlloc)

HMEM__* MEMMANDuplicate(HMEM__* handle) noexcept
{
    if (!handle)
        return nullptr;
    HMEM__* const copy = NewHandle(handle->size, [](std::size_t bytes) { return std::malloc(bytes); });
    if (copy)
        std::memcpy(copy->data, handle->data, HeapSize(handle->size));
    return copy;
}

void* MEMMANLock(HMEM__* handle) noexcept { return handle ? handle->data : nullptr; }
TVLUTL_ALIAS(void*, MMLockTemp, (HMEM__*), MEMMANLock)

int MEMMANUnlock(const void*) noexcept { return 1; }
TVLUTL_ALIAS(int, MMInitTemp, (const void*), MEMMANUnlock)
TVLUTL_ALIAS(int, MMShutdownTemp, (const void*), MEMMANUnlock)
TVLUTL_ALIAS(int, MMUnlockTemp, (const void*), MEMMANUnlock)

int MEMMANFree(HMEM__* handle) noexcept
{
    if (!handle)
        return 0;
    std::free(handle->data);
    std::free(handle);
    return 1;
}
TVLUTL_ALIAS(int, MMFreeTemp, (HMEM__*), MEMMANFree)

int MEMMANAllocLock(HMEM__** handle, void** pointer, int size) noexcept
{
    if (!handle || !pointer)
        return 0;
    *handle = MEMMANAlloc(size);
    if (!*handle)
        return 0;
    *pointer = (*handle)->data;
    return 1;
}

int MEMMANReAllocLock(HMEM__** handle, void** pointer, int size) noexcept
{
    if (!handle || !*handle || !pointer || !Resize(*handle, size))
        return 0;
    *pointer = (*handle)->data;
    return 1;
}

int MEMMANUnlockFree(HMEM__** handle) noexcept
{
    if (!handle)
        return 0;
    MEMMANFree(*handle);
    *handle = nullptr;
    return 1;
}
TVLUTL_ALIAS(int, MMUnlockFreeTemp, (HMEM__**), MEMMANUnlockFree)

int MEMMANGetSize(HMEM__* handle) noexcept { return handle ? handle->size : 0; }

int MEMMANGetLockCount(const void*) noexcept { return 0; }
TVLUTL_ALIAS(int, MEMMANGetFlags, (const void*), MEMMANGetLockCount)

int MEMMANMoveHuge(void* destination, const void* source, int count) noexcept
{
    if (!destination || !source)
        return 0;
    std::memmove(destination, source, HeapSize(count));
    return 1;
}

HMEM__* MMAllocTemp(const void*, const void*, int size) noexcept { return MEMMANAlloc(size); }
int MMAllocLockTemp(HMEM__** handle, void** pointer, int size) noexcept
{
    return MEMMANAllocLock(handle, pointer, size);
}
int MMReAllocLockTemp(HMEM__** handle, void** pointer, int size) noexcept
{
    return MEMMANReAllocLock(handle, pointer, size);
}
}

#include "FailingHeap.h"

#include <atomic>
#include <cstdlib>
#include <new>
#include <thread>

namespace {
// Plain numbers beside the thread's id: nothing here may allocate.
std::atomic<bool> active = false;
std::thread::id watched;
int failAt = FailingHeap::kNever;
bool isOnward = false;
int count = 0;
}   // namespace

extern "C" {
// The linker gives the heap's calls of every object these names, and the heap's own functions the others.
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* block, std::size_t size);

void* __wrap_malloc(std::size_t size) { return FailingHeap::Admit() ? __real_malloc(size) : nullptr; }
void* __wrap_calloc(std::size_t number, std::size_t size)
{
    return FailingHeap::Admit() ? __real_calloc(number, size) : nullptr;
}
void* __wrap_realloc(void* block, std::size_t size)
{
    return FailingHeap::Admit() ? __real_realloc(block, size) : nullptr;
}
}

bool FailingHeap::Admit()
{
    if (!active.load(std::memory_order_acquire) || std::this_thread::get_id() != watched)
        return true;
    const int place = count++;
    return failAt == kNever || (isOnward ? place < failAt : place != failAt);
}

FailingHeap::FailingHeap(int point, Extent extent)
{
    watched = std::this_thread::get_id();
    failAt = point;
    isOnward = extent == Extent::Onward;
    count = 0;
    active.store(true, std::memory_order_release);
}

FailingHeap::~FailingHeap() { active.store(false, std::memory_order_release); }

int FailingHeap::Count() const { return count; }
int FailingHeap::CountFailed() const
{
    if (failAt == kNever || count <= failAt)
        return 0;
    return isOnward ? count - failAt : 1;
}
bool FailingHeap::HasFailed() const { return CountFailed() > 0; }

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return FailingHeap::Admit() ? __real_malloc(size > 0 ? size : 1) : nullptr;
}
void* operator new(std::size_t size)
{
    void* const block = operator new(size, std::nothrow);
    return block ? block : throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return operator new(size, std::nothrow); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { std::free(block); }

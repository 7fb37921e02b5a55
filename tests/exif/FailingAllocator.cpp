#include "FailingAllocator.h"

#include <cstdlib>
#include <new>

namespace {
bool active = false;
int left = 0;   // allocations that still succeed; -1 after the failed one

void* Allocate(std::size_t size)
{
    if (active && left >= 0 && left-- == 0)
        return nullptr;
    return std::malloc(size > 0 ? size : 1);
}
}   // namespace

void FailingAllocator::FailAt(int count)
{
    left = count;
    active = true;
}

bool FailingAllocator::Stop()
{
    active = false;
    return left < 0;
}

void* operator new(std::size_t size)
{
    void* const block = Allocate(size);
    if (!block)
        throw std::bad_alloc();
    return block;
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { std::free(block); }

#include "InputCost.h"

#include <atomic>
#ifdef __SANITIZE_ADDRESS__
// Of the sanitizers' interface to programs; GCC's packages lack the header.
extern "C" int __sanitizer_install_malloc_and_free_hooks(
    void (*took)(const volatile void*, std::size_t), void (*gaveBack)(const volatile void*));
extern "C" std::size_t __sanitizer_get_allocated_size(const volatile void* memory);
#endif

namespace {
std::atomic<long long> held;   // bytes since the beginning; those of others that are given back make it less
std::atomic<long long> peak;

#ifdef __SANITIZE_ADDRESS__
void Took(const volatile void*, std::size_t size)
{
    const long long now = held += static_cast<long long>(size);
    for (long long most = peak; now > most && !peak.compare_exchange_weak(most, now);)
        ;
}

void GaveBack(const volatile void* memory)
{
    if (memory)
        held -= static_cast<long long>(__sanitizer_get_allocated_size(memory));
}

const int installed = __sanitizer_install_malloc_and_free_hooks(Took, GaveBack);
#endif
}   // namespace

InputCost::InputCost()
{
    held = 0;
    peak = 0;
}

long long InputCost::PeakBytes() const { return peak; }

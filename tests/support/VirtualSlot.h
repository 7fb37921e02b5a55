// Where a virtual operation stands in its class's table, for interfaces whose callers outside depend on the order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

/// Slot of a virtual member, from 0. A virtual destructor takes two slots. The compilers of both targets keep 1 plus 8
/// times the slot in the pointer to the member.
template <class Member>
std::size_t Slot(Member member)
{
    std::uintptr_t words[2];
    static_assert(sizeof member == sizeof words);
    std::memcpy(words, &member, sizeof words);
    return (words[0] - 1) / 8;
}

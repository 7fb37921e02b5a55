#include "ExifMemory.h"

#include <algorithm>
#include <new>

namespace {
constexpr std::size_t kAlignment = 8;
constexpr std::size_t kFirstRoom = 4096;   // the tags of most photos
constexpr std::size_t kMostRoom = 65536;

#ifndef __has_feature
#define __has_feature(name) 0
#endif
#if defined(__SANITIZE_ADDRESS__) || __has_feature(address_sanitizer)
constexpr std::size_t kLargestCarved = 0;   // the sanitizer then sees where each block ends
#else
constexpr std::size_t kLargestCarved = kFirstRoom / 4;
#endif
}   // namespace

struct ExifMemory::Chunk {
    std::size_t blocks;   // not freed yet
};

/// Stands before each block's bytes.
struct ExifMemory::Block {
    Chunk* chunk;
};

ExifMemory::~ExifMemory()
{
    if (m_chunk)
        Release(m_chunk);
}

ExifMemory::Chunk* ExifMemory::NewChunk(std::size_t room) noexcept
{
    void* const memory = ::operator new(sizeof(Chunk) + room, std::nothrow);
    return memory ? new (memory) Chunk{1} : nullptr;
}

void ExifMemory::Release(Chunk* chunk) noexcept
{
    if (--chunk->blocks == 0)
        ::operator delete(chunk);
}

void* ExifMemory::Allocate(std::size_t size) noexcept
{
    const std::size_t needed = sizeof(Block) + (size + kAlignment - 1) / kAlignment * kAlignment;
    if (needed > kLargestCarved)
        return AllocateAlone(size);
    if (needed > m_left) {
        const std::size_t room = std::clamp(2 * m_chunkRoom, kFirstRoom, kMostRoom);
        Chunk* const chunk = NewChunk(room);
        if (!chunk)
            return nullptr;
        if (m_chunk)
            Release(m_chunk);
        m_chunk = chunk;
        m_left = m_chunkRoom = room;
    }
    unsigned char* const at = reinterpret_cast<unsigned char*>(m_chunk + 1) + (m_chunkRoom - m_left);
    m_left -= needed;
    ++m_chunk->blocks;
    return new (at) Block{m_chunk} + 1;
}

void* ExifMemory::AllocateAlone(std::size_t size) noexcept
{
    Chunk* const chunk = NewChunk(sizeof(Block) + size);
    return chunk ? new (chunk + 1) Block{chunk} + 1 : nullptr;
}

void ExifMemory::Free(void* block) noexcept
{
    if (block)
        Release((static_cast<Block*>(block) - 1)->chunk);
}

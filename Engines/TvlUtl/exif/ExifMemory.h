// Memory of tags and their values: many small blocks that come and go together.
#pragma once

#include <cstddef>

/// Carves blocks out of larger chunks. Each block is freed on its own, in any order and also after the object that carved
/// it: a chunk ends with its last block. Blocks of one chunk belong to one thread at a time.
class ExifMemory {
public:
    ExifMemory() = default;
    ExifMemory(const ExifMemory&) = delete;
    ExifMemory& operator=(const ExifMemory&) = delete;
    ~ExifMemory();

    /// A block aligned for 8 bytes; null when there is no memory.
    void* Allocate(std::size_t size) noexcept;
    /// A block with a chunk of its own.
    static void* AllocateAlone(std::size_t size) noexcept;
    /// Frees a block of any object; null is left alone.
    static void Free(void* block) noexcept;

private:
    struct Chunk;
    struct Block;

    static Chunk* NewChunk(std::size_t room) noexcept;
    static void Release(Chunk* chunk) noexcept;

    Chunk* m_chunk = nullptr;      // being carved; counts as one of its blocks
    std::size_t m_left = 0;        // bytes of it that are not carved yet
    std::size_t m_chunkRoom = 0;   // bytes in the last chunk
};

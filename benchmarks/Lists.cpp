// Lists beside the bare calls that they can't do without: pushes beside realloc, memmove and the addition to a table;
// the addition beside memmove over as many bytes; lists of heap blocks beside a vector of such blocks.
#include "ListMan.h"
#include "WGList.h"

#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

constexpr char kElement[] = "ten bytes";

/// A size that compilers don't know, as no list knows those of its elements.
std::uint32_t ElementSize()
{
    std::uint32_t size = sizeof kElement;
    benchmark::DoNotOptimize(size);
    return size;
}

void Lists_Push(benchmark::State& state)
{
    const std::uint32_t elementSize = ElementSize();
    for (auto _ : state) {
        HMEM__* const list = LIST_Ctor();
        for (std::int64_t i = 0; i < state.range(0); ++i)
            LIST_Push(list, kElement, elementSize);
        LIST_Dtor(list);
    }
}

/// One block of offsets and elements that every push makes exactly as large as it must be.
void Lists_PushBare(benchmark::State& state)
{
    const std::uint32_t elementSize = ElementSize();
    for (auto _ : state) {
        auto* block = static_cast<char*>(std::malloc(sizeof(std::uint32_t)));
        std::uint32_t size = sizeof(std::uint32_t);
        std::memcpy(block, &size, sizeof size);
        for (std::uint32_t count = 0; count < state.range(0); ++count) {
            const std::uint32_t table = 4 * (count + 1);
            block = static_cast<char*>(std::realloc(block, size + 4 + elementSize));
            std::memmove(block + table + 4, block + table, size - table);
            auto* const offsets = reinterpret_cast<std::uint32_t*>(block);
            for (std::size_t i = 0; i <= count; ++i)
                offsets[i] += 4;
            size += 4 + elementSize;
            std::memcpy(block + table, &size, sizeof size);
            std::memcpy(block + size - elementSize, kElement, elementSize);
        }
        benchmark::DoNotOptimize(block);
        std::free(block);
    }
}

// A list of free slots is a table and nothing else. Filling and emptying the first one adds to every entry twice.
constexpr LONG kLargeTable = 16 << 20;   // entries, 64 MB: more than any cache

void Lists_AddToTable(benchmark::State& state)
{
    HMEM__* const list = LIST_Ctor();
    LIST_PutIth(list, kLargeTable - 2, kElement, 4);
    for (auto _ : state) {
        LIST_InsertAtFree(list, kElement, 4);
        LIST_DeleteIth(list, 0, nullptr, 0);
    }
    LIST_Dtor(list);
    state.SetBytesProcessed(state.iterations() * 2 * 4 * kLargeTable);
}

void Lists_MoveTable(benchmark::State& state)
{
    constexpr std::size_t kBytes = 4 * std::size_t{kLargeTable};
    std::vector<char> table(kBytes + 8, 1);
    for (auto _ : state) {
        std::memmove(table.data() + 4, table.data(), kBytes);
        benchmark::ClobberMemory();
        std::memmove(table.data(), table.data() + 4, kBytes);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * 2 * 4 * kLargeTable);
}

/// As the move that keeps its source: from one table to another.
void Lists_CopyTable(benchmark::State& state)
{
    constexpr std::size_t kBytes = 4 * std::size_t{kLargeTable};
    std::vector<char> source(kBytes, 1);
    std::vector<char> table(kBytes, 1);
    for (auto _ : state) {
        std::memmove(table.data(), source.data(), kBytes);
        benchmark::ClobberMemory();
        std::memmove(source.data(), table.data(), kBytes);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * 2 * 4 * kLargeTable);
}

void Lists_Insert(benchmark::State& state)
{
    const auto elementSize = static_cast<LONG>(ElementSize());
    for (auto _ : state) {
        WGList list;
        for (std::int64_t i = 0; i < state.range(0); ++i)
            list.InsertEnd(kElement, elementSize);
        benchmark::DoNotOptimize(list.GetEnd());
    }
}

void Lists_InsertIntoVector(benchmark::State& state)
{
    const std::uint32_t elementSize = ElementSize();
    struct Block {
        void* data;
        std::size_t size;
    };
    for (auto _ : state) {
        std::vector<Block> list;
        list.reserve(16);
        for (std::int64_t i = 0; i < state.range(0); ++i) {
            void* const data = std::malloc(elementSize);
            std::memcpy(data, kElement, elementSize);
            list.push_back({data, elementSize});
        }
        benchmark::DoNotOptimize(list.data());
        for (const Block& block : list)
            std::free(block.data);
    }
}

BENCHMARK(Lists_Push)->Arg(1000)->Arg(10000);
BENCHMARK(Lists_PushBare)->Arg(1000)->Arg(10000);
BENCHMARK(Lists_AddToTable);
BENCHMARK(Lists_MoveTable);
BENCHMARK(Lists_CopyTable);
BENCHMARK(Lists_Insert)->Arg(100)->Arg(1000)->Arg(10000);
BENCHMARK(Lists_InsertIntoVector)->Arg(100)->Arg(1000)->Arg(10000);

}   // namespace

// Lists beside the bare calls that they can't do without: pushes beside realloc, memmove and the addition to a table;
// the addition beside memmove over as many bytes; lists of heap blocks beside a vector of such blocks. Beside GLib's arrays
// of pointers, which offer the same: lists of blocks, and looking for an element in either list.
#include "ListMan.h"
#include "WGList.h"

#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <glib.h>
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
void Lists_AddToTable(benchmark::State& state)
{
    HMEM__* const list = LIST_Ctor();
    LIST_PutIth(list, static_cast<LONG>(state.range(0)) - 2, kElement, 4);
    for (auto _ : state) {
        LIST_InsertAtFree(list, kElement, 4);
        LIST_DeleteIth(list, 0, nullptr, 0);
    }
    LIST_Dtor(list);
    state.SetBytesProcessed(state.iterations() * 2 * 4 * state.range(0));
}

void Lists_MoveTable(benchmark::State& state)
{
    const std::size_t bytes = 4 * static_cast<std::size_t>(state.range(0));
    std::vector<char> table(bytes + 8, 1);
    for (auto _ : state) {
        std::memmove(table.data() + 4, table.data(), bytes);
        benchmark::ClobberMemory();
        std::memmove(table.data(), table.data() + 4, bytes);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * 2 * 4 * state.range(0));
}

/// As the move that keeps its source: from one table to another.
void Lists_CopyTable(benchmark::State& state)
{
    const std::size_t bytes = 4 * static_cast<std::size_t>(state.range(0));
    std::vector<char> source(bytes, 1);
    std::vector<char> table(bytes, 1);
    for (auto _ : state) {
        std::memmove(table.data(), source.data(), bytes);
        benchmark::ClobberMemory();
        std::memmove(source.data(), table.data(), bytes);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * 2 * 4 * state.range(0));
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

void Lists_InsertIntoPtrArray(benchmark::State& state)
{
    const std::uint32_t elementSize = ElementSize();
    for (auto _ : state) {
        GPtrArray* const list = g_ptr_array_new_full(16, g_free);
        for (std::int64_t i = 0; i < state.range(0); ++i)
            g_ptr_array_add(list, g_memdup2(kElement, elementSize));
        benchmark::DoNotOptimize(g_ptr_array_index(list, list->len - 1));
        g_ptr_array_free(list, TRUE);
    }
}

/// The last of elements that differ in their last byte.
constexpr char kFound[] = "ten bytez";

void Lists_FindBlock(benchmark::State& state)
{
    const auto elementSize = static_cast<LONG>(ElementSize());
    WGList list;
    for (std::int64_t i = 1; i < state.range(0); ++i)
        list.InsertEnd(kElement, elementSize);
    list.InsertEnd(kFound, elementSize);
    for (auto _ : state)
        benchmark::DoNotOptimize(list.FindCompleteElement(0, kFound, elementSize));
}

void Lists_FindPacked(benchmark::State& state)
{
    const std::uint32_t elementSize = ElementSize();
    HMEM__* const list = LIST_Ctor();
    for (std::int64_t i = 1; i < state.range(0); ++i)
        LIST_Push(list, kElement, elementSize);
    LIST_Push(list, kFound, elementSize);
    for (auto _ : state)
        benchmark::DoNotOptimize(LIST_FindCompleteElement(list, 0, kFound, elementSize));
    LIST_Dtor(list);
}

void Lists_FindBytes(benchmark::State& state)
{
    const std::uint32_t elementSize = ElementSize();
    const auto unref = [](void* bytes) { g_bytes_unref(static_cast<GBytes*>(bytes)); };
    GPtrArray* const list = g_ptr_array_new_with_free_func(unref);
    for (std::int64_t i = 1; i < state.range(0); ++i)
        g_ptr_array_add(list, g_bytes_new(kElement, elementSize));
    g_ptr_array_add(list, g_bytes_new(kFound, elementSize));
    GBytes* const key = g_bytes_new_static(kFound, elementSize);
    guint found = 0;
    for (auto _ : state) {
        g_ptr_array_find_with_equal_func(list, key, g_bytes_equal, &found);
        benchmark::DoNotOptimize(found);
    }
    g_bytes_unref(key);
    g_ptr_array_free(list, TRUE);
}

/// Calls `benchmark` with four numbers of elements.
void Elements(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgName("elements")->Arg(100)->Arg(1'000)->Arg(10'000)->Arg(100'000);
}

/// As many for pushes, each of which changes the whole table.
void Pushes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgName("elements")->Arg(250)->Arg(1'000)->Arg(2'500)->Arg(6'300)->Arg(16'000);
}

/// Tables that are of 32 MB to 256 MB, for which memory is the clock.
void Tables(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgName("entries")->RangeMultiplier(2)->Range(8 << 20, 64 << 20);
}

BENCHMARK(Lists_Push)->Apply(Pushes);
BENCHMARK(Lists_PushBare)->Apply(Pushes);
BENCHMARK(Lists_AddToTable)->Apply(Tables);
BENCHMARK(Lists_MoveTable)->Apply(Tables);
BENCHMARK(Lists_CopyTable)->Apply(Tables);
BENCHMARK(Lists_Insert)->Apply(Elements);
BENCHMARK(Lists_InsertIntoVector)->Apply(Elements);
BENCHMARK(Lists_InsertIntoPtrArray)->Apply(Elements);
BENCHMARK(Lists_FindBlock)->Apply(Elements);
BENCHMARK(Lists_FindPacked)->Apply(Elements);
BENCHMARK(Lists_FindBytes)->Apply(Elements);

}   // namespace

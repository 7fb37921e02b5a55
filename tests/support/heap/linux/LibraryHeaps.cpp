// Brings the allocations of libraries behind the stand-ins to FailingHeap: those that let a program choose their heap.
// For programs whose stand-ins lie in a shared library.
#include "FailingHeap.h"

#include <cstdlib>
#include <pugixml.hpp>
#include <sqlite3.h>

namespace {
sqlite3_mem_methods sqlite;   // as SQLite has them by itself

void* AllocateForSqlite(int size) { return FailingHeap::Admit() ? sqlite.xMalloc(size) : nullptr; }
void* ReallocateForSqlite(void* block, int size)
{
    return FailingHeap::Admit() ? sqlite.xRealloc(block, size) : nullptr;
}

void* AllocateForPugixml(std::size_t size) { return std::malloc(size); }   // which is FailingHeap's in this program
void FreeForPugixml(void* block) { std::free(block); }

/// Stands before main: SQLite takes no other heap once it has been used, and what pugixml has made goes to the one that it
/// came from.
[[maybe_unused]] const bool isReached = [] {
    pugi::set_memory_management_functions(AllocateForPugixml, FreeForPugixml);
    sqlite3_config(SQLITE_CONFIG_GETMALLOC, &sqlite);
    sqlite3_mem_methods failing = sqlite;
    failing.xMalloc = AllocateForSqlite;
    failing.xRealloc = ReallocateForSqlite;
    if (sqlite3_config(SQLITE_CONFIG_MALLOC, &failing) != SQLITE_OK)
        std::abort();
    return true;
}();
}   // namespace

// Allocations that fail when a test wants it. For programs built with FAILING_HEAP (cmake/TvlTargets.cmake): their
// operator new and their objects' calls of malloc, calloc and realloc go through here. What a shared library allocates
// by itself is counted on linux alone: what it takes by operator new and, in programs with heap/linux/LibraryHeaps.cpp, what
// pugixml and SQLite take. Allocations of libzip and ICU are never counted.
#pragma once

#include "FaultWalk.h"

/// Counts the allocations of one thread for as long as the object lives, and fails one of them, or all from one on. One
/// object at a time.
class FailingHeap {
public:
    static constexpr int kNever = -1;

    enum class Extent {
        Once,    ///< the allocations behind the one that fails succeed
        Onward   ///< they fail as well: nothing is left of the heap
    };

    /// @param point how many allocations succeed before the one that fails; kNever only counts
    explicit FailingHeap(int point, Extent extent = Extent::Once);
    ~FailingHeap();
    FailingHeap(const FailingHeap&) = delete;
    FailingHeap& operator=(const FailingHeap&) = delete;

    /// Allocations so far, the failed one included.
    int Count() const;
    /// How many were failed.
    int CountFailed() const;
    /// Whether one was failed.
    bool HasFailed() const;

    /// Counts an allocation that is about to be made; false when it is the one to fail. For the heap's own functions, and
    /// those that a library is given.
    static bool Admit();
};

/// Runs an operation with its first allocation failing, then with its second, and so on until it goes through
/// untouched. After each run `check` is told whether an allocation was failed; it clears away what the run made.
/// Fails the test when the walk was shorter than `recorded` allocations, which says that the seam has come loose.
template <class Operation, class Check>
void FailEachAllocation(int recorded, Operation operation, Check check)
{
    WalkFaultPoints(static_cast<std::size_t>(recorded), [&](std::size_t point) {
        bool failed = false;
        {
            const FailingHeap heap(static_cast<int>(point) - 1);
            operation();
            failed = heap.HasFailed();
        }
        check(failed);
        return failed;
    });
}

// Operations that are tried with each of their allocations failing, in tables of one area each.
#pragma once

#include <functional>
#include <memory>
#include <vector>

/// How a run of an operation went.
struct HeapRun {
    bool hasFailed = false;   // an allocation was failed
    bool hasThrown = false;   // std::bad_alloc came out

    /// Whether the operation had all that it wanted: it must have done all that it does.
    bool IsSound() const { return !hasFailed; }
};

/// One run in a world of its own. `run` may be called again: it then finds what the run before has left.
struct HeapTrial {
    std::function<void()> run;
    /// Looks at what a run has left, on a sound heap.
    std::function<void(const HeapRun&)> check;
};

struct HeapOperation {
    const char* name;
    std::function<HeapTrial()> begin;   // makes the world of one run
};

/// A row of a table.
/// @tparam State the world, made anew for each run and shared by the two functions
/// @param run    the operation; std::bad_alloc may leave it
/// @param check  what must hold behind it, whatever failed; when the run was sound its whole result
template <class State>
HeapOperation Row(const char* name, void (*run)(State&), void (*check)(State&, const HeapRun&))
{
    return {name, [run, check] {
                const auto state = std::make_shared<State>();
                return HeapTrial{
                    [run, state] { run(*state); }, [check, state](const HeapRun& outcome) { check(*state, outcome); }};
            }};
}

using HeapOperations = std::vector<HeapOperation>;

// One function for each area, in a file of its own.
HeapOperations FrameOperations();
HeapOperations ListOperations();
HeapOperations UnitOperations();
HeapOperations ProceduralUnitOperations();
HeapOperations ParserOperations();
HeapOperations SmartValueOperations();
HeapOperations PaperOperations();
HeapOperations LanguageOperations();
HeapOperations EnvironmentOperations();
HeapOperations RegistryOperations();
HeapOperations FileOperations();
HeapOperations ContainerOperations();
HeapOperations WorkspaceOperations();
HeapOperations ManagerOperations();
HeapOperations TrackingOperations();
HeapOperations ProgressOperations();
HeapOperations ExifOperations();
HeapOperations DuplicationOperations();

// Operations that are tried with each of their allocations failing, in tables of one area each.
#pragma once

#include <functional>
#include <memory>
#include <vector>

/// How a run of an operation went.
struct HeapRun {
    /// Something was missing, and the operation may have left out its work: it has told so, or is a silent one.
    bool hasFailed = false;
    bool hasThrown = false;   // std::bad_alloc came out
    bool hasMoved =
        false;   // nothing was missing, but the user chose another region on the way: texts may be of that one

    /// Whether the operation had all that it wanted: it must have done all that it does.
    bool IsSound() const { return !hasFailed; }
};

/// One run in a world of its own. `run` may be called again: it then finds what the run before has left.
struct HeapTrial {
    std::function<void()> run;
    /// Whether the run before has told that its work is not done, other than by std::bad_alloc.
    std::function<bool()> tells;
    /// Looks at what a run has left, on a sound heap.
    std::function<void(const HeapRun&)> check;
};

struct HeapOperation {
    const char* name;
    std::function<HeapTrial()> begin;   // makes the world of one run
    /// It goes on without what it has no memory for, and tells nobody. Any other one whose allocation failed has told so,
    /// or has done all of its work.
    bool isSilent = false;
};

/// A row of a table.
/// @tparam State the world, made anew for each run and shared by the functions
/// @param run    the operation; std::bad_alloc may leave it
/// @param check  what must hold behind it, whatever failed; when the run was sound its whole result
/// @param tells  whether a run has given what the header says of a failure: a value, an empty text. Null for an operation
///               that throws std::bad_alloc and tells in no other way.
template <class State>
HeapOperation Row(
    const char* name, void (*run)(State&), void (*check)(State&, const HeapRun&), bool (*tells)(State&) = nullptr)
{
    return {name, [run, check, tells] {
                const auto state = std::make_shared<State>();
                return HeapTrial{[run, state] { run(*state); }, [tells, state] { return tells && tells(*state); },
                    [check, state](const HeapRun& outcome) { check(*state, outcome); }};
            }};
}

/// The row of an operation that goes on without, and tells nobody.
template <class State>
HeapOperation SilentRow(const char* name, void (*run)(State&), void (*check)(State&, const HeapRun&))
{
    HeapOperation operation = Row<State>(name, run, check);
    operation.isSilent = true;
    return operation;
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
HeapOperations SystemRegistryOperations();
HeapOperations XmlOperations();

// Operations that write files, tried with each of their file operations failing, being cut short, or being the last one of
// the process.
#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <vector>

class MemoryFiles;

/// How a run of an operation went.
struct FileRun {
    bool hasFailed = false;      // a fault happened
    bool isDone = false;         // the operation has told that its work is done, before the process ended if it did
    bool isSystemDown = false;   // what was not flushed is gone or torn, in this run or one before it
};

/// One run in a world of its own. `run` may be called again: it then finds what the run before has left.
struct FileTrial {
    MemoryFiles* files;
    std::function<bool()> run;   // whether the operation tells that it is done
    /// Looks at what a run has left: the old state or the new one, and the new one when the run was done.
    std::function<void(const FileRun&)> check;
    /// What a process that ends forgets.
    std::function<void()> forget;
};

struct FileOperation {
    const char* name;
    std::size_t recorded;   // file operations that it is known to do; fewer of them say that the seam has come loose
    /// Makes the world of a trial. A second run writes every file that a first one did: what a failed writer could not take
    /// away from beside a file goes with the next success on that file, and on no other.
    std::function<FileTrial()> begin;
    /// Whether it writes more than a byte at once, which can be cut short.
    bool writesBytes = true;

    friend void PrintTo(const FileOperation& operation, std::ostream* out) { *out << operation.name; }
};

/// A row of a table.
/// @tparam State the world, made anew for each run: its `world` has the files, its Forget() ends a process
template <class State>
FileOperation FileRow(
    const char* name, std::size_t recorded, bool (*run)(State&), void (*check)(State&, const FileRun&))
{
    return {name, recorded, [run, check] {
                const auto state = std::make_shared<State>();
                return FileTrial{&state->world.files, [run, state] { return run(*state); },
                    [check, state](const FileRun& outcome) { check(*state, outcome); }, [state] { state->Forget(); }};
            }};
}

/// The row of an operation that makes, renames, removes and marks files, and writes nothing into them.
template <class State>
FileOperation RowWithoutWrites(
    const char* name, std::size_t recorded, bool (*run)(State&), void (*check)(State&, const FileRun&))
{
    FileOperation operation = FileRow<State>(name, recorded, run, check);
    operation.writesBytes = false;
    return operation;
}

using FileOperations = std::vector<FileOperation>;

// One function for each group, in a file of its own.
FileOperations WritesOfWorkspaces();
FileOperations WritesOfManagers();
FileOperations WritesOfTheUser();
FileOperations WritesOfPapers();
FileOperations WritesOfContent();

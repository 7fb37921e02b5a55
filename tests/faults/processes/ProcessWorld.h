// A suite and a user on the disk, a ledger beside them, and the processes that work there.
#pragma once

#include "ChildProcess.h"
#include "SettingsText.h"

#include <map>
#include <set>
#include <string>
#include <vector>

/// What fault_worker has told of a start, and of the files.
struct State {
    std::set<std::string> papers;
    int predefined = 0;
    std::map<std::string, SettingsOwner> workspaces;   // by name, whose settings they have
    std::map<std::string, SettingsOwner> kept;         // the same of those that could not be saved
    std::string current;
    SettingsOwner settings;               // on disk
    SettingsOwner preferences;            // in the registry
    SettingsOwner extracted;              // in the file that was extracted
    std::string preference;               // the one that is stored by itself
    std::string language;                 // of the user interface
    std::vector<std::string> leftovers;   // files that only a process at work has
};

/// What was begun and done, as the ledger tells.
struct Entries {
    std::set<std::string> begun;
    std::string lastDone;                 // empty for none
    std::string lastBegun;                // empty for none
    std::vector<std::string> all;         // done, in order
    std::map<std::string, int> changed;   // workspaces whose settings were changed on disk, with their last age
};

/// What a process has counted while it did its work.
struct Counted {
    int met = 0;   // faults
    int allocations = 0;
    int files = 0;      // operations on files
    int database = 0;   // operations on the registry's database
};

using Variables = std::map<std::string, std::string>;

/// A process that has run, and what it told; nothing when it was ended in the middle.
struct WorkerResult {
    int exitCode = -1;
    std::string errors;
    Counted counted;
};

class ProcessWorld {
public:
    ProcessWorld();

    /// Runs a kind of work of fault_worker, with variables of the environment that give it faults.
    WorkerResult Work(const std::string& work, int times, const Variables& variables = {}) const;
    /// Runs it and ends it after a time, wherever it is then.
    WorkerResult WorkUntil(const std::string& work, int times, std::chrono::microseconds killAfter) const;
    /// The work in a process that has a ledger of its own.
    WorkerResult WorkBeside(const std::string& work, int times, const std::string& ledger) const;
    /// Comes up as an application does, with variables of the environment that give it faults.
    WorkerResult Start(const Variables& variables) const;
    /// What a start without faults finds.
    State Check() const;
    Entries Ledger(const std::string& name = "ledger") const;
    void ClearLedger() const;

private:
    std::string Native(const std::string& name) const { return (m_folder.Path() / name).string(); }
    ChildProcess Worker(std::vector<std::string> arguments, const Variables& variables = {}) const;

    ScratchFolder m_folder;
};

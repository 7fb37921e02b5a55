// A suite and a user on the disk, a ledger beside them, and the processes that work there.
#pragma once

#include "ChildProcess.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// What fault_worker has told of a start, and of the files.
struct State {
    bool isThere = false;   // the start came to its end
    std::set<std::string> papers;
    int predefined = 0;
    std::map<std::string, std::string> workspaces;   // name, and the name in its settings
    std::string current;
    std::string settings;                 // the name in the settings on disk
    int preferences = 0;                  // values
    std::string preferred;                // the name among the preferences
    std::string extracted;                // the name in the file that was extracted
    std::string preference;               // the one that is stored by itself
    std::string language;                 // of the user interface
    std::vector<std::string> leftovers;   // files that only a process at work has
};

/// What was begun and done, as the ledger tells.
struct Entries {
    std::set<std::string> done;
    std::string lastDone;           // empty for none
    std::string lastBegun;          // empty for none
    std::vector<std::string> all;   // done, in order
};

class ProcessWorld {
public:
    ProcessWorld();

    /// Runs a kind of work of fault_worker to its end, or wherever `kill` lets it end.
    template <class Kill>
    ChildResult Work(const std::string& work, int times, Kill kill) const
    {
        ChildProcess child = Worker({work, Native("ledger"), std::to_string(times)});
        kill(child);
        return RunProgram(child);
    }
    ChildResult Work(const std::string& work, int times) const
    {
        return Work(work, times, [](ChildProcess&) {});
    }
    /// The work in a process that has a ledger of its own.
    ChildResult WorkBeside(const std::string& work, int times, const std::string& ledger) const
    {
        return RunProgram(Worker({work, Native(ledger), std::to_string(times)}));
    }
    /// Starts as an application does.
    State Start() const;
    /// The same with faults in it; its exit code.
    int StartWithFault(const std::map<std::string, std::string>& variables) const;
    Entries Ledger(const std::string& name = "ledger") const;
    void ClearLedger() const;

    static constexpr int kPreferences = 21;   // values of the settings of each workspace

private:
    std::string Native(const std::string& name) const { return (m_folder.Path() / name).string(); }
    ChildProcess Worker(std::vector<std::string> arguments) const;

    ScratchFolder m_folder;
};

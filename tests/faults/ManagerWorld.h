// A user with workspaces, in the files of one run.
#pragma once

#include "WorkspaceFaultWorld.h"
#include "WorkspaceManager.h"

#include <memory>

/// The workspaces "_default", "A" and "B"; "_default" is current.
struct ManagerWorld : WorkspaceFaultWorld {
    ManagerWorld();

    /// A manager that has come up.
    static std::unique_ptr<WorkspaceManager> Start();
    /// Ends a start of an earlier run, and begins another.
    void Restart() { manager = Start(); }
    /// The manager, started when it is not there: a run that could not end it leaves it for the next.
    WorkspaceManager& Manager();
    /// Ends the application, as long as it runs, in the way that it should.
    void End();
    /// What a process that starts now finds: all workspaces with settings of their own, and a current one.
    /// @see mayMix
    void CheckNextStart();

    /// A start that could not list the workspaces takes another one for the current one, and its end saves the settings on
    /// disk there: a known limit, docs/reliability.md. Settings are those of some workspace then.
    bool mayMix = false;
    std::unique_ptr<WorkspaceManager> manager;
    WorkspaceManagerTypes::Result result{};
};

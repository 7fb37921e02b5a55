// A user with workspaces, in the files of one run.
#pragma once

#include "WorkspaceFaultWorld.h"
#include "WorkspaceManager.h"

#include <memory>
#include <vector>

/// The workspaces "_default", "A" and "B"; "_default" is current, and its settings are the preferences. The suite has
/// "Stock", which the first start copies.
struct ManagerWorld : WorkspaceFaultWorld {
    ManagerWorld();

    /// Additional files of the application.
    static std::vector<WorkspaceFile::FilePair> AdditionalFiles();
    /// A manager that has come up; with `reset` it has reset the current workspace before.
    static std::unique_ptr<WorkspaceManager> Start(bool reset = false);
    /// Ends a start of an earlier run, and begins another.
    void Restart() { manager = Start(); }
    /// The manager, started when it is not there: a run that could not end it leaves it for the next.
    WorkspaceManager& Manager();
    /// Ends the application, as long as it runs, in the way that it should, and its process.
    void End();
    /// Ends the application's process.
    void Forget();
    /// What a process that starts now finds: all workspaces with settings of their own, and one of them current, whose
    /// settings are those on disk and the preferences.
    void CheckNextStart();
    /// The preference "Name" in the section "Test", or "none".
    static std::string Preference();

    std::string defaultSettings = SettingsText("_default");   // which that workspace is to have
    std::unique_ptr<WorkspaceManager> manager;
    WorkspaceManagerTypes::Result result = WorkspaceManagerTypes::Result::InitFailed;
};

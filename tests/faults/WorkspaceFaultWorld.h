// Workspaces in the files of one run.
#pragma once

#include "FaultWorld.h"

#include <string>

inline constexpr const wchar_t* kSettingsEntry = L"content/settings.ini";
inline constexpr const wchar_t* kOtherEntry = L"content/other";

/// Bytes of a workspace with these settings and the entry kOtherEntry, which holds "other".
const std::string& WorkspaceBytes(const std::string& settings);
/// Settings of the workspaces that the worlds have: the value "Name" of the section "Test".
std::string SettingsText(const std::string& name);

/// Makes the workspaces, in a world of their own, before another one begins.
struct WorkspacesMade {
    WorkspacesMade();
};

struct WorkspaceFaultWorld : WorkspacesMade {
    /// One of the workspaces that were made: with the settings "old", or the SettingsText of "_default", "A" or "B".
    void PutWorkspace(const std::string& name, const std::string& settings);
    /// Bytes of an entry, or "none".
    static std::string EntryOf(const std::string& name, const TvlString& entry);

    FaultWorld world;
};

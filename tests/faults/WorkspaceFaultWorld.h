// Workspaces in the files of one run.
#pragma once

#include "FaultWorld.h"

#include <string>

inline constexpr const wchar_t* kSettingsEntry = L"content/settings.ini";
inline constexpr const wchar_t* kOtherEntry = L"content/other";

inline constexpr const wchar_t* kExtraEntry = L"content/extra";   // an additional file of the application's

/// Bytes of a workspace with these settings, the entry kOtherEntry, which holds "other", and the additional file of the
/// settings.
const std::string& WorkspaceBytes(const std::string& settings);
/// What the additional file holds of a workspace that was made with these settings.
std::string ExtraOf(const std::string& settings);
/// Settings of the workspaces that the worlds have: the value "Name" of the section "Test".
std::string SettingsText(const std::string& name);

/// Makes the workspaces, in a world of their own, before another one begins.
struct WorkspacesMade {
    WorkspacesMade();
};

struct WorkspaceFaultWorld : WorkspacesMade {
    /// One of the workspaces that were made: with the settings "old", or the SettingsText of "_default", "A", "B" or "stock".
    void PutWorkspace(const std::string& name, const std::string& settings);
    /// A workspace from before there were identifiers, with a title, whose configuration carries an identity.
    void PutOldWorkspace(const std::string& name);
    /// It has its title, that identity, and one of its own.
    static void CheckOldWorkspace(const std::string& name);
    /// Bytes of an entry, or "none".
    static std::string EntryOf(const std::string& name, const TvlString& entry);

    FaultWorld world;
};

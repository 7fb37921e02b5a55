// What a start finds.
#pragma once

#include "../SettingsText.h"
#include "WorkspaceManager.h"

#include <memory>
#include <string>

/// A manager that has come up.
std::unique_ptr<WorkspaceManager> StartManager();
/// Full path of a file of the user's.
TvlString UserFile(const wchar_t* name);
/// Full path of a workspace of the user's.
TvlString WorkspacePath(const std::string& name);
/// Full path of the settings on disk.
TvlString SettingsFile();
/// Whose the settings of a file are.
SettingsOwner OwnerInFile(const TvlString& path);

/// A preference of one word, in the registry; "?" when there is none.
std::string StoredPreference();
bool StorePreference(const std::string& value);
/// Name of the workspace that the next start begins with, as the registry has it; empty when there is none.
std::string StoredWorkspace();
/// Whether settings are noted as not yet made preferences.
bool IsApplying();

/// Comes up as an application does: papers, workspaces, language.
void Start();

/// Comes up, and tells what is there, one line each. OWNER is whose all settings there are, with their age; see
/// SettingsText.h.
///
///   paper NAME             a paper of the user's own
///   predefined COUNT       papers of the suite
///   workspace NAME OWNER   a workspace, and its settings; "torn" as well when another entry of it can't be read
///   kept NAME OWNER        settings that are kept for a workspace, which could not be saved into it
///   current NAME OWNER     the current one, and the settings on disk
///   preferences OWNER      the same of the preferences
///   extracted OWNER        the same of the file that was extracted
///   preferred VALUE LANGUAGE   the preference that StorePreference stores, and the language of the user interface
///   file NAME              each file of the user's
std::string ReportState();

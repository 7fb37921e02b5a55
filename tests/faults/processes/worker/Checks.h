// What a start finds.
#pragma once

#include "WorkspaceManager.h"

#include <memory>
#include <string>

/// A manager that has come up.
std::unique_ptr<WorkspaceManager> StartManager();
/// Full path of a file of the user's.
TvlString UserFile(const wchar_t* name);
/// Full path of a workspace of the user's.
TvlString WorkspacePath(const std::string& name);

/// A preference of one word, in the registry; "?" when there is none.
std::string StoredPreference();
bool StorePreference(const std::string& value);

/// Comes up as an application does, and tells what is there, one line each:
///
///   paper NAME             a paper of the user's own
///   predefined COUNT       papers of the suite
///   workspace NAME VALUE   a workspace, and the value "Name" of its settings; "?" when it can't be read
///   current NAME VALUE     the current one, and the same value of the settings on disk
///   preferences COUNT VALUE   values of the preferences, and the same value among them
///   extracted VALUE        the same value of the file that was extracted
///   preferred VALUE LANGUAGE   the preference that StorePreference stores, and the language of the user interface
///   file NAME              each file of the user's
std::string ReportState();

// Settings that could not be saved into their workspace.
#pragma once

#include "WorkspaceFile.h"

#include <optional>

/// They are kept beside the settings on disk, in "<settings>.unsaved.<workspace>", before those of another workspace take
/// their place there, and are put back when the workspace's own are extracted the next time. What is kept goes when they have
/// been saved. Calls are made by who excludes other processes.
namespace UnsavedSettings {

using Files = std::vector<WorkspaceFile::FilePair>;

/// Saves the settings, and the files that go with them, into their workspace. When that fails they are kept; what can't even
/// be kept is noted as SettingsOrigin::Lack::Unsaved.
void Save(WorkspaceFile& workspace, const TvlString& settings, const Files& files);
/// Tries again to keep what could not be kept. False when it is on disk alone still: nothing must take its place there.
bool MakeRoom(const TvlString& settings, const Files& files);
/// Puts back what is kept for a workspace whose own settings have been extracted. Empty when nothing is kept; false when it
/// can't be put back.
std::optional<bool> PutBack(const TvlString& workspace, const TvlString& settings, const Files& files);
/// Gives up what is kept for a workspace that goes, or that begins anew.
void Forget(const TvlString& workspace, const TvlString& settings);

}   // namespace UnsavedSettings

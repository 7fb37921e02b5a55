// Settings that could not be saved into their workspace.
#pragma once

#include "WorkspaceFile.h"

#include <optional>

struct SettingsEntries;

/// The settings on disk, and the files that go with them, of an application. Those that can't be saved are kept beside them,
/// in "<settings>.<workspace>.unsaved", before those of another workspace take their place there, and are put back when the
/// workspace's own are extracted the next time. What is kept goes when it has been saved. Applications that share the settings
/// have files of their own, which are kept, and saved, side by side. Calls are made by who excludes other processes.
class UnsavedSettings {
public:
    using Files = std::vector<WorkspaceFile::FilePair>;

    /// @param application any text that tells it from others
    /// All of them must outlive the object.
    UnsavedSettings(const TvlString& settings, const Files& files, const TvlString& application)
        : m_settings(settings), m_files(files), m_application(application)
    {
    }

    /// Saves the settings, and the files that go with them, into their workspace. When that fails they are kept; what can't
    /// even be kept is noted as SettingsOrigin::Lack::Unsaved. What no workspace can ever take is left out.
    void Save(WorkspaceFile& workspace) const;
    /// Keeps what a process that has died left unsaved of another workspace than `workspace`, or notes it so.
    void KeepLeft(const TvlString& workspace) const;
    /// Tries again to keep what could not be kept. False when it is on disk alone still: nothing must take its place there.
    bool MakeRoom() const;
    /// Puts back what is kept for a workspace whose own settings have been extracted. Empty when no settings are kept; false
    /// when something can't be put back.
    std::optional<bool> PutBack(const TvlString& workspace) const;
    /// Gives up what is kept for a workspace that goes, or that begins anew.
    static void Forget(const TvlString& workspace, const TvlString& settings);

private:
    bool Keep(const TvlString& workspace, const SettingsEntries& entries) const;
    bool SaveOthers(const TvlString& workspace) const;
    bool Secure(const TvlString& workspace) const;

    const TvlString& m_settings;
    const Files& m_files;
    const TvlString& m_application;
};

// Settings on disk, and the files that go with them, on their way into a container.
#pragma once

#include "WorkspaceFile.h"
#include "siblings/TvrContainer/WorkspaceContainer.h"

#include <string>
#include <utility>
#include <vector>

struct SettingsEntries {
    std::vector<std::pair<TvlString, std::string>> files;   // names in the container, and bytes; the settings' own last
    bool hasSettings = false;
    bool isWhole = true;   // false when one can't be read for now

    /// Reads those that are there. What no workspace could ever take is left out, with a line in the log: a folder, or a
    /// file of more bytes than an entry may have.
    static SettingsEntries Read(const TvlString& settings, const std::vector<WorkspaceFile::FilePair>& files);
    /// False when the settings are not among what the container takes. It takes no file by a name that it refuses.
    bool AddTo(WorkspaceContainer& container) const;
};

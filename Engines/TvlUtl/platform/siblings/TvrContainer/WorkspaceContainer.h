// Containers of workspaces, *.tvws.
#pragma once

#include "siblings/TvrContainer/DocContainer.h"

/// One workspace.
class TVLSIBLINGS_API WorkspaceContainer : public DocContainer {
public:
    /// No container: false, and every operation fails.
    WorkspaceContainer() = default;

    /// Opens an existing workspace. For writing, a file that is marked read-only is refused.
    static WorkspaceContainer Open(const TvlString& path, ZipFile::OpenMode mode);
    /// Begins a new workspace.
    static WorkspaceContainer Create(const TvlString& path);

private:
    using DocContainer::DocContainer;
};

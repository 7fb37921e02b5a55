// The kinds of containers.
#include "TvrContainer/ContainerState.h"
#include "siblings/TvrContainer/TvrContainer.h"
#include "siblings/TvrContainer/WorkspaceContainer.h"

WorkspaceContainer WorkspaceContainer::Open(const TvlString& path, ZipFile::OpenMode mode)
{
    return WorkspaceContainer(OpenState(path, mode));
}

WorkspaceContainer WorkspaceContainer::Create(const TvlString& path) { return WorkspaceContainer(CreateState(path)); }

TvrContainer TvrContainer::Open(
    const TvlString& path, ZipFile::OpenMode mode, RootFileInfo*, const Tvl::PathResolver&, bool, bool)
{
    return TvrContainer(OpenState(path, mode));
}

// How much of a workspace is taken out of its file: files come from strangers.
#pragma once

#include <cstddef>

/// The most bytes that settings or an icon may have, unpacked: the preference "Workspaces/MaxEntryMegabytes" in MiB, 64
/// until the user sets it.
long long MaxWorkspaceEntryBytes();
/// The most icons that are taken: the preference "Workspaces/MaxIcons", 1000 until the user sets it.
std::size_t MaxWorkspaceIcons();

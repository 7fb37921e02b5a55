// How much of a workspace is taken out of its file: files come from strangers.
#pragma once

#include "siblings/TvlPlatform/TvlString.h"

#include <cstddef>

/// The most bytes that settings or an icon may have, unpacked: the preference "Workspaces/MaxEntryMegabytes" in MiB, 64
/// until the user sets it.
long long MaxWorkspaceEntryBytes();
/// The most icons that are taken: the preference "Workspaces/MaxIcons", 1000 until the user sets it.
std::size_t MaxWorkspaceIcons();

/// What may still be taken of a workspace's icons: so many as MaxWorkspaceIcons says, and of all together so many bytes as
/// one entry may have. Small files can hold the bytes of thousands of large ones.
class IconAllowance {
public:
    explicit IconAllowance(const TvlString& workspace) : m_workspace(workspace) { }
    /// Whether one more may be taken; says in the log when it may not.
    bool HasRoom() const;
    void Take(long long bytes);

private:
    TvlString m_workspace;   // its path
    std::size_t m_icons = MaxWorkspaceIcons();
    long long m_bytes = MaxWorkspaceEntryBytes();   // negative when the last one was more than was left
};

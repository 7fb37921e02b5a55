// Access grants for folders that the user picked, where a sandboxed system demands them. A bookmark is a stored grant for a
// folder under a name.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

namespace TvlUtils::SystemIO {

/// A system's grants. Neither target of this tree has any: there all operations fail, and nothing is demanded.
class TVLSIBLINGS_API BookmarkProvider {
public:
    /// The system's, or the one that stands in for it.
    static BookmarkProvider& Get();
    /// Replaces the system's; null restores it. The caller keeps ownership.
    static void SetForTests(BookmarkProvider*);

    virtual ~BookmarkProvider() = default;
    /// Whether the system keeps grants at all.
    virtual bool Supported() const = 0;
    /// Whether a folder can't be used without one.
    virtual bool Required() const = 0;
    /// Stores the grant of a folder that the user has just picked; false when there is none to store.
    virtual bool Save(const TvlString& path, const TvlString& name) = 0;
    /// Forgets a grant; false when there was none.
    virtual bool Remove(const TvlString& path, const TvlString& name) = 0;
    /// Opens a stored grant for this process.
    virtual bool StartAccess(const TvlString& path, const TvlString& name) = 0;
};

/// The grants of BookmarkProvider::Get, by functions.
namespace Bookmark {

/// BookmarkProvider::Supported of the system's grants.
TVLSIBLINGS_API bool DoesSupportFileSecurityBookmarks();
/// BookmarkProvider::Required of the system's grants.
TVLSIBLINGS_API bool RequireUserPermissionToFileSystem();
/// Stores the grant of a folder that the user has just picked; false when the process has none to store.
TVLSIBLINGS_API bool SaveOpenPathToBookmarks(const TvlString& path, const TvlString& name);
/// Forgets a grant; false when there was none.
TVLSIBLINGS_API bool RemoveBookmark(const TvlString& path, const TvlString& name);
/// Opens a stored grant for this process; false when there is none or the folder has gone.
TVLSIBLINGS_API bool StartAccessingSecurityScopedResource(const TvlString& path, const TvlString& name);

}   // namespace Bookmark

}   // namespace TvlUtils::SystemIO

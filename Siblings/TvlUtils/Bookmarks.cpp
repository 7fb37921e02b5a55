#include "siblings/TvlUtils/Bookmarks.h"

#include <atomic>

namespace TvlUtils::SystemIO {

namespace {
class NoBookmarks final : public BookmarkProvider {
public:
    bool Supported() const override { return false; }
    bool Required() const override { return false; }
    bool Save(const TvlString&, const TvlString&) override { return false; }
    bool Remove(const TvlString&, const TvlString&) override { return false; }
    bool StartAccess(const TvlString&, const TvlString&) override { return false; }
};

std::atomic<BookmarkProvider*> replacement = nullptr;
}   // namespace

BookmarkProvider& BookmarkProvider::Get()
{
    static NoBookmarks none;
    BookmarkProvider* const replaced = replacement.load(std::memory_order_acquire);
    return replaced ? *replaced : none;
}

void BookmarkProvider::SetForTests(BookmarkProvider* provider)
{
    replacement.store(provider, std::memory_order_release);
}

namespace Bookmark {

bool DoesSupportFileSecurityBookmarks() { return BookmarkProvider::Get().Supported(); }
bool RequireUserPermissionToFileSystem() { return BookmarkProvider::Get().Required(); }

bool SaveOpenPathToBookmarks(const TvlString& path, const TvlString& name)
{
    return BookmarkProvider::Get().Save(path, name);
}

bool RemoveBookmark(const TvlString& path, const TvlString& name) { return BookmarkProvider::Get().Remove(path, name); }

bool StartAccessingSecurityScopedResource(const TvlString& path, const TvlString& name)
{
    return BookmarkProvider::Get().StartAccess(path, name);
}

}   // namespace Bookmark

}   // namespace TvlUtils::SystemIO

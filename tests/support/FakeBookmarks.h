// A system that keeps access grants, in the real one's place as long as the object lives.
#pragma once

#include "siblings/TvlUtils/Bookmarks.h"

#include <set>
#include <utility>

class FakeBookmarks : public TvlUtils::SystemIO::BookmarkProvider {
public:
    using Grant = std::pair<TvlString, TvlString>;   // folder and name

    FakeBookmarks() { SetForTests(this); }
    FakeBookmarks(const FakeBookmarks&) = delete;
    FakeBookmarks& operator=(const FakeBookmarks&) = delete;
    ~FakeBookmarks() override { SetForTests(nullptr); }

    bool Supported() const override { return true; }
    bool Required() const override { return required; }
    bool Save(const TvlString& path, const TvlString& name) override { return grants.emplace(path, name).second; }
    bool Remove(const TvlString& path, const TvlString& name) override { return grants.erase({path, name}) > 0; }
    bool StartAccess(const TvlString& path, const TvlString& name) override
    {
        started.emplace(path, name);
        return grants.contains({path, name});
    }

    bool required = true;
    std::set<Grant> grants;
    std::set<Grant> started;
};

// Files by mask.
#include "siblings/TvlUtils/SystemIO.h"

#include "TvlUtils/FileAccess.h"

#include <algorithm>

namespace TvlUtils::SystemIO::File {

namespace fs = std::filesystem;

bool MatchesMask(const TvlString& name, const TvlString& mask)
{
    if (mask == L"*.*")
        return true;
    // Where the last "*" stands, and how much of the name it has taken so far: only the last one need be tried again.
    int star = -1, taken = 0;
    int at = 0, place = 0;
    while (at < name.GetLength()) {
        const wchar_t wanted = place < mask.GetLength() ? mask.GetAt(place) : L'\0';
        if (wanted == L'*') {
            star = place++;
            taken = at;
        } else if (place < mask.GetLength() && (wanted == L'?' || TvlFoldCase(wanted) == TvlFoldCase(name.GetAt(at)))) {
            ++at;
            ++place;
        } else if (star >= 0) {
            place = star + 1;
            at = ++taken;
        } else {
            return false;
        }
    }
    while (place < mask.GetLength() && mask.GetAt(place) == L'*')
        ++place;
    return place == mask.GetLength();
}

namespace {
struct Search {
    const TvlString& mask;
    bool recursive;
    bool withFolders;
    std::vector<fs::path> waiting;   // folders to look into
    std::vector<TvlString>& found;

    FileResult LookInto(const fs::path& folder)
    {
        std::vector<FolderEntry> entries;
        if (const FileResult listed = FileLayer::Get().List(folder, entries); !listed)
            return listed;
        for (const FolderEntry& entry : entries) {
            if (entry.isLink)
                continue;
            const bool isFolder = entry.kind == FileKind::Folder;
            if ((!isFolder || withFolders) && MatchesMask(FromFilePath(entry.name), mask))
                found.push_back(FromFilePath(Within(folder, entry.name)));
            if (isFolder && recursive)
                waiting.push_back(Within(folder, entry.name));
        }
        return {};
    }
};

bool StandsBefore(const TvlString& a, const TvlString& b)
{
    const int order = a.CompareNoCase(b);
    return order != 0 ? order < 0 : a < b;
}
}   // namespace

FileResult Find(
    const TvlString& folder, const TvlString& mask, bool recursive, bool withFolders, std::vector<TvlString>& found)
{
    found.clear();
    Search search{mask, recursive, withFolders, {}, found};
    FileResult failure;
    const FileResult walked = Reported([&] {
        search.waiting.push_back(PathOf(folder));
        while (!search.waiting.empty()) {
            const fs::path next = std::move(search.waiting.back());
            search.waiting.pop_back();
            if (const FileResult looked = search.LookInto(next); !looked && failure)
                failure = looked;
        }
        return FileResult();
    });
    std::sort(found.begin(), found.end(), StandsBefore);
    return failure ? walked : failure;
}

std::vector<TvlString> Find(const TvlString& folder, const TvlString& mask, bool recursive, bool withFolders)
{
    std::vector<TvlString> found;
    static_cast<void>(Find(folder, mask, recursive, withFolders, found));
    return found;
}

}   // namespace TvlUtils::SystemIO::File

// Folders that go with all that is in them.
#include "siblings/TvlUtils/SystemIO.h"

#include "TvlUtils/FileAccess.h"
#include "Windows/PathForm.h"

#include <algorithm>

namespace TvlUtils::SystemIO {

namespace fs = std::filesystem;

namespace {
/// Whether a path is absolute and leads below its root. Of "//server/share" both elements belong to the root.
bool IsBelowRoot(const TvlString& path)
{
    if (!Path::IsFullyQualified(path))
        return false;
    const TvlString normal = Path::GetAbsolutePath(path, L"");
    const std::wstring_view text = normal;
    const bool hasServer =
        text.size() > 1 && text[0] == text[1] && kPathSeparators.find(text[0]) != std::wstring_view::npos;
    const std::size_t rootElements = DriveLength(text) > 0 ? 1 : hasServer ? 2 : 0;
    const auto elements = Path::Split(normal);
    return elements.size() > rootElements && elements.back() != L"..";
}

/// Success for a folder that is no link; where nobody can tell it is taken for one.
FileResult RefuseLink(const fs::path& path)
{
    std::vector<FolderEntry> beside;
    if (const FileResult listed = FileLayer::Get().List(path.parent_path(), beside); !listed)
        return listed;
    const auto isSame = [&](const FolderEntry& entry) { return entry.name == path.filename(); };
    // Not every system heeds the case of names.
    const auto isAlike = [name = FromFilePath(path.filename())](
                             const FolderEntry& entry) { return FromFilePath(entry.name).CompareNoCase(name) == 0; };
    auto found = std::find_if(beside.begin(), beside.end(), isSame);
    if (found == beside.end())
        found = std::find_if(beside.begin(), beside.end(), isAlike);
    if (found == beside.end())
        return std::errc::no_such_file_or_directory;
    return found->isLink ? FileResult(std::errc::too_many_symbolic_link_levels) : FileResult();
}

/// Goes on after a failure, which is the result: as much goes as can.
FileResult Empty(const fs::path& folder)
{
    std::vector<FolderEntry> entries;
    FileResult failure = FileLayer::Get().List(folder, entries);
    for (const FolderEntry& entry : entries) {
        const fs::path path = Within(folder, entry.name);
        if (entry.kind == FileKind::Folder && !entry.isLink)
            if (const FileResult emptied = Empty(path); !emptied)
                failure = emptied;
        if (const FileResult removed = FileLayer::Get().Remove(path); !removed)
            failure = removed;
    }
    return failure;
}
}   // namespace

bool Folder::DeleteRecursive(const TvlString& path, bool withFolder)
{
    return IsBelowRoot(path) && Folder::Exists(path) && static_cast<bool>(Reported([&] {
        fs::path folder = PathOf(Path::GetAbsolutePath(path, L""));
        if (!folder.has_filename())
            folder = folder.parent_path();   // a separator stood at the end
        if (const FileResult refused = RefuseLink(folder); !refused)
            return refused;
        const FileResult emptied = Empty(folder);
        return emptied && withFolder ? FileLayer::Get().Remove(folder) : emptied;
    }));
}

}   // namespace TvlUtils::SystemIO

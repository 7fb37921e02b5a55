// Folders that go with all that is in them.
#include "siblings/TvlUtils/SystemIO.h"

#include "TvlUtils/FileAccess.h"
#include "Windows/PathForm.h"

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

bool IsLink(const fs::path& path)
{
    std::vector<FolderEntry> beside;
    if (!FileLayer::Get().List(path.parent_path(), beside))
        return false;
    for (const FolderEntry& entry : beside)
        if (entry.name == path.filename())
            return entry.isLink;
    return false;
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
        if (IsLink(folder))
            return FileResult(std::errc::too_many_symbolic_link_levels);
        const FileResult emptied = Empty(folder);
        return emptied && withFolder ? FileLayer::Get().Remove(folder) : emptied;
    }));
}

}   // namespace TvlUtils::SystemIO

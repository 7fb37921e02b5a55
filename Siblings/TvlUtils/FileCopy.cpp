// Copies, and the read-only mark.
#include "siblings/TvlUtils/SystemIO.h"

#include "TvlUtils/FileAccess.h"

namespace TvlUtils::SystemIO {

namespace fs = std::filesystem;

namespace {
FileResult CopyContent(FileHandle& from, FileHandle& to)
{
    std::string piece(std::size_t{1} << 20, '\0');
    for (long long offset = 0;;) {
        std::size_t size = 0;
        if (const FileResult result = from.ReadAt(offset, piece.data(), piece.size(), size); !result)
            return result;
        if (const FileResult result = WriteWhole(to, offset, {piece.data(), size}); !result)
            return result;
        if (size < piece.size())
            return {};
        offset += static_cast<long long>(size);
    }
}

/// Success where there is nothing of this name. What can't be looked at may be there.
FileResult CheckVacant(const fs::path& path)
{
    FileStatus status;
    const FileResult found = FileLayer::Get().Stat(path, status);
    if (found)
        return std::errc::file_exists;
    return found.IsMissing() ? FileResult() : found;
}

FileResult MakeAndRemove(const fs::path& path)
{
    std::unique_ptr<FileHandle> file;
    if (const FileResult made = FileLayer::Get().Open(path, OpenMode::CreateNew, file); !made)
        return made;
    static_cast<void>(file->Close());
    const FileResult removed = FileLayer::Get().Remove(path);
    // Another process that asks has taken it for a leftover.
    return removed.IsMissing() ? FileResult() : removed;
}

bool SetMark(const TvlString& path, bool readOnly)
{
    return static_cast<bool>(Reported([&] {
        const fs::path file = PathOf(path);
        FileStatus status;
        const FileResult found = FileLayer::Get().Stat(file, status);
        return found && status.isReadOnly != readOnly ? FileLayer::Get().SetReadOnly(file, readOnly) : found;
    }));
}
}   // namespace

namespace File {

bool IsWritable(const TvlString& path)
{
    FileStatus status;
    return Reported([&] { return FileLayer::Get().Stat(PathOf(path), status); }) && status.kind == FileKind::File
        && !status.isReadOnly;
}

bool MakeWritable(const TvlString& path) { return SetMark(path, false); }
bool MakeReadonly(const TvlString& path) { return SetMark(path, true); }

FileResult Copy(const TvlString& from, const TvlString& to, bool overwrite)
{
    return Reported([&] {
        if (const FileResult vacant = overwrite ? FileResult() : CheckVacant(PathOf(to)); !vacant)
            return vacant;
        std::unique_ptr<FileHandle> source;
        if (const FileResult opened = FileLayer::Get().Open(PathOf(from), OpenMode::Read, source); !opened)
            return opened;
        // Not every system replaces a file that is being read.
        if (Path::Contains(from, to) && Path::Contains(to, from))
            return FileResult();
        return ReplaceFile(PathOf(to), [&](FileHandle& target) { return CopyContent(*source, target); });
    });
}

}   // namespace File

namespace Folder {

bool IsWritable(const TvlString& path, WritableStatus* status)
{
    WritableStatus found = WritableStatus::Missing;
    if (Exists(path)) {
        // A folder's mark and rights don't tell all: the file system may be read-only as a whole.
        const bool written = static_cast<bool>(Reported([&] {
            const FileResult result = MakeAndRemove(Within(PathOf(path), UniqueSuffix()));
            RemoveLeftovers(Within(PathOf(path), fs::path()));
            return result;
        }));
        found = written ? WritableStatus::Writable : WritableStatus::Refused;
    }
    if (status)
        *status = found;
    return found == WritableStatus::Writable;
}

FileResult Copy(const TvlString& from, const TvlString& to, bool overwrite)
{
    const TvlString source = Path::AddBackslash(from);
    if (!Exists(source))
        return std::errc::no_such_file_or_directory;
    if (Path::Contains(source, to) && Path::Contains(to, source))
        return {};
    const bool isInside = Path::Contains(source, to);
    std::vector<TvlString> entries;
    FileResult failure = File::Find(source, L"*", true, true, entries);   // before anything is made
    if (const FileResult made = EnsureExists(to); !made)
        failure = made;
    for (const TvlString& entry : entries) {
        if (isInside && Path::Contains(to, entry))
            continue;
        const TvlString target = Path::Combine(to, entry.Mid(source.GetLength()));
        FileResult result;
        if (Exists(entry))
            result = EnsureExists(target);
        else
            result = File::Copy(entry, target, overwrite);
        if (!result && (overwrite || !result.Is(std::errc::file_exists)))
            failure = result;
    }
    return failure;
}

}   // namespace Folder

}   // namespace TvlUtils::SystemIO

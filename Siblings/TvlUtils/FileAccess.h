// What the file operations share: paths, and failures as results.
#pragma once

#include "siblings/TvlUtils/FileLayer.h"
#include "siblings/TvlUtils/FilePath.h"

#include <functional>
#include <new>

namespace TvlUtils::SystemIO {

/// Runs `call`, whose own failures are results. Names that the file system can't express and a full heap become results
/// as well.
template <class Call>
FileResult Reported(Call call)
try {
    return call();
} catch (const std::bad_alloc&) {
    return std::errc::not_enough_memory;
} catch (const std::system_error& failure) {
    return failure.code();
}

/// A path of the file system; throws what Reported makes a result of.
inline std::filesystem::path PathOf(const TvlString& path)
{
    // The system would take the text up to the zero for the whole name.
    if (path.Find(L'\0') >= 0)
        throw std::system_error(std::make_error_code(std::errc::invalid_argument));
    return ToFilePath(path);
}

/// A name in a folder. In the place of operator/: behind a separator at the folder's end libstdc++'s destroys what it has not
/// made when it finds no memory.
inline std::filesystem::path Within(const std::filesystem::path& folder, const std::filesystem::path& name)
{
    std::filesystem::path::string_type text = folder.native();
    if (folder.has_filename())
        text += std::filesystem::path::preferred_separator;
    return text + name.native();
}

/// Writes all bytes from `offset` on.
FileResult WriteWhole(FileHandle& file, long long offset, std::string_view bytes);

/// ".<16 hexadecimal digits>.aside". Never the same again, in other processes too: a name that was used twice could
/// rename another writer's unfinished file.
std::string UniqueSuffix();

/// Takes away what writers of this file left behind when they crashed. One that is at work finds its file gone and begins
/// again. A path that ends with a separator is that of files that were to be removed at once, which have no other name.
void RemoveLeftovers(const std::filesystem::path& path);

/// Fills a new file of its own with `write` and renames it to `path`, as File::WriteAside does with bytes. `write` may be called
/// more than once, with an empty file each time.
FileResult ReplaceFile(const std::filesystem::path& path, const std::function<FileResult(FileHandle&)>& write);

}   // namespace TvlUtils::SystemIO

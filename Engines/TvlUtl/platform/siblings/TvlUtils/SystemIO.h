// Files and folders by path.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlUtils/FileLayer.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace TvlUtils::SystemIO::File {

/// Deletes a file; false when there is none or it can't be deleted.
TVLSIBLINGS_API bool Delete(const TvlString& path);
/// Gives a file another name in the same file system; a file of that name is replaced in one step.
TVLSIBLINGS_API bool Move(const TvlString& from, const TvlString& to);
/// Whether there is a file, and no folder, of this name.
TVLSIBLINGS_API bool Exists(const TvlString& path);

/// The most that ReadAll takes unless it is told otherwise: settings and catalogues are far smaller.
inline constexpr std::size_t kReadAllLimit = std::size_t{256} << 20;
/// Reads a whole file. On failure `bytes` is empty; a file of more than `limit` bytes fails with file_too_large.
TVLSIBLINGS_API FileResult ReadAll(const TvlString& path, std::string& bytes, std::size_t limit = kReadAllLimit);
/// Makes `bytes` the whole content of a file, new or not, in one step: whoever opens it sees the old content or the new
/// one, after a crash or a power cut as well. The bytes are written to a file of its own name in the same folder, flushed
/// and renamed. When anything fails the old file stays whole. Leftovers of writers that crashed are removed. Of two
/// writers the last one wins. A file that is marked read-only is refused.
TVLSIBLINGS_API FileResult WriteAside(const TvlString& path, std::string_view bytes);

/// Makes an empty file where there is nothing of this name; a success when there is a file. It need not outlast a power cut.
TVLSIBLINGS_API FileResult EnsureExists(const TvlString& path);
/// Full paths of what a folder holds, in ordinal order without regard to case. `mask` compares names without regard to
/// case: "*" is any text, "?" one character, and "*.*" takes names without a point as well. `recursive` looks into the
/// folders below too; `withFolders` gives folders as well as files. Links to folders are left out, since they might lead
/// round in a circle, and so is what can't be read.
TVLSIBLINGS_API std::vector<TvlString> Find(
    const TvlString& folder, const TvlString& mask, bool recursive, bool withFolders);
/// The same in `found`, for callers who must know of what could not be read: gives the first failure, and all else in
/// `found`.
TVLSIBLINGS_API FileResult Find(
    const TvlString& folder, const TvlString& mask, bool recursive, bool withFolders, std::vector<TvlString>& found);
/// Whether a name matches a mask of Find.
TVLSIBLINGS_API bool MatchesMask(const TvlString& name, const TvlString& mask);
/// Whether there is a file of this name that is not marked read-only.
TVLSIBLINGS_API bool IsWritable(const TvlString& path);
/// Takes the read-only mark away; false when there is no such file or it can't be changed.
TVLSIBLINGS_API bool MakeWritable(const TvlString& path);
/// Sets the read-only mark; false when there is no such file or it can't be changed.
TVLSIBLINGS_API bool MakeReadonly(const TvlString& path);
/// Copies the content of a file in one step, as WriteAside does: nobody ever sees a part of it under the name `to`. A file
/// of that name is replaced where `overwrite` is true, unless it is marked read-only; else it fails with file_exists.
TVLSIBLINGS_API FileResult Copy(const TvlString& from, const TvlString& to, bool overwrite);

}   // namespace TvlUtils::SystemIO::File

namespace TvlUtils::SystemIO::Path {

/// The two parts with one separator between them. An absolute `second` stands alone; an empty part adds nothing.
TVLSIBLINGS_API TvlString Combine(const TvlString& first, const TvlString& second);
/// The same with an extension behind a "."; `extension` may bring the point along, and adds nothing when it is empty.
TVLSIBLINGS_API TvlString Combine(const TvlString& first, const TvlString& second, const TvlString& extension);
/// The path that `second` names for somebody in the folder `first`, with "." and ".." worked out in the text. An absolute
/// `second` stands alone.
TVLSIBLINGS_API TvlString GetAbsolutePath(const TvlString& first, const TvlString& second);
/// A path in `folder` that nobody else has or guesses: `prefix`, a random part, and `extension` with its point. No file is
/// made; who makes it sees to it that it is new.
TVLSIBLINGS_API TvlString GetTempFileNameW(
    const TvlString& folder, const TvlString& prefix, const TvlString& extension);
/// A new empty folder among the system's temporary files, which nobody else has; empty when it can't be made. Who asked
/// for it deletes it.
TVLSIBLINGS_API TvlString CreateNewTempFolder();
/// Where temporary files go: TVL_USER_DIR of the environment with "Temp" behind it, made when it is missing, or the
/// system's place.
TVLSIBLINGS_API TvlString GetTempFolder();
/// Whether a path starts at a root: a separator, or on windows a drive letter with a colon.
TVLSIBLINGS_API bool IsFullyQualified(const TvlString& path);
/// Whether there is anything of this name.
TVLSIBLINGS_API bool Exists(const TvlString& path);
/// Whether there is a file, and no folder, of this name.
TVLSIBLINGS_API bool IsFile(const TvlString& path);

// Parts of a path. No file is touched. Separators are "\\" and "/" on windows, "/" on linux.

/// The path with a separator at its end; an empty path stays empty.
TVLSIBLINGS_API TvlString AddBackslash(const TvlString& path);
/// All up to the last separator, which is kept; empty without any.
TVLSIBLINGS_API TvlString GetFolderName(const TvlString& path);
/// What stands behind the last separator.
TVLSIBLINGS_API TvlString GetFileName(const TvlString& path);
/// The file's name up to its last point.
TVLSIBLINGS_API TvlString GetFileNameWithoutExtension(const TvlString& path);
/// The last point of the file's name and what stands behind it; empty without any.
TVLSIBLINGS_API TvlString GetExtension(const TvlString& path);
/// Whether the path has this extension, which brings its point along, without regard to case.
TVLSIBLINGS_API bool HasExtension(const TvlString& path, const TvlString& extension);
/// The path with another file name behind its last separator.
TVLSIBLINGS_API TvlString ReplaceFileName(const TvlString& path, const TvlString& name);
/// The elements between separators. A drive and a prefix such as "CLOUD:" are elements; separators are none.
TVLSIBLINGS_API std::vector<TvlString> Split(const TvlString& path);
/// Whether `path` is `folder` or lies in it at any depth, as far as the texts tell: "." and ".." are worked out, names
/// compare without case on windows. An empty text contains nothing and is nowhere.
TVLSIBLINGS_API bool Contains(const TvlString& folder, const TvlString& path);
/// How to get from the folder `base` to `path`, without a separator at its end; empty when there is no common root.
/// `dotted` puts a "." before what lies in `base`, which is "." alone for `base` itself.
TVLSIBLINGS_API TvlString GetRelativePath(const TvlString& base, const TvlString& path, bool dotted);

// Places of the system.

/// The user's documents, without a separator at the end: "Documents" in the folder TVL_USER_DIR of the environment, or the
/// system's. Empty when the system tells of no such place.
TVLSIBLINGS_API TvlString GetDocumentsFolder();
/// Full path of a running program's file; `process` is null for this one, and nothing is known of others. Empty when the
/// system does not tell.
TVLSIBLINGS_API TvlString GetProcessFileName(void* process);
/// The text with the value of each "%NAME%" of the environment in its place. Names that are not set stay as they stand.
TVLSIBLINGS_API TvlString ExpandWindowsEnvStrings(const TvlString& text);

}   // namespace TvlUtils::SystemIO::Path

namespace TvlUtils::SystemIO::Folder {

/// Whether there is a folder of this name.
TVLSIBLINGS_API bool Exists(const TvlString& path);
/// Makes the folder and those above it that are missing; a success when it is there.
TVLSIBLINGS_API FileResult EnsureExists(const TvlString& path);

/// Deletes all that is in a folder, and the folder itself where `withFolder` is true. It goes on after a failure; false when
/// anything is left, or nothing was done: for a path that is empty, relative, a root, a link or no folder. Links inside
/// are removed and never followed.
TVLSIBLINGS_API bool DeleteRecursive(const TvlString& path, bool withFolder);

/// What IsWritable has found out.
enum class WritableStatus {
    Writable,   ///< a file could be made
    Missing,    ///< there is no such folder
    Refused,    ///< the system does not let this process write there
};
/// Whether files can be made in a folder, tried by making an empty one. `status`, which may be null, tells more.
TVLSIBLINGS_API bool IsWritable(const TvlString& path, WritableStatus* status = nullptr);
/// Copies a folder's files and folders, made as needed, into another folder. It goes on after a failure, whose reason is
/// the result, a folder that can't be read included, and never copies what `to` has got itself, should it lie in `from`. For `overwrite` see File::Copy: a
/// file that is there already is left without a failure where it is false. Links to folders are left out.
TVLSIBLINGS_API FileResult Copy(const TvlString& from, const TvlString& to, bool overwrite);

}   // namespace TvlUtils::SystemIO::Folder

// Files and folders by path.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlUtils/FileLayer.h"

#include <cstddef>
#include <string>
#include <string_view>

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
/// Whether a path starts at a root: a separator, or on windows a drive letter with a colon.
TVLSIBLINGS_API bool IsFullyQualified(const TvlString& path);
/// Whether there is anything of this name.
TVLSIBLINGS_API bool Exists(const TvlString& path);

}   // namespace TvlUtils::SystemIO::Path

namespace TvlUtils::SystemIO::Folder {

/// Whether there is a folder of this name.
TVLSIBLINGS_API bool Exists(const TvlString& path);
/// Makes the folder and those above it that are missing; a success when it is there.
TVLSIBLINGS_API FileResult EnsureExists(const TvlString& path);

}   // namespace TvlUtils::SystemIO::Folder

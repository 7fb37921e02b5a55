// Files and folders by path.
#pragma once

#include "siblings/SiblingsApi.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace TvlUtils::SystemIO::File {

/// Deletes a file; false when there is none or it can't be deleted.
TVLSIBLINGS_API bool Delete(const wchar_t* path);

TVLSIBLINGS_API bool Exists(const wchar_t* path);

/// All bytes of a file; empty when it can't be read or has more than `limit`.
TVLSIBLINGS_API std::optional<std::string> ReadAll(const wchar_t* path, std::size_t limit);

/// Replaces a file as a whole, making its folders: the bytes are written beside it, flushed and renamed, so that a crash
/// leaves the file as it was or as it should be. False, with the file as it was, when that fails.
TVLSIBLINGS_API bool WriteAside(const wchar_t* path, std::string_view bytes);

}   // namespace TvlUtils::SystemIO::File

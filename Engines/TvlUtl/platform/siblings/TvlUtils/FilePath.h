// Paths between text in memory and the standard library's form.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <filesystem>

namespace TvlUtils::SystemIO {

/// The path that a text names. The standard library's own conversion follows the C locale and fails on most letters in
/// the plain one; here names on disk are UTF-8 where they are bytes.
TVLSIBLINGS_API std::filesystem::path ToFilePath(const TvlString& text);
/// The text of a path; bytes of a name that are not UTF-8 become U+FFFD.
TVLSIBLINGS_API TvlString FromFilePath(const std::filesystem::path& path);

}   // namespace TvlUtils::SystemIO

// Reads text files.
#pragma once

#include "siblings/TvlUtils/FileStream.h"

#include <optional>
#include <string>

namespace TvlUtils {

/// A file's bytes as text: UTF-8, or UTF-16 in either order when a byte order mark tells so. The mark itself is left out.
class TVLSIBLINGS_API TextStreamReader {
public:
    /// The most bytes of a file that ReadToEnd takes unless it is told otherwise.
    static constexpr std::size_t kDefaultLimit = std::size_t{64} << 20;

    /// Reads on from the file's position.
    explicit TextStreamReader(FileStream file) : m_file(std::move(file)) { }

    /// What is left of the file as UTF-8, unchecked where the file has UTF-8 itself. Empty when there is no file, when it
    /// is larger than `limit` bytes or when it can't be read.
    std::optional<std::string> ReadUtf8(std::size_t limit = kDefaultLimit);
    /// The same as wide text; what is not valid becomes U+FFFD.
    std::optional<TvlString> ReadToEnd(std::size_t limit = kDefaultLimit);

private:
    FileStream m_file;
};

}   // namespace TvlUtils

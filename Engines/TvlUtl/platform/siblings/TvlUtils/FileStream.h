// A stream over a whole file.
#pragma once

#include "siblings/TvlUtils/Stream.h"

namespace TvlUtils {

/// As Stream, with the length that the file had when it was opened.
class FileStream : public Stream {
public:
    /// Without a source.
    FileStream() = default;
    /// A stream from the start of an existing file; without a source when it can't be opened or is no regular file.
    TVLSIBLINGS_API static FileStream OpenForRead(const TvlString& path);

    /// Bytes; 0 without a source.
    long long GetLength() const { return m_length; }

private:
    FileStream(Stream stream, long long length) : Stream(std::move(stream)), m_length(length) { }

    long long m_length = 0;
};

}   // namespace TvlUtils

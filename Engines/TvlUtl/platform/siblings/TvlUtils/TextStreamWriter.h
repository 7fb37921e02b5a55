// Text into a stream.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlUtils/Stream.h"

namespace TvlUtils {

/// What a text is written as.
enum class TextEncoding : int {
    Latin1 = 0,    ///< one byte a character; "?" for what has none
    Utf16Le = 1,   ///< two bytes a unit, the lower one first
    Utf16Be = 2,   ///< two bytes a unit, the higher one first
    Utf8 = 3,      ///< one to four bytes a character
};

/// Writes texts in one encoding, without a mark at the start. Each call is one write of the stream.
class TVLSIBLINGS_API TextStreamWriter {
public:
    /// Writes on at the stream's position. A stream without a source takes nothing.
    TextStreamWriter(Stream stream, TextEncoding encoding) : m_stream(std::move(stream)), m_encoding(encoding) { }

    /// False when the stream did not take all of it.
    bool Write(const TvlString& text);
    /// The same with a line feed behind it.
    bool WriteLine(const TvlString& text) { return Write(text + L'\n'); }

private:
    Stream m_stream;
    TextEncoding m_encoding;
};

}   // namespace TvlUtils

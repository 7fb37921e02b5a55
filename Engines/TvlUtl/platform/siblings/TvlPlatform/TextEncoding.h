// Explicit conversion between wide text in memory and the bytes that leave the process. The one place for it.
#pragma once

#include "siblings/SiblingsApi.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Forms and encodings of text, the same on every target.
namespace TvlPlatform {

/// UTF-8 of a wide text; what is not valid becomes U+FFFD.
TVLSIBLINGS_API std::string ToUtf8(std::wstring_view text);
/// Wide text of UTF-8 bytes; each byte that is not valid becomes U+FFFD.
TVLSIBLINGS_API std::wstring FromUtf8(std::string_view bytes);
/// UTF-16LE bytes of a wide text, without an end mark.
TVLSIBLINGS_API std::vector<std::uint8_t> ToUtf16Le(std::wstring_view text);
/// Wide text of UTF-16LE bytes; an odd byte at the end is ignored, an unpaired surrogate becomes U+FFFD.
TVLSIBLINGS_API std::wstring FromUtf16Le(const void* bytes, std::size_t size);

}   // namespace TvlPlatform

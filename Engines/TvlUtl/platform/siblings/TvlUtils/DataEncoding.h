// Bytes as texts.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <cstddef>

namespace TvlUtils::DataEncoding {

/// Two hexadecimal digits in lower case for each byte.
TVLSIBLINGS_API TvlString HexEncode(const void* bytes, std::size_t count);

}   // namespace TvlUtils::DataEncoding

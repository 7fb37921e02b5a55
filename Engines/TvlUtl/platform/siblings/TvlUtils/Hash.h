// Digests of bytes.
#pragma once

#include "siblings/SiblingsApi.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

/// Digests, none of which protects anything.
namespace TvlUtils::Hash {

/// In the order of RFC 1321, the first byte first.
using Md5Digest = std::array<std::uint8_t, 16>;

/// MD5 (RFC 1321), for names that must be the same everywhere; it protects nothing. Empty when the system's
/// library refuses.
TVLSIBLINGS_API std::optional<Md5Digest> Md5(const void* bytes, std::size_t count);

}   // namespace TvlUtils::Hash

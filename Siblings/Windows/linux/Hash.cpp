// Digests by nettle.
#include "siblings/TvlUtils/Hash.h"

#include <nettle/md5.h>

namespace TvlUtils::Hash {

std::optional<Md5Digest> Md5(const void* bytes, std::size_t count)
{
    md5_ctx state;
    md5_init(&state);
    md5_update(&state, count, static_cast<const std::uint8_t*>(bytes));
    Md5Digest digest;
    md5_digest(&state, digest.size(), digest.data());
    return digest;
}

}   // namespace TvlUtils::Hash

// Digests by the system's cryptography.
#include "siblings/TvlUtils/Hash.h"

#include <memory>
#include <windows.h>

#include <bcrypt.h>

namespace TvlUtils::Hash {

std::optional<Md5Digest> Md5(const void* bytes, std::size_t count)
{
    BCRYPT_ALG_HANDLE opened = nullptr;
    if (BCryptOpenAlgorithmProvider(&opened, BCRYPT_MD5_ALGORITHM, nullptr, 0) != 0)
        return std::nullopt;
    const auto close = [](void* provider) { BCryptCloseAlgorithmProvider(provider, 0); };
    const std::unique_ptr<void, decltype(close)> provider(opened, close);
    BCRYPT_HASH_HANDLE made = nullptr;
    if (BCryptCreateHash(provider.get(), &made, nullptr, 0, nullptr, 0, 0) != 0)
        return std::nullopt;
    const std::unique_ptr<void, decltype(&BCryptDestroyHash)> hash(made, BCryptDestroyHash);
    std::string copy(static_cast<const char*>(bytes), count);   // the call wants bytes that it may change
    Md5Digest digest;
    const bool done =
        BCryptHashData(hash.get(), reinterpret_cast<PUCHAR>(copy.data()), static_cast<ULONG>(count), 0) == 0
        && BCryptFinishHash(hash.get(), digest.data(), static_cast<ULONG>(digest.size()), 0) == 0;
    return done ? std::optional(digest) : std::nullopt;
}

}   // namespace TvlUtils::Hash

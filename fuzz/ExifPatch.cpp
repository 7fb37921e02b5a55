// Patches a tag: the first 2 bytes are its id, the next 4 the value, the rest is the block. At most one aligned field of 4
// bytes may change.
#include "CExif.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::uint16_t tag = 0;
    std::int32_t value = 0;
    constexpr std::size_t kPrefix = sizeof tag + sizeof value;
    if (size < kPrefix)
        return 0;
    std::memcpy(&tag, data, sizeof tag);
    std::memcpy(&value, data + sizeof tag, sizeof value);
    const std::vector<std::uint8_t> before(data + kPrefix, data + size);

    std::vector<std::uint8_t> after = before;
    const int result = CExif().ReplaceData(TvlUtils::Stream::OverMemory(after.data(), after.size()), tag, value);
    const auto first = std::mismatch(before.begin(), before.end(), after.begin()).first;
    const auto last = std::mismatch(before.rbegin(), before.rend(), after.rbegin()).first.base();
    if (last > first && (result != 1 || last - first > 4 || first - before.begin() < 10))
        std::abort();
    if (result != 0 && result != 1)
        std::abort();
    return 0;
}

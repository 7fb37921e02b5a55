#include "siblings/TvlUtils/DataEncoding.h"

#include <string>

namespace TvlUtils::DataEncoding {

TvlString HexEncode(const void* bytes, std::size_t count)
{
    constexpr std::wstring_view kDigits = L"0123456789abcdef";
    std::wstring text;
    text.reserve(2 * count);
    const auto* const first = static_cast<const unsigned char*>(bytes);
    for (std::size_t i = 0; i < count; ++i) {
        text += kDigits[first[i] >> 4];
        text += kDigits[first[i] & 15];
    }
    return text;
}

}   // namespace TvlUtils::DataEncoding

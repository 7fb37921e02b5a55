#include "siblings/TvlUtils/Guid.h"

#include <cstring>
#include <random>

namespace TvlUtils {

namespace {
std::mt19937_64& Random()
{
    static thread_local std::mt19937_64 random = [] {
        std::random_device device;
        std::seed_seq seed{device(), device(), device(), device()};
        return std::mt19937_64(seed);
    }();
    return random;
}

/// Writes the low `digits` hexadecimal digits of a number and returns the place behind them.
wchar_t* WriteHex(wchar_t* place, unsigned long long value, int digits)
{
    for (int i = digits - 1; i >= 0; --i)
        *place++ = L"0123456789abcdef"[value >> (4 * i) & 15];
    return place;
}
}   // namespace

Guid Guid::Generate()
{
    const unsigned long long words[] = {Random()(), Random()()};
    GUID value;
    static_assert(sizeof value == sizeof words);
    std::memcpy(&value, words, sizeof value);
    value.Data3 = static_cast<unsigned short>((value.Data3 & 0x0FFF) | 0x4000);
    value.Data4[0] = static_cast<unsigned char>((value.Data4[0] & 0x3F) | 0x80);
    return Guid(value);
}

TvlString Guid::ToString() const
{
    std::wstring text(36, L'-');
    wchar_t* const begin = text.data();
    WriteHex(begin, m_value.Data1, 8);
    WriteHex(begin + 9, m_value.Data2, 4);
    WriteHex(begin + 14, m_value.Data3, 4);
    WriteHex(begin + 19, m_value.Data4[0] * 256u + m_value.Data4[1], 4);
    wchar_t* place = begin + 24;
    for (int i = 2; i < 8; ++i)
        place = WriteHex(place, m_value.Data4[i], 2);
    return text;
}

}   // namespace TvlUtils
